#include <gmock/gmock.h>

#include "support/Matchers.h"
#include "support/ShownStatusItem.h"

namespace tallyvane::testing {
namespace {

TEST_F(StatusNotifierBarTest, GivesAsMuchOfTheMenuAsAPanelAsksFor) {
  ASSERT_TRUE(panel.hasItem());
  EXPECT_EQ(panel.property<std::string>("Status"), "Active");
  item->setEnabled(false);
  EXPECT_EQ(panel.property<std::string>("Status"), "Passive");
  EXPECT_THAT(panel.labels(), ElementsAre("Show", "-", "Car__Loan\nDue today")) << "an underline is doubled";
  const auto picture = panel.items()[2].get<1>().at("icon-data").get<std::vector<std::uint8_t>>();
  EXPECT_EQ(std::string(picture.begin(), picture.end()), "HOUSE");
  EXPECT_THAT(panel.layout(0, 0).get<2>(), IsEmpty());
  EXPECT_EQ(panel.layout().get<1>().at("children-display").get<std::string>(), "submenu");
  EXPECT_THAT(panel.items({"label"})[2].get<1>(), ElementsAre(::testing::Key("label")));
  EXPECT_EQ(panel.layout(idOf(2)).get<1>().count("label"), 1U);

  sdbus::Variant label;
  panel.call(panel.menuPath, panel.menuInterface, "GetProperty", std::make_tuple(idOf(0), std::string("label")), label);
  EXPECT_EQ(label.get<std::string>(), "Show");

  std::vector<sdbus::Struct<std::int32_t, Properties>> group;
  panel.call(panel.menuPath, panel.menuInterface, "GetGroupProperties",
             std::make_tuple(std::vector<std::int32_t>{idOf(2), 99}, std::vector<std::string>{"label"}), group);
  ASSERT_EQ(group.size(), 1U);
  EXPECT_EQ(group[0].get<1>().at("label").get<std::string>(), "Car__Loan\nDue today");
}

TEST_F(StatusNotifierBarTest, PassesOnWhatIsChosenAndNothingElse) {
  ASSERT_TRUE(panel.hasItem());
  EXPECT_FALSE(panel.click(idOf(2)));
  EXPECT_FALSE(panel.click(idOf(1)));
  EXPECT_THAT(panel.click(99).value_or(""), HasSubstr("99"));
  EXPECT_THAT(chosen, ElementsAre("menuItemSelected:A"));

  using Event = sdbus::Struct<std::int32_t, std::string, sdbus::Variant, std::uint32_t>;
  const std::vector<Event> events{{idOf(0), "hovered", sdbus::Variant(0), 0},
                                  {idOf(0), "clicked", sdbus::Variant(0), 0},
                                  {77, "clicked", sdbus::Variant(0), 0}};
  std::vector<std::int32_t> unknown;
  panel.call(panel.menuPath, panel.menuInterface, "EventGroup", std::make_tuple(events), unknown);
  EXPECT_THAT(unknown, ElementsAre(77));
  panel.call(panel.itemPath, panel.itemInterface, "Activate", std::make_tuple(std::int32_t{1}, std::int32_t{1}));
  EXPECT_THAT(chosen, ElementsAre("menuItemSelected:A", "showTallyvane", "showTallyvane"));

  bool needsUpdate = true;
  panel.call(panel.menuPath, panel.menuInterface, "AboutToShow", std::make_tuple(std::int32_t{0}), needsUpdate);
  EXPECT_FALSE(needsUpdate);
}

TEST_F(StatusNotifierBarTest, KeepsANumberForTheSameBillSoThatALateClickNeverMeansAnother) {
  ASSERT_TRUE(panel.hasItem());
  const std::int32_t first = idOf(2);
  item->setMenu({{command("Show"), MenuEntry(), billEntry("B", "Rent\nDue today")}});
  EXPECT_TRUE(panel.click(first));
  EXPECT_THAT(chosen, IsEmpty());
  item->setMenu({{command("Show"), MenuEntry(), billEntry("B", "Rent"), billEntry("A", "Car"), billEntry("A", "Car")}});
  EXPECT_EQ(idOf(3), first);
  EXPECT_NE(idOf(4), first);
}

TEST_F(StatusNotifierBarTest, TellsPanelsOnceOfWhatSeveralCallsHaveChanged) {
  ASSERT_TRUE(panel.hasItem());
  panel.follow();
  item->setMenu({{command("Show")}});
  item->setMenu({{command("Show"), MenuEntry(), billEntry("A", "Car_Loan\nDue tomorrow")}});
  announce();
  ASSERT_TRUE(panel.until([&] { return !panel.signals.empty(); }));
  EXPECT_THAT(panel.signals, ElementsAre("ItemsPropertiesUpdated"));

  panel.signals.clear();
  item->setMenu({{command("Show")}});
  item->setAttributedTitle({"2", {}});
  announce();
  ASSERT_TRUE(panel.until([&] { return panel.signals.size() >= 5; }));
  EXPECT_THAT(panel.signals,
              ElementsAre("NewIconThemePath", "NewIcon", "NewToolTip", "XAyatanaNewLabel", "LayoutUpdated"));
}

TEST_F(StatusNotifierBarTest, ShowsTheCountAsLabelInTheToolTipAndInAPictureOfItsOwn) {
  ASSERT_TRUE(panel.hasItem());
  EXPECT_EQ(panel.property<std::string>("IconName"), "mnblack");
  EXPECT_EQ(panel.property<std::string>("IconThemePath"), session.folder.path);

  for (const std::string count : {"3", "12"}) {
    item->setAttributedTitle({count, {}});
    EXPECT_EQ(panel.property<std::string>("XAyatanaLabel"), count);
    EXPECT_EQ(shownToolTip(), "Tallyvane (" + count + ")");
    EXPECT_EQ(panel.property<std::string>("IconName"), "mnblack-" + count);
    const std::string drawing = panel.property<std::string>("IconThemePath") + "/mnblack-" + count + ".svg";
    EXPECT_THAT(contentOf(drawing), HasSubstr(">" + count + "</text>"));
    EXPECT_THAT(contentOf(drawing), HasSubstr("base64,QkxBQ0s=\""));
  }
  item->setAttributedTitle({"", {}});
  EXPECT_EQ(panel.property<std::string>("IconName"), "mnblack");
  EXPECT_EQ(shownToolTip(), "Tallyvane");
}

TEST_F(StatusNotifierBarTest, GivesTheItemToAPanelThatStartsAgain) {
  ASSERT_TRUE(panel.hasItem());
  const std::string name = panel.registered.back();
  panel.restart();
  ASSERT_TRUE(panel.hasItem());
  EXPECT_THAT(panel.registered, ElementsAre(name));
}

TEST_F(StatusNotifierBarTest, LeavesNothingBehindWhenTheItemGoes) {
  ASSERT_TRUE(panel.hasItem());
  item->setAttributedTitle({"3", {}});
  const std::string name = panel.registered.back();
  item.reset();
  announce();
  EXPECT_TRUE(std::filesystem::is_empty(session.folder.path + "/run"));
  std::vector<std::string> names;
  sdbus::createProxy(**bus.connection(), "org.freedesktop.DBus", "/org/freedesktop/DBus")
      ->callMethod("ListNames")
      .onInterface("org.freedesktop.DBus")
      .storeResultsTo(names);
  EXPECT_THAT(names, Not(Contains(name)));
  EXPECT_THAT(panel.call(panel.menuPath, panel.menuInterface, "AboutToShow", std::make_tuple(0)), Not(std::nullopt));
}

TEST(StatusBarWithoutABus, GivesAnItemThatNobodySees) {
  SessionBus none("");
  FakeDesktop desktop;
  StatusNotifierBar bar(none, desktop.mainQueue, desktop.files, desktop.resources, "/run", desktop.log, {});
  bar.statusItemWithLength(variableStatusItemLength)->setImage("mnblack");
  EXPECT_THAT(desktop.log.diagnostics, ElementsAre(HasSubstr("no session bus")));
}

}  // namespace
}  // namespace tallyvane::testing
