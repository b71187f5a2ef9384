// The reader and the writer alone.
#include <fstream>
#include <iterator>

#include "Household.h"
#include "Ratio.h"
#include "foundation/PropertyList.h"

namespace tallyvane::bench {
namespace {

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Files into values and no further.
void readBills(benchmark::State& state) {
  Household& household = Household::of(1000);
  PosixFileStore files(household.folder());
  compareWithFloor(
      state, Work::inThisProcess, 4.4, [&] { return readAll(household.billFiles()); },
      [&] {
        for (const std::string& path : household.billFiles()) {
          const Result<std::string> bytes = files.read(path);
          if (!bytes || !readPropertyList(*bytes)) state.SkipWithError("a bill does not read");
        }
        return household.billFiles().size();
      });
}
BENCHMARK(readBills)->UseManualTime()->Unit(benchmark::kMillisecond);

void readBytes(benchmark::State& state, const std::string& bytes) {
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(readPropertyList(bytes));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void writeBytes(benchmark::State& state, const std::string& bytes) {
  const Result<Value> value = readPropertyList(bytes);
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(writePropertyList(*value));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void valueOfIndex(benchmark::State& state) { readBytes(state, bytesOf(Household::of(10000).indexFile())); }
void textOfIndex(benchmark::State& state) { writeBytes(state, bytesOf(Household::of(10000).indexFile())); }
void valueOfBill(benchmark::State& state) { readBytes(state, bytesOf(Household::of(10000).billFiles().front())); }
void textOfBill(benchmark::State& state) { writeBytes(state, bytesOf(Household::of(10000).billFiles().front())); }
BENCHMARK(valueOfIndex)->Unit(benchmark::kMicrosecond);
BENCHMARK(textOfIndex)->Unit(benchmark::kMicrosecond);
BENCHMARK(valueOfBill)->Unit(benchmark::kMicrosecond);
BENCHMARK(textOfBill)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tallyvane::bench
