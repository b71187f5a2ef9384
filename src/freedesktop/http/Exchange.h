#pragma once

#include <chrono>
#include <cstdint>
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
  [[nodiscard]] HttpFailure::Kind kindOf(CURLcode code) const;
  [[nodiscard]] bool wantsCredentials(CURLcode code) const;
  [[nodiscard]] bool wasAsked() const;
  [[nodiscard]] long number(CURLINFO info) const;

  static int noteAsking(void* self, char*, char*, int, int);
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
  std::uint64_t received_ = 0;  ///< bytes of bodies, of those before redirects too
  curl_off_t moved_ = 0;
  long askedHop_ = -1;  ///< how many redirects had been followed when a request last went out
  char error_[CURL_ERROR_SIZE] = {};
};

}  // namespace tallyvane::curl
