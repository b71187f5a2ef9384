#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

struct HttpExchange {
  std::string method = "GET";
  std::string url;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
};

struct HttpAnswer {
  int status = 0;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
};

/// Carries one exchange over the network: proxies, TLS, redirects and authentication included.
class HttpTransport {
 public:
  virtual ~HttpTransport() = default;
  /// Blocks the calling thread until the answer is whole or the exchange has failed. May be called from any thread.
  [[nodiscard]] virtual Result<HttpAnswer> perform(const HttpExchange& exchange) = 0;
};

}  // namespace tallyvane
