#include "agent/Timers.h"

#include <gtest/gtest.h>
#include <poll.h>

#include "support/ChildProcess.h"

namespace tallyvane::testing {
namespace {

using namespace std::chrono_literals;

bool isReadable(int descriptor, std::chrono::milliseconds limit) {
  pollfd polled{descriptor, POLLIN, 0};
  return ::poll(&polled, 1, static_cast<int>(limit.count())) == 1;
}

Date fromNow(std::chrono::hours time) {
  return std::chrono::floor<Date::duration>(std::chrono::system_clock::now() + time);
}

TEST(WallClockTimer, IsReadableFromItsMomentOnUntilThatIsNoted) {
  agent::WallClockTimer timer;
  for (const Date ahead : {fromNow(1h), distantFuture}) {
    ASSERT_TRUE(timer.set(ahead));
    EXPECT_FALSE(isReadable(timer.descriptor(), 0ms));
  }
  ASSERT_TRUE(timer.set(fromNow(-1h)));
  EXPECT_TRUE(isReadable(timer.descriptor(), patience));
  timer.acknowledge();
  EXPECT_FALSE(isReadable(timer.descriptor(), 0ms));
}

TEST(DelayTimer, CannotBePutOffAndRunsAgainOnlyWhenStarted) {
  agent::DelayTimer timer;
  timer.start(1ms);
  timer.start(1h);
  EXPECT_TRUE(isReadable(timer.descriptor(), patience));
  timer.acknowledge();
  EXPECT_FALSE(isReadable(timer.descriptor(), 0ms));
  timer.start(1ms);
  EXPECT_TRUE(isReadable(timer.descriptor(), patience));
}

}  // namespace
}  // namespace tallyvane::testing
