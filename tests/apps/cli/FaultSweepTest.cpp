// Every operation that writes, struck by a fault at each of its accesses to files and settings in turn: whatever
// happens, nothing that the person had is lost, and the next operation works.
#include "support/FaultSweep.h"

#include <nlohmann/json.hpp>

#include "cli/bills/BillChange.h"
#include "common/DailyBackup.h"
#include "common/MailRound.h"
#include "common/ReminderPass.h"
#include "reminders/QMEmailManager.h"
#include "support/Safekeeping.h"

namespace tallyvane::testing {
namespace {

using ::testing::HasSubstr;
using Arguments = std::vector<std::string>;

Operation command(const Arguments& arguments) {
  return [=](CliDesktop& cli, FileStore& store) { return cli.runOn(store, arguments); };
}

/// What the agent does by itself, over the files as it guards them. The operation gives an error or nothing.
template <typename Work>
Operation agent(Work work) {
  return [=](CliDesktop& cli, FileStore& store) {
    programs::GuardedFileStore guarded(store, cli.desktop.log);
    const Platform platform = cli.desktop.over(guarded);
    const Result<> done = work(cli, guarded, platform);
    return Outcome{done ? 0 : 1, "", done ? "" : done.error()};
  };
}

Result<> sendMails(CliDesktop& cli, programs::GuardedFileStore& guarded, const Platform& platform) {
  programs::MailRoundNotes notes{platform, "/home/ada/.local/state/Tallyvane/mail.plist"};
  guarded.begin();
  notes.prepareMailQueue();
  if (const Result<> prepared = guarded.finish(); !prepared) return prepared;
  QMEmailManager manager{platform};
  manager.checkForMessagesToSendAsynchronous(true);
  cli.desktop.workQueue.run();
  cli.desktop.mainQueue.run();
  return notes.note({});
}

Outcome listRentTwice(CliDesktop& cli, FileStore&) {
  const std::string path = cli.dataFolder + "/billindex.plist";
  Dictionary index = *cli.desktop.files.plist(path).get<Dictionary>();
  Array active = *index.get<Array>("ActiveBills");
  active.push_back(active.front());
  index.set("ActiveBills", active);
  cli.desktop.files.putPlist(path, index);
  cli::mirrorLists(cli.desktop.platform);
  return {};
}

struct Row {
  const char* name;
  std::vector<Operation> before;
  Operation operation;
  /// Whole or not at all: what fails leaves all files as they were. Of the others each file is old or new.
  bool whole = true;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

const Row rows[] = {
    {"add", {}, command({"add", "New", "--due", "today", "--repeat", "weekly", "--amount", "1", "--tag", "New tag"})},
    {"add with reminder",
     {},
     command({"add", "N", "--due", "+9d", "--repeat", "weekly", "--amount", "1", "--remind", "1"})},
    {"edit", {}, command({"edit", "Rent", "--name", "Flat", "--due", "tomorrow", "--tag", "New tag"})},
    {"edit an archived bill", {}, command({"edit", "Phone", "--amount", "5"})},
    {"archive", {}, command({"archive", "Rent"})},
    {"restore an archived bill", {}, command({"restore", "Phone"})},
    {"restore a deleted bill", {}, command({"restore", "Gone"})},
    {"delete", {}, command({"delete", "Rent"})},
    {"delete all", {}, command({"delete-all", "--yes"})},
    {"pay", {}, command({"pay", "Rent", "--amount", "7"})},
    {"pay with receipt", {}, command({"pay", "Rent", "--receipt", "/media/rent.pdf"})},
    {"pay an archived bill", {}, command({"pay", "Phone", "--keep-due-date"})},
    {"undo", {}, command({"undo", "Rent"})},
    {"correct a payment",
     {},
     command({"payments", "Rent", "--edit", "1", "--amount", "5", "--receipt", "/media/rent.pdf"})},
    {"remove a payment", {}, command({"payments", "Rent", "--remove", "1"})},
    {"autopay", {}, command({"autopay"})},
    {"autopay, catching up", {}, command({"autopay", "--catch-up"})},
    {"tags", {}, command({"tags", "--set", "Other"})},
    {"income add",
     {},
     command({"income", "add", "Rent of room", "--amount", "300", "--repeat", "monthly", "--day", "3"})},
    {"income edit", {}, command({"income", "edit", "Salary", "--amount", "2900"})},
    {"income remove", {}, command({"income", "remove", "Salary"})},
    {"settings set", {}, command({"settings", "set", "QMDueSoonDays", "9"})},
    {"settings unset", {}, command({"settings", "unset", "LEMAddress"})},
    {"backup", {}, command({"backup"}), false},
    {"restore-backup", {}, command({"restore-backup", "--yes"}), false},
    {"location, moved", {}, command({"location", "--set", "/media/disk"}), false},
    {"location, copied", {}, command({"location", "--set", "/media/disk", "--copy"}), false},
    {"location, back", {command({"location", "--set", "/media/disk"})}, command({"location", "--reset"}), false},
    {"location, adopted",
     {command({"location", "--set", "/media/disk", "--copy"})},
     command({"location", "--reset", "--adopt"}),
     false},
    {"location, in a Dropbox",
     {command({"location", "--set", "/media/disk"})},
     command({"location", "--dropbox"}),
     false},
    {"import", {}, command({"import", "/media/Tallyvane"})},
    {"check, repairing", {listRentTwice}, command({"check", "--repair"}), false},
    {"export", {}, command({"export", "--csv", "--output", "/media/bills.csv"}), false},
    {"remind", {}, command({"remind"})},
    {"notifications remove", {}, command({"notifications", "remove", "Rent"})},
    {"mail, recipient", {}, command({"mail", "--to", "bob@example.org"})},
    {"mail check", {}, command({"mail", "check"}), false},
    {"overview", {}, command({"overview", "--group", "archived"})},
    {"agent: reminder pass", {}, agent([](auto&, auto&, const Platform& p) { return programs::runReminderPass(p); })},
    {"agent: daily backup",
     {},
     agent([](auto&, auto&, const Platform& p) {
       const auto made = programs::backUpToday(p);
       return made ? Result<>() : Result<>(Error{made.error()});
     }),
     false},
    {"agent: mail round", {}, agent(sendMails), false},
};

/// A household that uses everything: bills in each state, one paid automatically and overdue, reminders of every kind,
/// a mirror, income, a backup of yesterday and an old folder to import.
void furnish(CliDesktop& cli) {
  FakeDesktop& desktop = cli.desktop;
  desktop.calendars.calendarList = {{"home", "Tallyvane", "here"}};
  for (const char* key : {"QMReminderEvents", "QMEnableNotificationCenter", "iCloudSyncEnabled", "QMEmailsEnabled"})
    (void)desktop.defaults.set(key, true);
  (void)desktop.defaults.set("LEMAddress", "ada@example.org");
  desktop.clock.moment -= std::chrono::hours{24};
  Safekeeping::setUp(cli);
  const Arguments commands[] = {
      {"add", "Phone", "--due", "2027-03-20", "--repeat", "monthly", "--amount", "20", "--tag", "Home"},
      {"add", "Gone", "--due", "2027-03-20", "--repeat", "monthly", "--amount", "20"},
      {"add", "Power", "--due", "2027-01-10", "--repeat", "monthly", "--amount", "1", "--auto"},
      {"edit", "Rent", "--due", "2027-03-13", "--tag", "Home"},
      {"archive", "Phone"},
      {"delete", "Gone"},
      {"income", "add", "Salary", "--amount", "2800", "--repeat", "monthly", "--day", "last"},
      {"backup"},
      {"edit", "Rent", "--amount", "901"}};
  for (const Arguments& arguments : commands) {
    const Outcome outcome = cli.run(arguments);
    ASSERT_EQ(outcome.status, 0) << arguments[0] << outcome.err;
  }
  desktop.clock.moment += std::chrono::hours{24};
  (void)cli.run({"overview"});  // for the widget
  cli::mirrorLists(desktop.platform);
  for (const char* name : {"Gym", "Club"})
    desktop.files.putPlist("/media/Tallyvane/Data/" + std::string(name) + ".plist",
                           Dictionary{{"Next_Due", Date()}, {"Repeat_a", 2}, {"Repeat_b", "Weeks"}});
}

std::set<std::string> listedIn(InMemoryFileStore& files, const std::string& index) {
  const Value root = files.plist(index);
  std::set<std::string> bids;
  for (const char* list : {"ActiveBills", "ArchivedBills", "DeletedBills"}) {
    if (!root.is<Dictionary>()) break;
    for (const std::string& bid : stringsOf(root.get<Dictionary>()->get<Array>(list))) bids.insert(bid);
  }
  return bids;
}

/// Whether some data folder, wherever it is by now, lists all these bills and has their files. Backups do not count.
bool isWholeSomewhere(InMemoryFileStore& files, const std::set<std::string>& bids) {
  constexpr std::string_view index = "/billindex.plist";
  for (const auto& [path, bytes] : files.content) {
    const std::string folder = path.substr(0, path.size() - std::min(path.size(), index.size()));
    const bool isDataFolder = path.ends_with(index) && folder.find("Tallyvane.tvdata") != std::string::npos;
    if (!isDataFolder) continue;
    const std::set<std::string> listed = listedIn(files, path);
    if (std::all_of(bids.begin(), bids.end(), [&](const std::string& bid) {
          return listed.contains(bid) && files.content.contains(folder + "/" + bid + ".plist");
        }))
      return true;
  }
  return false;
}

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

/// Titles of what reminds of bills, and what the widget shows.
std::vector<std::string> remindersOf(FakeDesktop& desktop) {
  std::vector<std::string> titles;
  for (const CalendarEvent& event : desktop.calendars.eventList) titles.push_back("event " + event.title);
  for (const auto& note : desktop.notifications.scheduledList) titles.push_back("notification " + note.title);
  std::sort(titles.begin(), titles.end());
  titles.push_back(writePropertyList(desktop.groupDefaults.object("ActiveBills").value_or(Value(""))));
  return titles;
}

class Sweep {
 public:
  explicit Sweep(const Row& row) : row_(row), furnished_(cli_.desktop) {}

