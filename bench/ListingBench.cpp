// Listing bills, against reading the same files.
#include "Household.h"
#include "Ratio.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::bench {
namespace {

void loadBills(benchmark::State& state) {
  const auto bills = static_cast<std::size_t>(state.range(0));
  Household& household = Household::of(bills);
  Desktop desktop(household.folder());
  desktop.platform.groupDefaults = nullptr;  // no snapshot
  std::size_t bytes = 0;
  compareWithFloor(
      state, Work::inThisProcess, 6, [&] { return bytes = readAll(household.billFiles()); },
      [&] {
        std::vector<Dictionary> rows = QMBillsLoader{desktop.platform}.loadBills();
        if (rows.size() != bills) state.SkipWithError("bills are missing from the list");
        desktop.files.readPaths.clear();
        return rows;
      });
  state.counters["bytes_per_file"] = static_cast<double>(bytes / bills);
}
BENCHMARK(loadBills)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(1000)->Iterations(50);
BENCHMARK(loadBills)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(10000)->Iterations(15);
BENCHMARK(loadBills)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(100000)->Iterations(5);

/// How many files the widget's list reads; the bound is on that number.
void loadBillsForExtension(benchmark::State& state) {
  Household& household = Household::of(1000);
  Desktop desktop(household.folder());
  (void)QMBillsLoader{desktop.platform}.loadBills();  // makes the snapshot
  for ([[maybe_unused]] auto turn : state) {
    desktop.files.readPaths.clear();
    desktop.files.savedPaths.clear();
    if (QMBillsLoader{desktop.platform}.loadBillsForExtension().empty())
      state.SkipWithError("the widget shows nothing");
  }
  state.counters["files_read"] = static_cast<double>(desktop.files.readPaths.size());
  state.counters["files_saved"] = static_cast<double>(desktop.files.savedPaths.size());
  state.counters["bound"] = 1;
}
BENCHMARK(loadBillsForExtension)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallyvane::bench
