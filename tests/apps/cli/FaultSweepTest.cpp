// Every operation that writes, struck by a fault at each of its accesses to files and settings in turn: whatever
// happens, nothing that the person had is lost, and the next operation works.
#include "support/FaultSweep.h"

#include "common/DailyBackup.h"
#include "common/ReminderPass.h"

namespace tallyvane::testing {
namespace {

const SweptOperation operations[] = {
    {"add", command("add New --due +9d --repeat weekly --amount 1 --tag 'New tag' --remind 1")},
    {"edit", command("edit Rent --name Flat --due tomorrow --tag 'New tag'")},
    {"edit an archived bill", command("edit Phone --amount 5")},
    {"archive", command("archive Rent")},
    {"restore an archived bill", command("restore Phone")},
    {"restore a deleted bill", command("restore Gone")},
    {"delete", command("delete Rent")},
    {"delete all", command("delete-all --yes")},
    {"pay", command("pay Rent --amount 7")},
    {"pay with receipt", command("pay Rent --receipt /media/rent.pdf")},
    {"pay an archived bill", command("pay Phone --keep-due-date")},
    {"undo", command("undo Rent")},
    {"correct a payment", command("payments Rent --edit 1 --amount 5 --receipt /media/rent.pdf")},
    {"remove a payment", command("payments Rent --remove 1")},
    {"autopay", command("autopay")},
    {"autopay, catching up", command("autopay --catch-up")},
    {"tags", command("tags --set Other")},
    {"income add", command("income add 'Rent of room' --amount 300 --repeat monthly --day 3")},
    {"income edit", command("income edit Salary --amount 2900")},
    {"income remove", command("income remove Salary")},
    {"settings set", command("settings set QMDueSoonDays 9")},
    {"settings unset", command("settings unset LEMAddress")},
    {"backup", command("backup"), false},
    {"restore-backup", command("restore-backup --yes"), false},
    {"location, moved", command("location --set /media/disk"), false},
    {"location, copied", command("location --set /media/disk --copy"), false},
    {"location, back", command("location --reset"), false, {command("location --set /media/disk")}},
    {"location, adopted", command("location --reset --adopt"), false, {command("location --set /media/disk --copy")}},
    {"location, in a Dropbox", command("location --dropbox"), false, {command("location --set /media/disk")}},
    {"import", command("import /media/Tallyvane")},
    {"check, repairing", command("check --repair"), false, {listRentTwice}},
    {"export", command("export --csv --output /media/bills.csv"), false},
    {"remind", command("remind")},
    {"notifications remove", command("notifications remove Rent")},
    {"mail, recipient", command("mail --to bob@example.org")},
    {"mail check", command("mail check"), false},
    {"overview", command("overview --group archived")},
    {"agent: reminder pass", agent([](auto&, auto&, const Platform& p) { return programs::runReminderPass(p); })},
    {"agent: daily backup", agent([](auto&, auto&, const Platform& p) {
       const auto made = programs::backUpToday(p);
       return made ? Result<>() : Result<>(Error{made.error()});
     }),
     false},
    {"agent: mail round", agent(sendMails), false},
};

/// Other devices are told what the files hold, and of no bill that is not there.
void expectMirrorAgrees(CliDesktop& cli, const std::string& where) {
  const std::map<std::string, std::string> lists{
      {"activebills", "ActiveBills"}, {"archivedbills", "ArchivedBills"}, {"deletedbills", "DeletedBills"}};
  for (const auto& [key, value] : cli.desktop.cloud.content) {
    if (const auto list = lists.find(key); list != lists.end()) {
      EXPECT_EQ(stringsOf(value.get<Array>()), cli.listed(list->second)) << where << key;
    } else if (key == "tagindex") {
      EXPECT_TRUE(value == cli.desktop.files.plist(cli.dataFolder + "/tagindex.plist")) << where;
    } else {
      EXPECT_TRUE(value == Value(cli.bill(key))) << where << key;
    }
  }
}

class Sweep : public FaultSweep {
 public:
  using FaultSweep::FaultSweep;

