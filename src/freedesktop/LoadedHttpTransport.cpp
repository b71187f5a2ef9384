#include "freedesktop/LoadedHttpTransport.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "freedesktop/FileDescriptor.h"
#include "freedesktop/PosixPaths.h"
#include "freedesktop/http/Module.h"

namespace tallyvane {

namespace {

Result<> isOursAlone(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return systemError(path);
  if (status.st_uid != 0 && status.st_uid != ::geteuid()) return Error{path + ": belongs to another user"};
  if ((status.st_mode & S_IWOTH) != 0) return Error{path + ": can be changed by anybody"};
  return {};
}

}  // namespace

Result<> isTrusted(const std::string& path) {
  if (auto error = refusal(path)) return *error;
  Result<> folder = isOursAlone(parentOf(path));
  return folder ? isOursAlone(path) : folder;
}

std::string httpModuleOf(const std::string& executable) {
  if (!executable.starts_with('/')) return {};
  return (std::filesystem::path(parentOf(executable)) / TALLYVANE_MODULES / "tallyvane-http.so")
      .lexically_normal()
      .string();
}

HttpOutcome LoadedHttpTransport::perform(const HttpExchange& exchange) {
  std::call_once(tried_, [this] { load(); });
  if (!loaded_) return HttpFailure{HttpFailure::Kind::cannotConnect, failure_};
  return loaded_->perform(exchange);
}

/// What is loaded stays for as long as the program runs: its libraries keep things that do not end with it.
void LoadedHttpTransport::load() {
  if (const Result<> trusted = isTrusted(module_); !trusted) {
    failure_ = "the network module is not used: " + trusted.error();
    return;
  }
  void* library = ::dlopen(module_.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* entry = library == nullptr ? nullptr : ::dlsym(library, httpModuleEntry);
  if (entry == nullptr) {
    const char* reason = ::dlerror();
    failure_ = std::string("the network module cannot be loaded: ") + (reason == nullptr ? "it is empty" : reason);
    return;
  }
  loaded_.reset(reinterpret_cast<MakeHttpTransport>(entry)(settings_.service().certificates.c_str()));
}

}  // namespace tallyvane
