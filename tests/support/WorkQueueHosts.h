// The queues of work of the contract.
#pragma once

#include <gtest/gtest.h>

#include "freedesktop/ThreadWorkQueue.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

inline void finish(FakeWorkQueue& queue) {
  std::stop_source stop;
  stop.request_stop();
  queue.run(stop.get_token());
}
inline void finish(ThreadWorkQueue& queue) { queue.end(); }

template <typename Queue>
struct WorkQueueContract : ::testing::Test {
  Queue queue;
};
using WorkQueues = ::testing::Types<FakeWorkQueue, ThreadWorkQueue>;
TYPED_TEST_SUITE(WorkQueueContract, WorkQueues);

}  // namespace tallyvane::testing
