#pragma once

#include <string>

namespace tallyvane {

/// The web service that sends reminders as mail, and the account there.
struct MailService {
  std::string host;
  int port = 443;
  std::string userName;      ///< of the account: a mail address
  std::string apiKey;        ///< a secret; empty where no service is set up, and then nothing is sent
  std::string sender;        ///< the address that reminders come from
  std::string certificates;  ///< a file of certificates to trust; empty for those of the system
};

/// What the installation says about mail. Not a setting that the product's own panes show.
class MailSettings {
 public:
  virtual ~MailSettings() = default;
  /// Read at the first call and the same from then on. May be called from any thread.
  [[nodiscard]] virtual const MailService& service() = 0;
};

}  // namespace tallyvane
