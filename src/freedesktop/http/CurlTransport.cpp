#include "freedesktop/http/CurlTransport.h"

#include <signal.h>

#include <mutex>
#include <utility>

#include "freedesktop/http/Exchange.h"
#include "freedesktop/http/Module.h"

namespace tallyvane {

namespace {

/// A write to a connection that the peer has closed would end the program; while this lives, this thread is spared.
class NoBrokenPipe {
 public:
  NoBrokenPipe() {
    ::sigemptyset(&pipe_);
    ::sigaddset(&pipe_, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~NoBrokenPipe() {
    const timespec atOnce{};
    while (::sigtimedwait(&pipe_, nullptr, &atOnce) > 0) {
    }
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  NoBrokenPipe(const NoBrokenPipe&) = delete;
  NoBrokenPipe& operator=(const NoBrokenPipe&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
};

}  // namespace

CurlTransport::CurlTransport(std::string certificates) : certificates_(std::move(certificates)) {
  static std::once_flag initialized;
  std::call_once(initialized, [] { ::curl_global_init(CURL_GLOBAL_DEFAULT); });
}

HttpOutcome CurlTransport::perform(const HttpExchange& exchange) {
  const NoBrokenPipe guard;
  return curl::Exchange(exchange, certificates_).perform();
}

}  // namespace tallyvane

tallyvane::HttpTransport* tallyvane_make_http_transport(const char* certificates) {
  return new tallyvane::CurlTransport(certificates);
}
