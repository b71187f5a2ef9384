// Reading ends without a fault; what reads can be written and reads back equal.
#include "Fuzzed.h"
#include "foundation/PropertyList.h"

namespace tallyvane::fuzz {

void propertyList(std::string_view bytes) {
  const Result<Value> value = readPropertyList(bytes);
  if (!value) return require(!value.error().empty(), "refused without a reason");
  const std::string text = writePropertyList(*value);
  const Result<Value> again = readPropertyList(text);
  require(again && writePropertyList(*again) == text, "does not read back: " + again.error());
  const bool hasNotANumber = text.find("<real>nan</real>") != std::string::npos;  // unequal to itself
  require(hasNotANumber || *again == *value, "reads back as another value: " + text);
}

void binaryPropertyList(std::string_view bytes) {
  constexpr std::string_view beginning = "bplist00";
  const std::string rest(bytes.size() < beginning.size() ? std::string_view() : bytes.substr(beginning.size()));
  propertyList(std::string(beginning) + rest);
}

}  // namespace tallyvane::fuzz
