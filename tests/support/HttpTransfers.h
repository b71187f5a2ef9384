// Transfers with servers that a test starts.
#pragma once

#include <gmock/gmock.h>

#include <future>

#include "freedesktop/InstalledMailSettings.h"
#include "freedesktop/PosixFileStore.h"
#include "support/HttpHosts.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

struct HttpTransportTest : ::testing::Test, HttpOnLoopback {
  HttpTransportTest() { exchange.timeOutSeconds = 5; }
  /// "STATUS BODY", or the kind of the failure.
  std::string get(const std::string& url) {
    exchange.url = url;
    const HttpOutcome outcome = transport.perform(exchange);
    if (const auto* answer = std::get_if<HttpAnswer>(&outcome)) {
      return std::to_string(answer->status) + " " + answer->body;
    }
    reason = std::get<HttpFailure>(outcome).reason;
    static const char* kinds[] = {"cannotConnect", "connectionBroke", "timedOut",
                                  "cancelled",     "authentication",  "bodyUnreadable"};
    return kinds[static_cast<int>(std::get<HttpFailure>(outcome).kind)];
  }
  std::string post(const std::string& url, const std::string& bytes, std::uint64_t rate = 0) {
    MemoryBody body(bytes);
    body.rate = rate;
    exchange.method = "POST";
    exchange.body = &body;
    std::string said = get(url);
    exchange.body = nullptr;
    return said;
  }
  std::string on(int port, const std::string& path = "/mailer/send") const {
    return "http://127.0.0.1:" + std::to_string(port) + path;
  }

  HttpExchange exchange;
  std::string reason;
};

}  // namespace tallyvane::testing
