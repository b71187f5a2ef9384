#include <gtest/gtest.h>

#include <set>

#include "freedesktop/FileBookmarks.h"
#include "freedesktop/QueuedMainQueue.h"
#include "freedesktop/SystemRandom.h"
#include "support/LogHosts.h"
#include "support/SmallResources.h"

namespace tallyvane::testing {
namespace {

template <typename Port>
struct Suite : ::testing::Test {
  Port port;
};

template <typename Port>
struct BookmarksContract : Suite<Port> {};
using AllBookmarks = ::testing::Types<FakeBookmarks, FileBookmarks>;
TYPED_TEST_SUITE(BookmarksContract, AllBookmarks);

TYPED_TEST(BookmarksContract, ABookmarkResolvesToItsFolderWhetherOrNotThatIsThere) {
  for (const std::string path : {"/", "/home/ada", "/not/there", "/a b/100%/Bücher #1?&<>"}) {
    EXPECT_EQ(this->port.resolve(this->port.bookmark(path)), path);
  }
  for (const std::string text : {"", "rubbish", "<plist><string>file:///a</string></plist>"}) {
    EXPECT_FALSE(this->port.resolve(Data{{text.begin(), text.end()}})) << text;
  }
}

void runWaiting(FakeMainQueue& queue) { queue.run(); }
void runWaiting(QueuedMainQueue& queue) { queue.runPending(); }

template <typename Port>
struct MainQueueContract : Suite<Port> {};
using AllQueues = ::testing::Types<FakeMainQueue, QueuedMainQueue>;
TYPED_TEST_SUITE(MainQueueContract, AllQueues);

TYPED_TEST(MainQueueContract, WorkRunsLaterAndInTheOrderPosted) {
  std::string ran;
  this->port.post([&] {
    this->port.post([&] { ran += "3"; });
    ran += "1";
  });
  this->port.post([&] { ran += "2"; });
  EXPECT_EQ(ran, "");
  runWaiting(this->port);
  EXPECT_EQ(ran, "123");
}

template <typename Port>
struct ResourcesContract : Suite<Port> {};
using AllResources = ::testing::Types<ResourcesInMemory, ResourcesInstalled>;
TYPED_TEST_SUITE(ResourcesContract, AllResources);

TYPED_TEST(ResourcesContract, PicturesAndTextsAreFoundByNameOnly) {
  EXPECT_EQ(this->port.picture("rent"), this->port.rent);
  EXPECT_EQ(this->port.picture("rent.png"), this->port.rent);
  EXPECT_EQ(this->port.text("template.html"), "<p>");
  for (const char* name : {"", "none", ".", "../pictures/rent", "/etc/hostname", "rent.png.png"}) {
    EXPECT_FALSE(this->port.picture(name)) << name;
    EXPECT_FALSE(this->port.text(name)) << name;
  }
}

TEST(SystemRandom, NoDrawComesTwice) {
  SystemRandom random;
  std::set<std::array<std::uint8_t, 16>> drawn;
  for (int i = 0; i < 1000; ++i) drawn.insert(random.bytes16());
  EXPECT_EQ(drawn.size(), 1000);
}

template <typename Host>
struct LogContract : ::testing::Test, Host {};
using AllLogs = ::testing::Types<LogInMemory, LogOnStandardError>;
TYPED_TEST_SUITE(LogContract, AllLogs);

TYPED_TEST(LogContract, LinesStandAsTheyAreInTheirOrderAndDiagnosticsApart) {
  this->log.line("Running Overview Update");
  this->log.diagnostic("100%s of /a cannot be read");
  this->log.line("Error: %@");
  EXPECT_EQ(this->written(), "Running Overview Update\nError: %@\n|100%s of /a cannot be read\n");
}

}  // namespace
}  // namespace tallyvane::testing
