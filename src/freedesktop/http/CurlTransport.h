#pragma once

#include <string>

#include "platform/HttpTransport.h"

namespace tallyvane {

/// The network, by libcurl. Proxies are those of the environment, in the variables that curl's own program knows.
class CurlTransport : public HttpTransport {
 public:
  /// A response that is longer counts as broken.
  static constexpr std::size_t maximumAnswerBytes = std::size_t{64} << 20;

  /// `certificates` is a file of certificates to trust; empty for those of the system.
  explicit CurlTransport(std::string certificates);
  [[nodiscard]] HttpOutcome perform(const HttpExchange& exchange) override;

 private:
  std::string certificates_;
};

}  // namespace tallyvane
