// The network, the queue of its work, and the desktop's file types.
#include <gmock/gmock.h>

#include <future>

#include "support/HttpHosts.h"
#include "support/MimeTypeHosts.h"
#include "support/WorkQueueHosts.h"

namespace tallyvane::testing {
namespace {

using HttpHosts = ::testing::Types<HttpInMemory, HttpOnLoopback>;
TYPED_TEST_SUITE(HttpContract, HttpHosts);

TYPED_TEST(HttpContract, ABodyIsSentWholeAndUnreadableOrCancelledOnesFail) {
  MemoryBody whole(std::string(300'000, 'b') + '\0');
  EXPECT_EQ(std::get<HttpAnswer>(this->perform(&whole)).status, 200);
  EXPECT_EQ(this->received(), std::string(300'000, 'b') + '\0');
  MemoryBody broken(std::string(300'000, 'b'), 100'000);
  EXPECT_EQ(this->failure(this->perform(&broken)), HttpFailure::Kind::bodyUnreadable);
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(this->failure(this->perform(nullptr, stop.get_token())), HttpFailure::Kind::cancelled);
}

TYPED_TEST(WorkQueueContract, AllWorkRunsInItsOrderAndIsToldOfTheEnd) {
  std::string ran;
  const auto held = std::make_shared<int>(0);
  std::promise<void> ending;
  this->queue.post([&, held](const std::stop_token& stop) {
    if constexpr (std::is_same_v<TypeParam, ThreadWorkQueue>) {  // works before anybody asks for the end
      std::promise<void> asked;
      const std::stop_callback callback(stop, [&] { asked.set_value(); });
      ending.set_value();
      asked.get_future().wait();
    }
    ran += stop.stop_requested() ? "1" : "?";
  });
  this->queue.post([&, held](const std::stop_token& stop) { ran += stop.stop_requested() ? "2" : "?"; });
  if constexpr (std::is_same_v<TypeParam, ThreadWorkQueue>) ending.get_future().wait();
  finish(this->queue);
  EXPECT_EQ(ran, "12");
  EXPECT_EQ(held.use_count(), 1);
}

TYPED_TEST(MimeTypesContract, TypesAreThoseOfTheExtensionInEitherCase) {
  for (const char* extension : {"pdf", "PDF"}) EXPECT_EQ(this->types.typeForExtension(extension), "application/pdf");
  EXPECT_EQ(this->types.typeForExtension("png"), "image/png");
  for (const char* unknown : {"", "odd", "*", "od[ts]"}) EXPECT_EQ(this->types.typeForExtension(unknown), std::nullopt);
}

}  // namespace
}  // namespace tallyvane::testing
