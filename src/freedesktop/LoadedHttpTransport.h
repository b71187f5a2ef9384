#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "platform/HttpTransport.h"
#include "platform/MailSettings.h"

namespace tallyvane {

/// The network, by a module that is loaded at the first exchange: its libraries would cost every run of a program many
/// milliseconds. Without the module every exchange fails and says why.
class LoadedHttpTransport : public HttpTransport {
 public:
  /// `module` is the absolute path of the module. The settings outlive the transport; they say whom to trust.
  LoadedHttpTransport(std::string module, MailSettings& settings) : module_(std::move(module)), settings_(settings) {}

  [[nodiscard]] HttpOutcome perform(const HttpExchange& exchange) override;

 private:
  void load();

  const std::string module_;
  MailSettings& settings_;
  std::once_flag tried_;
  std::string failure_;
  std::unique_ptr<HttpTransport> loaded_;
};

/// Where the module of the program with this absolute path is: in the folder for libraries that belongs to the
/// program's own. The environment has no say in it.
[[nodiscard]] std::string httpModuleOf(const std::string& executable);

/// Whether the file at this absolute path and the folder that it is in belong to the administrator or to the user who
/// runs the program, and may not be written by anybody; else why not.
[[nodiscard]] Result<> isTrusted(const std::string& path);

}  // namespace tallyvane
