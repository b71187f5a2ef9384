// A name server that does not answer. For one source file of a test program: it takes the place of the C library's
// lookup.
#pragma once

#include <dlfcn.h>
#include <netdb.h>

#include <atomic>
#include <mutex>
#include <string_view>

namespace tallyvane::testing {

/// While it lives, a lookup of `name` does not return.
struct UnansweredLookups {
  static constexpr std::string_view name = "unanswered.test";
  static inline std::mutex mutex;
  static inline std::atomic<bool> hasBegun = false;
  const std::lock_guard<std::mutex> lock{mutex};
};

}  // namespace tallyvane::testing

extern "C" int getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** found) {
  using Names = tallyvane::testing::UnansweredLookups;
  if (node != nullptr && node == Names::name) {
    Names::hasBegun = true;
    const std::lock_guard wait(Names::mutex);
    return EAI_AGAIN;
  }
  static const auto library = reinterpret_cast<decltype(&::getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
  return library(node, service, hints, found);
}
