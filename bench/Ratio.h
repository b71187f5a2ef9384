#pragma once

#include <benchmark/benchmark.h>

#include <time.h>

#include <algorithm>
#include <vector>

namespace tallyvane::bench {

inline double median(std::vector<double> numbers) {
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

inline double secondsOn(clockid_t clock) {
  timespec now{};
  ::clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// What each turn took.
class Times {
 public:
  /// What the work returns lives until the clocks have stopped: giving it back is not part of the work.
  template <typename Work>
  void measure(Work& work) {
    const double wall = secondsOn(CLOCK_MONOTONIC), processor = secondsOn(CLOCK_PROCESS_CPUTIME_ID);
    [[maybe_unused]] const auto result = work();
    processor_.push_back(secondsOn(CLOCK_PROCESS_CPUTIME_ID) - processor);
    wall_.push_back(secondsOn(CLOCK_MONOTONIC) - wall);
  }
  [[nodiscard]] double last() const { return wall_.back(); }
  [[nodiscard]] double wall() const { return median(wall_); }
  [[nodiscard]] double quickest() const { return *std::min_element(wall_.begin(), wall_.end()); }
  [[nodiscard]] double processor() const { return median(processor_); }

 private:
  std::vector<double> wall_, processor_;
};

/// Where the work is done: a machine with other things to do takes it out on the wall clock of long work first, so work
/// that only computes is also compared by the processor time of this process.
enum class Work { inThisProcess, elsewhere };

/// Measures the operation turn by turn with its floor, so that what else the machine does burdens both alike. The time
/// shown is the operation's; "ratio" is its median over the floor's, "bound" what that must not exceed, "quickest" the
/// ratio of the quickest turns, which other work touches least. For a benchmark with UseManualTime. Both return
/// something.
template <typename Floor, typename Operation>
void compareWithFloor(benchmark::State& state, Work place, double bound, Floor floor, Operation operation) {
  Times floors, operations;
  bool measured = false;
  for ([[maybe_unused]] auto turn : state) {
    floors.measure(floor);
    operations.measure(operation);
    state.SetIterationTime(operations.last());
    measured = true;
  }
  if (!measured) return;  // skipped with an error
  state.counters["floor_ms"] = floors.wall() * 1000;
  state.counters["ratio"] = operations.wall() / floors.wall();
  state.counters["quickest"] = operations.quickest() / floors.quickest();
  state.counters["bound"] = bound;
  if (place == Work::inThisProcess) state.counters["cpu_ratio"] = operations.processor() / floors.processor();
}

}  // namespace tallyvane::bench
