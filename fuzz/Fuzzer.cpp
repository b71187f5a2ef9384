// One fuzzer: the build says of what.
#include <cstddef>
#include <cstdint>
#include <string>

#include "Fuzzed.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  tallyvane::fuzz::TALLYVANE_FUZZED(bytes);
  return 0;
}
