// Whatever the bytes are, reading them ends without a fault; what reads can be written and reads back equal.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/PropertyList.h"

using namespace tallyvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const Result<Value> value = readPropertyList(bytes);
  if (!value) {
    if (value.error().empty()) std::abort();
    return 0;
  }
  const std::string text = writePropertyList(*value);
  const Result<Value> again = readPropertyList(text);
  if (!again || writePropertyList(*again) != text) std::abort();
  const bool hasNotANumber = text.find("<real>nan</real>") != std::string::npos;  // unequal to itself
  if (!hasNotANumber && !(*again == *value)) std::abort();
  return 0;
}
