#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/HttpTransport.h"

namespace tallyvane {

/// The network, by libcurl. Proxies are those of the environment, in the variables that curl's own program knows.
class CurlTransport : public HttpTransport {
 public:
  /// Of the body of a longer response only so much is kept.
  static constexpr std::size_t keptBodyBytes = std::size_t{64} << 20;
  /// An exchange that brings more is given up as broken: it may never end.
  static constexpr std::uint64_t maximumBodyBytes = std::uint64_t{1} << 30;

  /// `certificates` is a file of certificates to trust; empty for those of the system.
  explicit CurlTransport(std::string certificates);
  [[nodiscard]] HttpOutcome perform(const HttpExchange& exchange) override;

 private:
  std::string certificates_;
};

}  // namespace tallyvane
