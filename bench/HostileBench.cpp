// What somebody may have made to keep the reader busy is refused within twice the time that an ordinary list of as many
// bytes takes.
#include <string>

#include "Ratio.h"
#include "foundation/PropertyList.h"
#include "support/BinaryLists.h"

namespace tallyvane::bench {
namespace {

constexpr std::size_t million = 1'000'000;

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

std::string listOf(const std::string& content) { return "<plist version=\"1.0\">\n" + content + "\n</plist>\n"; }

std::string nestedAMillionDeep() { return listOf(repeated("<array>", million) + repeated("</array>", million)); }

/// Each entity is ten of the one before it.
std::string entityBomb() {
  std::string entities = "<!DOCTYPE plist [\n<!ENTITY e0 \"bill\">\n";
  for (std::size_t i = 1; entities.size() < million; ++i) {
    const std::string reference = "&e" + std::to_string(i - 1) + ";";
    entities += "<!ENTITY e" + std::to_string(i) + " \"" + repeated(reference, 10) + "\">\n";
  }
  return entities + "]>\n" + listOf("<string>&e100;</string>");
}

/// References to what nobody has declared.
std::string undeclaredEntities() {
  return listOf("<array>" + repeated("<string>&bomb;</string>", million / 10) + "</array>");
}

std::string stringOfAGigabyte() { return listOf("<string>" + std::string(1000 * million, 'x') + "</string>"); }

std::string stringWithoutEnd() { return "<plist version=\"1.0\"><string>" + std::string(30 * million, 'x'); }

/// Thirty arrays that each hold the next twice, behind as much as makes a file of it.
std::string binaryBomb() {
  auto objects = testing::chain(30, 2, testing::bytes({0x09}));
  objects.push_back(testing::bytes({0x5F, 0x12, 0x00, 0x0F, 0x42, 0x40}) + std::string(million, 'x'));
  return testing::binaryList(objects);
}

std::string binaryNesting() {
  std::vector<std::string> objects = testing::chain(200, 1, testing::bytes({0x09}));
  objects.push_back(testing::bytes({0x5F, 0x12, 0x00, 0x0F, 0x42, 0x40}) + std::string(million, 'x'));
  return testing::binaryList(objects);
}

/// Bills' texts, as many bytes or a little more.
std::string ordinary(std::size_t bytes) {
  constexpr std::string_view bill =
      "<dict>\n\t<key>Name</key>\n\t<string>Electricity</string>\n\t<key>Amount</key>\n\t<real>84.5</real>\n"
      "\t<key>DueDate</key>\n\t<date>2027-03-11T17:00:00Z</date>\n\t<key>PayType</key>\n\t<integer>1</integer>\n"
      "\t<key>Notes</key>\n\t<string>The meter is read in the first week of the month.</string>\n</dict>\n";
  return listOf("<array>\n" + repeated(bill, bytes / bill.size() + 1) + "</array>");
}

void refuses(benchmark::State& state, std::string (*hostile)()) {
  const std::string bytes = hostile();
  const std::string usual = ordinary(bytes.size());
  const PropertyListLimits unbounded{.bytes = usual.size()};
  if (readPropertyList(bytes)) state.SkipWithError("it is not refused");
  if (!readPropertyList(usual, unbounded)) state.SkipWithError("an ordinary list is refused");
  compareWithFloor(
      state, Work::inThisProcess, 2, [&] { return readPropertyList(usual, unbounded); },
      [&] { return readPropertyList(bytes); });
}
BENCHMARK_CAPTURE(refuses, nestedAMillionDeep, nestedAMillionDeep)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refuses, entityBomb, entityBomb)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refuses, undeclaredEntities, undeclaredEntities)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refuses, stringOfAGigabyte, stringOfAGigabyte)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refuses, stringWithoutEnd, stringWithoutEnd)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refuses, binaryBomb, binaryBomb)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refuses, binaryNesting, binaryNesting)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallyvane::bench
