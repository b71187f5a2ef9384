#include "foundation/PropertyList.h"

#include <fmt/format.h>

#include "foundation/PropertyListCharacters.h"
#include "foundation/PropertyListForms.h"

namespace tallyvane {
namespace {

Value readEitherForm(std::string_view bytes) {
  if (!bytes.starts_with("bplist")) return readXmlPropertyList(bytes);
  const std::string xml = xmlOfBinaryPropertyList(bytes);
  try {
    return readXmlPropertyList(xml);
  } catch (const PropertyListFault& fault) {
    throw PropertyListFault{fmt::format("binary property list, as XML at {}", fault.reason)};
  }
}

}  // namespace

Result<Value> readPropertyList(std::string_view bytes) {
  if (bytes.size() > maximumPropertyListBytes) return Error{"it is too large for a property list"};
  try {
    return readEitherForm(bytes);
  } catch (const PropertyListFault& fault) {
    return Error{fault.reason};
  }
}

}  // namespace tallyvane
