#pragma once

#include <chrono>
#include <string>

#include "freedesktop/http/CurlHandles.h"
#include "platform/HttpTransport.h"

namespace tallyvane::curl {

/// One exchange on its way.
class Exchange {
 public:
  /// Both strings and the exchange outlive it.
  Exchange(const HttpExchange& exchange, const std::string& certificates);
  [[nodiscard]] HttpOutcome perform();

 private:
  enum class End { whole, timedOut, cancelled };

  void setUp(const std::string& certificates);
  void setUpBody();
  void setUpHeaders();
  [[nodiscard]] End run();
  [[nodiscard]] std::chrono::duration<double> patience() const;
  [[nodiscard]] bool hasMoved(int readySockets);
  [[nodiscard]] CURLcode result();
  [[nodiscard]] HttpOutcome outcome(CURLcode code);
  [[nodiscard]] HttpFailure failure(CURLcode code) const;
  [[nodiscard]] long number(CURLINFO info) const;

  static std::size_t readBody(char* buffer, std::size_t size, std::size_t count, void* self);
  static int rewindBody(void* self, curl_off_t offset, int origin);
  static std::size_t takeBody(const char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t takeHeader(const char* bytes, std::size_t size, std::size_t count, void* self);

  const HttpExchange& exchange_;
  List headers_;
  Easy easy_;
  Multi multi_;
  HttpAnswer answer_;
  std::string bodyError_;
  curl_off_t moved_ = 0;
  char error_[CURL_ERROR_SIZE] = {};
};

}  // namespace tallyvane::curl
