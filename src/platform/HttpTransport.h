#pragma once

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

/// Names and values in their order; the case of a name does not matter.
using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

/// What an exchange sends, handed out piece by piece on the thread that performs the exchange.
class HttpBody {
 public:
  virtual ~HttpBody() = default;
  /// How many bytes there are in all.
  [[nodiscard]] virtual std::uint64_t size() const = 0;
  /// The most bytes a second, sent evenly; 0 for as fast as it goes.
  [[nodiscard]] virtual std::uint64_t bytesPerSecond() const = 0;
  /// The next bytes, at most so many; none at the end.
  [[nodiscard]] virtual Result<std::string> read(std::size_t most) = 0;
  /// The next read starts at the front again: a body is sent anew after some redirects and with credentials.
  virtual void rewind() = 0;
};

struct HttpExchange {
  std::string method = "GET";
  std::string url;
  HttpHeaders headers;
  HttpBody* body = nullptr;    ///< not owned; its size is announced as the Content-Length
  double timeOutSeconds = 10;  ///< how long nothing at all may move before the exchange fails; slow is fine
  std::string userName;        ///< credentials for the server; none when empty
  std::string password;
  std::stop_token stop;  ///< cancels the exchange, from any thread
};

/// A whole response, whatever its status. Its headers are those of the last one after redirects.
struct HttpAnswer {
  int status = 0;
  HttpHeaders headers;
  std::string body;
};

struct HttpFailure {
  enum class Kind {
    cannotConnect,         ///< no connection to the server or the proxy, or none that can be trusted
    connectionBroke,       ///< before the response was whole, or what came is not HTTP
    timedOut,              ///< nothing moved for too long
    cancelled,             ///< by the exchange's stop token
    authenticationNeeded,  ///< the server or the proxy wants credentials that are missing or wrong
    bodyUnreadable,        ///< what was to be sent could not be read
  };
  Kind kind = Kind::connectionBroke;
  std::string reason;  ///< a clause fit to follow a colon
};

using HttpOutcome = std::variant<HttpAnswer, HttpFailure>;

/// Carries one exchange over the network. Follows up to ten redirects, the next one is the answer; credentials do not
/// go along to another host, and where https would turn into http there is no connection. Uses the proxies of the
/// environment, keeps cookies for the length of the exchange, and trusts no server whose certificate is not verified.
class HttpTransport {
 public:
  virtual ~HttpTransport() = default;
  /// Blocks the calling thread until the answer is whole or the exchange has failed. May be called from any thread.
  [[nodiscard]] virtual HttpOutcome perform(const HttpExchange& exchange) = 0;
};

}  // namespace tallyvane
