// What the network module shows to the program that loads it.
#pragma once

#include "platform/HttpTransport.h"

extern "C" {
/// A transport that its caller owns. `certificates` as for CurlTransport.
[[gnu::visibility("default")]] tallyvane::HttpTransport* tallyvane_make_http_transport(const char* certificates);
}

namespace tallyvane {
inline constexpr const char* httpModuleEntry = "tallyvane_make_http_transport";
using MakeHttpTransport = HttpTransport* (*)(const char* certificates);
}  // namespace tallyvane
