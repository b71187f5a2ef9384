#include "foundation/PropertyList.h"

#include <fmt/format.h>

#include "foundation/PropertyListCharacters.h"
#include "foundation/PropertyListForms.h"

namespace tallyvane {
namespace {

Value readEitherForm(std::string_view bytes, int maximumDepth) {
  if (!bytes.starts_with("bplist")) return readXmlPropertyList(bytes, maximumDepth);
  const std::string xml = xmlOfBinaryPropertyList(bytes, maximumDepth);
  try {
    return readXmlPropertyList(xml, maximumDepth);
  } catch (const PropertyListFault& fault) {
    throw PropertyListFault{fmt::format("binary property list, as XML at {}", fault.reason)};
  }
}

}  // namespace

Result<Value> readPropertyList(std::string_view bytes, PropertyListLimits limits) {
  if (bytes.size() > limits.bytes) return Error{"it is too large for a property list"};
  try {
    return readEitherForm(bytes, limits.depth);
  } catch (const PropertyListFault& fault) {
    return Error{fault.reason};
  }
}

}  // namespace tallyvane
