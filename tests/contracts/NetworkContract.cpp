// The network, the queue of its work, and the desktop's file types.
#include <gmock/gmock.h>

#include <future>

#include "freedesktop/PosixFileStore.h"
#include "freedesktop/SharedMimeTypes.h"
#include "freedesktop/ThreadWorkQueue.h"
#include "support/HttpHosts.h"

namespace tallyvane::testing {
namespace {

template <typename Host>
struct HttpContract : ::testing::Test, Host {
  HttpOutcome perform(HttpBody* body, std::stop_token stop = {}) {
    HttpExchange exchange;
    exchange.method = "POST";
    exchange.url = this->address;
    exchange.body = body;
    exchange.stop = stop;
    return this->transport.perform(exchange);
  }
  HttpFailure::Kind failure(const HttpOutcome& outcome) { return std::get<HttpFailure>(outcome).kind; }
};
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

void finish(FakeWorkQueue& queue) {
  std::stop_source stop;
  stop.request_stop();
  queue.run(stop.get_token());
}
void finish(ThreadWorkQueue& queue) { queue.end(); }

template <typename Queue>
struct WorkQueueContract : ::testing::Test {
  Queue queue;
};
using WorkQueues = ::testing::Types<FakeWorkQueue, ThreadWorkQueue>;
TYPED_TEST_SUITE(WorkQueueContract, WorkQueues);

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

struct TypesInMemory {
  FakeMimeTypes types;
};
struct TypesOnDisk {
  TemporaryFolder folder;
  PosixFileStore files{folder.path};
  XdgFolders folders{.dataHome = folder.path + "/own",
                     .configHome = {},
                     .stateHome = {},
                     .dataDirs = {folder.path + "/none", folder.path + "/system"}};
  SharedMimeTypes types{folders, files};
  TypesOnDisk() {
    for (const char* name : {"/own/mime", "/system/mime"}) (void)files.createFolder(folder.path + name);
    put(folder.path + "/own/mime/globs2", "50:image/png:*.png\n");
    put(folder.path + "/system/mime/globs2",
        "# "
        "comment\n60:text/x-c++:*.pdf:cs\n50:application/pdf:*.pdf\n40:application/x-other:*.pdf\n80:image/own:*.PNG\n"
        "bad line\n:::\n50:x/y:*.\n50:x/y:pdf\n50:x/y:*.od[ts]\n");
  }
};
template <typename Host>
struct MimeTypesContract : ::testing::Test, Host {};
using TypeHosts = ::testing::Types<TypesInMemory, TypesOnDisk>;
TYPED_TEST_SUITE(MimeTypesContract, TypeHosts);

TYPED_TEST(MimeTypesContract, TypesAreThoseOfTheExtensionInEitherCase) {
  for (const char* extension : {"pdf", "PDF"}) EXPECT_EQ(this->types.typeForExtension(extension), "application/pdf");
  EXPECT_EQ(this->types.typeForExtension("png"), "image/png");
  for (const char* unknown : {"", "odd", "*", "od[ts]"}) EXPECT_EQ(this->types.typeForExtension(unknown), std::nullopt);
}

}  // namespace
}  // namespace tallyvane::testing
