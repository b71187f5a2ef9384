#include <gmock/gmock.h>

#include "support/CommandLineHome.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

std::vector<std::string> toursLeft() {
  std::vector<std::string> left;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
    if (entry.path().filename().string().starts_with("tallyvane-tour-")) left.push_back(entry.path());
  }
  return left;
}

TEST(Tour, RunsEachCommandThatItShowsAndLeavesNothing) {
  CommandLineHome home;
  const auto before = toursLeft();
  const Said tour = home.run({"tour"});
  EXPECT_EQ(tour.status, 0);
  std::size_t at = 0;
  for (const char* text :
       {"$ tallyvane add Rent", "Added \"Rent\": Due in 4 days.", "'every 2 months'",
        "Added \"Electricity\": Due in 1 day.", "$ tallyvane overview", "Due Soon\tElectricity",
        "Paid \"Electricity\": $91.00", "$ tallyvane remind --dry-run", "Rent\t", "That was the tour"}) {
    at = tour.text.find(text, at);
    ASSERT_NE(at, std::string::npos) << text << " is missing in\n" << tour.text;
  }
  EXPECT_EQ(toursLeft(), before);
  EXPECT_THAT(home.run({}).text, HasSubstr("There are no active bills."));
  EXPECT_EQ(home.run({"tour", "--json"}).status, 2);
}

}  // namespace
}  // namespace tallyvane::testing
