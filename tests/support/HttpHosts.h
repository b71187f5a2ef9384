// The network in memory and the real one, for suites that run on both, and bodies that are sent.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "freedesktop/LoadedHttpTransport.h"
#include "support/Fakes.h"
#include "support/WebServer.h"

namespace tallyvane::testing {

/// Bytes in memory; a read beyond `breaksAt` fails.
class MemoryBody : public HttpBody {
 public:
  explicit MemoryBody(std::string bytes, std::size_t breaksAt = std::string::npos)
      : bytes_(std::move(bytes)), breaksAt_(breaksAt) {}
  [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
  [[nodiscard]] std::uint64_t bytesPerSecond() const override { return rate; }
  [[nodiscard]] Result<std::string> read(std::size_t most) override {
    if (at_ >= breaksAt_) return Error{"the disk broke"};
    const std::string piece = bytes_.substr(at_, most);
    at_ += piece.size();
    return piece;
  }
  void rewind() override { at_ = 0; }
  std::uint64_t rate = 0;

 private:
  std::string bytes_;
  std::size_t breaksAt_;
  std::size_t at_ = 0;
};

struct HttpInMemory {
  FakeHttpTransport transport;
  const std::string address = "https://mail.example/mailer/send";
  [[nodiscard]] std::string received() const { return transport.sent.empty() ? "" : transport.sent.back(); }
};

struct HttpOnLoopback {
  WebServer server;
  FakeMailSettings settings;
  LoadedHttpTransport transport{TALLYVANE_HTTP_MODULE, settings};
  const std::string address = server.url("/mailer/send");
  HttpOnLoopback() { settings.content.certificates = server.certificate(); }
  [[nodiscard]] std::string received() const {
    const std::string all = server.requests();
    const std::size_t begin = all.find("\r\n\r\n");
    return begin == std::string::npos ? "" : all.substr(begin + 4, all.rfind("\n====\n") - begin - 4);
  }
};

template <typename Host>
struct HttpContract : ::testing::Test, Host {
  HttpOutcome perform(HttpBody* body, std::stop_token stop = {}) {
    HttpExchange exchange;
    exchange.method = "POST";
    exchange.url = this->address;
    exchange.body = body;
    exchange.stop = stop;
    return this->transport.perform(exchange);
  }
  HttpFailure::Kind failure(const HttpOutcome& outcome) { return std::get<HttpFailure>(outcome).kind; }
};

}  // namespace tallyvane::testing