  /// How many faults struck.
  int run() {
    furnish(cli_);
    for (const Operation& before : row_.before) EXPECT_EQ(before(cli_, cli_.desktop.files).status, 0) << row_.name;
    findings_ = findings();
    furnished_ = KeptState(cli_.desktop);
    reminders_ = remindersOf(cli_.desktop);
    bids_ = listedIn(cli_.desktop.files, currentFolder() + "/billindex.plist");
    runUnstruck();
    int points = 0;
    for (const Strike kind : allStrikes) points += strikeEveryAccess(kind);
    return points;
  }

 private:
  /// What the operation itself takes off the lists need not be there after a fault.
  void runUnstruck() {
    Outcome outcome{};
    known_ = contentsDuring(cli_, row_.operation, outcome);
    EXPECT_EQ(outcome.status, 0) << row_.name << ": " << outcome.err;
    done_ = cli_.desktop.files.content;
    findings_.merge(findings());
    const std::set<std::string> left = listedIn(cli_.desktop.files, currentFolder() + "/billindex.plist");
    std::erase_if(bids_, [&](const std::string& bid) { return !left.contains(bid); });
  }
  int strikeEveryAccess(Strike kind) {
    for (int access = 1;; ++access) {
      furnished_.putInto(cli_.desktop);
      const Struck struck = strike(cli_, row_.operation, kind, access);
      if (!struck.reached) return access - 1;
      kind_ = kind;
      where_ = fmt::format("{}, strike {} at {}: ", row_.name, static_cast<int>(kind), access);
      expectNothingIsLost(struck);
      expectTheNextWorks(struck);
    }
  }
  void expectNothingIsLost(const Struck& struck) {
    InMemoryFileStore& files = cli_.desktop.files;
    EXPECT_TRUE(isWholeSomewhere(files, bids_)) << where_;
    for (const auto& [path, bytes] : furnished_.files.content) {
      const auto now = files.content.find(path);
      if (now == files.content.end()) continue;
      EXPECT_TRUE(known_.contains(*now)) << where_ << path << "\n" << now->second;
    }
    if (struck.killed || struck.outcome.status == 0) return;
    EXPECT_EQ(struck.outcome.status, 1) << where_ << struck.outcome.err;
    EXPECT_FALSE(struck.outcome.err.empty()) << where_;
    if (!row_.whole || isHalfDone(struck)) return;
    EXPECT_TRUE(files.content == furnished_.files.content || files.content == done_) << where_;
    if (kind_ == Strike::diskUnreadable) return;
    if (files.content == done_) return;
    expectMirrorAgrees(cli_, where_);
    EXPECT_TRUE(kind_ == Strike::readFails || remindersOf(cli_.desktop) == reminders_) << where_;
  }
  void expectTheNextWorks(const Struck& struck) {
    const Arguments next{"add", "Next", "--due", "today", "--repeat", "weekly", "--amount", "1"};
    Outcome outcome = cli_.run(next);
    if (outcome.status != 0) {
      const bool isMove = outcome.err.find("location --finish") != std::string::npos;
      EXPECT_THAT(outcome.err, HasSubstr("Your bills")) << where_;
      const Outcome mended =
          cli_.run(isMove ? Arguments{"location", "--finish"} : Arguments{"restore-backup", "--undo"});
      EXPECT_EQ(mended.status, 0) << where_ << mended.err;
      outcome = cli_.run(next);
    }
    EXPECT_EQ(outcome.status, 0) << where_ << outcome.err;
    for (const std::string& finding : findings()) {
      const bool isExplained = findings_.contains(finding) || (isHalfDone(struck) && finding.ends_with("inNoList"));
      EXPECT_TRUE(isExplained) << where_ << finding;
    }
  }
  /// What is wrong in the data folder but what a bill may lack that came from elsewhere; each with its kind at the end.
  std::set<std::string> findings() {
    const std::set<std::string> harmless{"oddKey", "noDueDate", "invalidRepeat"};
    const auto report = nlohmann::json::parse(cli_.run({"check", "--json"}).out);
    std::set<std::string> found;
    for (const auto& finding : report.at("findings")) {
      const std::string kind = finding.at("kind");
      const std::string file = finding.at("file");
      if (!harmless.contains(kind)) found.insert(file + ": " + kind);
    }
    return found;
  }
  /// Where a disk takes nothing any more, nothing can be put back either, which the person is told.
  static bool isHalfDone(const Struck& struck) {
    return struck.killed || struck.outcome.err.find("could not be put back") != std::string::npos;
  }
  std::string currentFolder() {
    return nlohmann::json::parse(cli_.run({"location", "--json"}).out).at("folder").get<std::string>();
  }

  const Row& row_;
  CliDesktop cli_;
  KeptState furnished_;
  std::vector<std::string> reminders_;
  std::set<std::string> bids_;
  FileContents known_;
  std::map<std::string, std::string> done_;  ///< all files after the operation when nothing strikes
  std::set<std::string> findings_;           ///< without any fault
  Strike kind_{};
  std::string where_;
};

class FaultSweep : public ::testing::TestWithParam<Row> {};

TEST_P(FaultSweep, LosesNothingAndTheNextOperationWorks) {
  const int points = Sweep(GetParam()).run();
  std::printf("%s: %d points\n", GetParam().name, points);
  EXPECT_GT(points, 3);
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultSweep, ::testing::ValuesIn(rows), [](const auto& row) {
  std::string name;
  for (const char* c = row.param.name; *c != '\0'; ++c) name += std::isalnum(static_cast<unsigned char>(*c)) ? *c : '_';
  return name;
});

}  // namespace
}  // namespace tallyvane::testing
