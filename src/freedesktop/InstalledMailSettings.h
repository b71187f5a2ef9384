#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "freedesktop/XdgFolders.h"
#include "platform/FileStore.h"
#include "platform/Log.h"
#include "platform/MailSettings.h"

namespace tallyvane {

/// The values of the build, each replaced by what the files "Tallyvane/mail.conf" of the user's and the system's
/// configuration folders say under [Mail Service]: Host, Port, UserName, ApiKey, Sender, Certificates. The user's file
/// goes before the system's. A port that is none is said and left out.
class InstalledMailSettings : public MailSettings {
 public:
  InstalledMailSettings(MailService built, const XdgFolders& folders, FileStore& files, Log& log);
  [[nodiscard]] const MailService& service() override;

 private:
  void read(const std::string& path);

  MailService service_;
  std::vector<std::string> paths_;  ///< the weakest first
  FileStore& files_;
  Log& log_;
  std::once_flag wasRead_;
};

}  // namespace tallyvane
