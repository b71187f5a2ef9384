// What a person meets first: the welcome, the doctor, how work is shown that takes long.
#include "cli/doctor/Diagnosis.h"
#include "cli/terminal/Progress.h"
#include "support/CliCommands.h"

namespace tallyvane::testing {
namespace {

using cli::Diagnosis;
using cli::Health;
using cli::Surroundings;
using Presence = SessionServices::Presence;

using Welcome = CliCommands;

TEST_F(Welcome, IsForAPersonWhoHasNoBillsAtAll) {
  EXPECT_EQ(done({}),
            "There are no active bills.\nAdd one: tallyvane add Rent --due 2027-03-01 --repeat monthly "
            "--amount 900\n");
  cli.terminal.interactive = true;
  EXPECT_THAT(done({}), AllOf(HasSubstr("Welcome"), HasSubstr("  tallyvane add Rent"), HasSubstr("  tallyvane tour"),
                              HasSubstr("  tallyvane --help")));
  EXPECT_THAT(done({"--json"}), Not(HasSubstr("Welcome")));
  (void)cli.desktop.files.createFolder("/home/ada/.local/share/Tallyvane/Data");
  cli.desktop.files.content["/home/ada/.local/share/Tallyvane/Data/Rent.plist"] = "?";
  EXPECT_THAT(done({}), AllOf(HasSubstr("  tallyvane import"), Not(HasSubstr("--help"))));
  add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "9"});
  done({"archive", "Rent"});
  EXPECT_THAT(done({}), HasSubstr("There are no active bills."));
}

struct Doctor : CliCommands {
  Doctor() {
    done({"tags"});
    (void)cli.desktop.files.createFolder(cli.dataFolder);
  }
  /// What is said of one thing.
  Diagnosis of(const std::string& subject) {
    for (const Diagnosis& diagnosis : cli::diagnose(cli.desktop.platform, around)) {
      if (diagnosis.subject == subject) return diagnosis;
    }
    ADD_FAILURE() << "nothing is said of " << subject;
    return {};
  }
  void set(const char* key, const Value& value) { (void)cli.desktop.defaults.set(key, value); }

  Surroundings around{.services = {.busFailure = "",
                                   .agent = Presence::running,
                                   .notifications = Presence::running,
                                   .notificationServer = "dunst 1.9",
                                   .trayWatcher = true,
                                   .trayHost = true},
                      .launcher = "/usr/share/applications/com.Quillmoor.Tallyvane.desktop",
                      .autostart = "/etc/xdg/autostart/com.Quillmoor.Tallyvane.Login.desktop",
                      .zoneSource = "TZ"};
};

TEST_F(Doctor, TellsWhatWorksWhatIsOffWhatIsLackingAndWhatIsBroken) {
  for (const char* key : {"QMEnableNotificationCenter", "QMReminderEvents", "QMEmailsEnabled"}) set(key, true);
  set("LEMAddress", "ada@example.org");
  for (const Diagnosis& diagnosis : cli::diagnose(cli.desktop.platform, around))
    EXPECT_EQ(diagnosis.health, Health::works) << diagnosis.subject << diagnosis.finding;
  const struct {
    const char* subject;
    Health health;
    const char* says;
    std::function<void()> change;
  } rows[] = {
      {"Session bus", Health::lacking, "no bus here", [&] { around.services.busFailure = "no bus here"; }},
      {"Tallyvane agent", Health::lacking, "tallyvane-helper", [&] { around.services.agent = Presence::startable; }},
      {"Launching", Health::lacking, "No desktop entry", [&] { around.launcher.reset(); }},
      {"Start at login", Health::lacking, "systemctl --user enable", [&] { around.autostart.reset(); }},
      {"Tray menu", Health::lacking, "AppIndicator", [&] { around.services.trayHost = false; }},
      {"Tray menu", Health::off, "EnableStartAtLoginMenu yes", [&] { set("EnableStartAtLoginMenu", false); }},
      {"Notifications", Health::broken, "dunst", [&] { around.services.notifications = Presence::absent; }},
      {"Notifications", Health::off, "Switched off", [&] { set("QMEnableNotificationCenter", false); }},
      {"Calendar", Health::broken, "cannot be written", [&] { around.isCalendarFolderWritable = false; }},
      {"Calendar", Health::broken, "the list is locked", [&] { cli.desktop.calendars.unreadable = true; }},
      {"Calendar", Health::off, "QMReminderEvents yes", [&] { set("QMReminderEvents", false); }},
      {"Mail", Health::broken, "module", [&] { around.hasHttpModule = false; }},
      {"Mail", Health::broken, "no API key", [&] { cli.desktop.mail.content.apiKey.clear(); }},
      {"Mail", Health::off, "QMEmailsEnabled yes", [&] { set("QMEmailsEnabled", false); }},
      {"Language", Health::lacking, "en_US, with texts in English", [&] { around.hasCatalogue = false; }},
      {"Bills", Health::broken, "cannot be written", [&] { around.isDataFolderWritable = false; }},
      {"Bills", Health::broken, "billindex.plist",
       [&] { cli.desktop.files.content[cli.dataFolder + "/billindex.plist"] = "rubbish"; }},
  };
  for (const auto& row : rows) {
    row.change();
    const Diagnosis diagnosis = of(row.subject);
    EXPECT_EQ(diagnosis.health, row.health) << row.says;
    EXPECT_THAT(diagnosis.finding + " " + diagnosis.remedy, HasSubstr(row.says));
  }
}

TEST(Progress, IsOneLineThatComesLateAndGoes) {
  std::ostringstream out, err;
  cli::Console console(out, err, {.interactive = true, .width = 12, .showsProgress = true});
  {
    cli::Progress progress(console);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds{700};
    int asked = 0;
    while (std::chrono::steady_clock::now() < end)
      progress.show([&] { return std::to_string(++asked) + " of many, many"; });
    EXPECT_GE(asked, 1);
    EXPECT_LE(asked, 3);
    EXPECT_THAT(err.str(), ::testing::StartsWith("\r1 of many,"));
    console.error("a warning");
    EXPECT_THAT(err.str(), HasSubstr("\r\x1b[Ktallyvane: a warning\n"));
    const std::string before = err.str();
    cli::Console elsewhere(out, err, {.interactive = true});
    elsewhere.progress("not seen");
    EXPECT_EQ(err.str(), before);
  }
  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace tallyvane::testing
