// The two forms of a property list behind readPropertyList. Private to PropertyList*.cpp.
#pragma once

#include <string>
#include <string_view>

#include "foundation/Value.h"

namespace tallyvane {

/// Both throw a PropertyListFault that says why, and in an XML form at which line. The caller has checked the size.
[[nodiscard]] Value readXmlPropertyList(std::string_view text, int maximumDepth);
/// The same list as XML.
[[nodiscard]] std::string xmlOfBinaryPropertyList(std::string_view bytes, int maximumDepth);

}  // namespace tallyvane