 private:
  void expectAfter(const Struck& struck) override {
    expectNothingIsLost(struck);
    expectTheNextWorks(struck);
    expectAllIsInOneFolder();
  }
  void expectNothingIsLost(const Struck& struck) {
    InMemoryFileStore& files = cli_.desktop.files;
    const std::set<std::string> folders = dataFolders(files.content);
    EXPECT_TRUE(std::any_of(folders.begin(), folders.end(), [&](const auto& each) {
      return isWhole(files, each, bids_);
    })) << where_;
    for (const auto& [path, bytes] : furnished_.files().content) {
      const auto now = files.content.find(path);
      if (now == files.content.end()) continue;
      EXPECT_TRUE(known_.contains(*now)) << where_ << path << "\n" << now->second;
    }
    if (struck.killed || struck.outcome.status == 0) return;
    EXPECT_EQ(struck.outcome.status, 1) << where_ << struck.outcome.err;
    EXPECT_FALSE(struck.outcome.err.empty()) << where_;
    if (!swept_.whole || isHalfDone(struck)) return;
    EXPECT_TRUE(files.content == furnished_.files().content || files.content == done_) << where_;
    if (kind_ == Strike::diskUnreadable) return;
    if (files.content == done_) return;
    expectMirrorAgrees(cli_, where_);
    EXPECT_TRUE(kind_ == Strike::readFails || remindersOf(cli_.desktop) == reminders_) << where_;
  }
  void expectTheNextWorks(const Struck& struck) {
    const Arguments next{"add", "Next", "--due", "today", "--repeat", "weekly", "--amount", "1"};
    Outcome outcome = cli_.run(next);
    if (outcome.status != 0) {
      mend(outcome.err);
      outcome = cli_.run(next);
    }
    EXPECT_EQ(outcome.status, 0) << where_ << outcome.err;
    for (const std::string& finding : cli_.findings()) {
      const bool isExplained = findings_.contains(finding) || isHarmless(finding) ||
                               (isHalfDone(struck) && finding.starts_with("inNoList "));
      EXPECT_TRUE(isExplained) << where_ << finding;
    }
  }
  /// Does what a refusal tells the person to do, which names where the bills are meanwhile.
  void mend(const std::string& refusal) {
    EXPECT_THAT(refusal, HasSubstr("whole in ")) << where_;
    const std::size_t at = refusal.find("whole in ") + 9;
    const std::string folder = refusal.substr(at, refusal.find(". \"", at) - at);
    EXPECT_TRUE(isWhole(cli_.desktop.files, folder, bids_)) << where_ << refusal;
    const bool isMove = refusal.find("location --finish") != std::string::npos;
    if (isMove) {
      EXPECT_EQ(cli_.run({"settings", "unset", "QMCustomLocationBookmark"}).status, 1) << where_;
    }
    const Outcome mended = cli_.run(isMove ? Arguments{"location", "--finish"} : Arguments{"restore-backup", "--undo"});
    EXPECT_EQ(mended.status, 0) << where_ << mended.err;
  }
  void expectAllIsInOneFolder() {
    const std::set<std::string> folders = dataFolders(cli_.desktop.files.content);
    EXPECT_TRUE(folders == dataFolders(furnished_.files().content) || folders == dataFolders(done_))
        << where_ << ::testing::PrintToString(folders);
    const std::string folder = cli_.currentFolder();
    EXPECT_THAT(receiptsIn(cli_.desktop, folder), Each(StartsWith(folder + "/"))) << where_;
  }
  /// What a bill may lack that came from elsewhere.
  static bool isHarmless(const std::string& finding) {
    const std::string kind = finding.substr(0, finding.find(' '));
    return kind == "oddKey" || kind == "noDueDate" || kind == "invalidRepeat";
  }
  /// Where a disk takes nothing any more, nothing can be put back either, which the person is told.
  static bool isHalfDone(const Struck& struck) {
    return struck.killed || struck.outcome.err.find("could not be put back") != std::string::npos;
  }
};

class Operations : public ::testing::TestWithParam<SweptOperation> {};

TEST_P(Operations, LoseNothingToAFaultAndTheNextWorks) {
  const int points = Sweep(GetParam()).run();
  std::printf("%s: %d points\n", GetParam().name, points);
  EXPECT_GT(points, 3);
}

INSTANTIATE_TEST_SUITE_P(All, Operations, ::testing::ValuesIn(operations), [](const auto& operation) {
  std::string name;
  for (const char* c = operation.param.name; *c != '\0'; ++c)
    name += std::isalnum(static_cast<unsigned char>(*c)) ? *c : '_';
  return name;
});

}  // namespace
}  // namespace tallyvane::testing
