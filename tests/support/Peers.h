// Programs of others, with which people see their calendars and notifications, in the session of a test.
#pragma once

#include <fmt/format.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/AgentReminders.h"
#include "support/NamedPipe.h"

namespace tallyvane::testing {

/// Why a test of these programs cannot run here; empty when it can.
inline std::string absent(const std::vector<std::string>& programNames) {
  for (const std::string& name : programNames) {
    if (!std::filesystem::exists("/usr/bin/" + name)) return name + " is not installed, and cannot be here";
  }
  return "";
}

class PeersTest : public AgentRemindersTest {
 protected:
  std::unique_ptr<ChildProcess> startPeer(std::vector<std::string> command, const std::string& output) {
    command.front() = "/usr/bin/" + command.front();
    std::vector<std::string> variables = session.variables();
    variables.insert(variables.end(), {"LC_ALL=C.UTF-8", "DISPLAY=" + display});
    return std::make_unique<ChildProcess>(std::move(command), std::move(variables), output);
  }
  /// What the program says until it ends well.
  std::string said(std::vector<std::string> command) {
    const auto peer = startPeer(std::move(command), file("said"));
    EXPECT_EQ(peer->ended(), 0) << peer->said();
    return peer->said();
  }
  [[nodiscard]] std::string file(const std::string& name) const { return session.folder.path + "/" + name; }
  /// What comes behind the words in a file, up to the next line or quotation mark; empty when nothing does in time.
  std::string writtenAfter(const std::string& path, const std::string& words) {
    std::string found;
    panel->until([&] {
      const std::string text = contentOf(path);
      const auto from = text.find(words);
      const auto end = from == std::string::npos ? from : text.find_first_of("'\n", from + words.size());
      if (end != std::string::npos) found = text.substr(from + words.size(), end - from - words.size());
      return !found.empty();
    });
    return found;
  }

  std::string display;
};

/// A calendar server of the test's own that lets everybody in.
class CalendarPeers : public PeersTest {
 protected:
  CalendarPeers() { settings({{"QMReminderEvents", true}}); }

  /// A day of the session's zone, with its year, month and day in this form.
  static std::string dayText(int days, const char* form) {
    const std::chrono::year_month_day day{std::chrono::floor<std::chrono::days>(inDays(days) - std::chrono::hours{5})};
    return fmt::format(fmt::runtime(form), static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                       static_cast<unsigned>(day.day()));
  }
  static constexpr const char* plainDay = "{:04}{:02}{:02}";

  void startServer() {
    put(file("radicale.conf"),
        "[server]\nhosts = 127.0.0.1:0\n[auth]\ntype = none\n[logging]\nlevel = info\n[storage]\nfilesystem_folder = " +
            file("server") + "\n");
    server_ = startPeer({"radicale", "--config", file("radicale.conf")}, file("server-says"));
    address = "http://127.0.0.1:" + writtenAfter(file("server-says"), "Listening on '[127.0.0.1]:") + "/";
    const std::string here = session.data() + "/calendars/";
    put(file("vdirsyncer.conf"), "[general]\nstatus_path = \"" + file("status") +
                                     "\"\n[pair bills]\na = \"here\"\nb = \"server\"\ncollections = [\"from a\"]\n"
                                     "[storage here]\ntype = \"filesystem\"\npath = \"" +
                                     here + "\"\nfileext = \".ics\"\n[storage server]\ntype = \"caldav\"\nurl = \"" +
                                     address + "\"\nusername = \"ada\"\npassword = \"x\"\n");
  }
  void discover() {
    (void)said({"sh", "-c", "yes | vdirsyncer --config \"$0\" discover bills", file("vdirsyncer.conf")});
  }
  void sync() { (void)said({"vdirsyncer", "--config", file("vdirsyncer.conf"), "sync"}); }
  /// As another client does.
  void putOnServer(const std::string& name, const std::string& text) {
    put(file("changed"), text);
    (void)said({"python3", "-c",
                "import sys, urllib.request as web\n"
                "web.urlopen(web.Request(sys.argv[1], open(sys.argv[2], 'rb').read(), method='PUT', headers={"
                "'Content-Type': 'text/calendar', 'Authorization': 'Basic YWRhOng='}))",
                address + "ada/Tallyvane/" + name, file("changed")});
  }
  /// Names of the event files in a folder.
  [[nodiscard]] std::vector<std::string> eventsIn(const std::string& folder) const {
    std::vector<std::string> names;
    if (!std::filesystem::exists(folder)) return names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".ics") names.push_back(entry.path().filename());
    }
    return names;
  }
  [[nodiscard]] std::string here() const { return session.data() + "/calendars/Tallyvane"; }
  [[nodiscard]] std::string onServer() const { return file("server/collection-root/ada/Tallyvane"); }
  /// Name of the one event file in the folder with this in its text.
  [[nodiscard]] std::string holding(const std::string& folder, const std::string& words) const {
    std::string found;
    for (const std::string& name : eventsIn(folder)) {
      if (contentOf(folder + "/" + name).find(words) == std::string::npos) continue;
      EXPECT_EQ(found, "") << "two of them";
      found = name;
    }
    return found;
  }

  std::string address;

 private:
  std::unique_ptr<ChildProcess> server_;
};

/// A screen of the test's own, with dunst on it in the upper left corner.
class NotificationPeers : public PeersTest {
 protected:
  void startScreen() {
    std::filesystem::create_directory(file("screen"));
    const std::string command = "exec Xvfb -displayfd 1 -screen 0 640x200x24 -fbdir \"$0\" -nolisten tcp 2>/dev/null";
    screen_ = startPeer({"sh", "-c", command, file("screen")}, file("screen-says"));
    display = ":" + writtenAfter(file("screen-says"), "");
  }
  void startDunst() {
    put(file("dunstrc"),
        "[global]\nwidth = 600\norigin = top-left\noffset = 0x0\nmouse_left_click = do_action\n"
        "[urgency_normal]\nbackground = \"#ffffff\"\nforeground = \"#000000\"\n");
    dunst_ = startPeer({"dunst", "-conf", file("dunstrc")}, file("dunst-says"));
  }
  /// Whether the screen is white where the notification is.
  [[nodiscard]] bool isShown() const {
    constexpr std::size_t headerWords = 25, colourSize = 12, lineSize = 640 * 4;
    const std::string picture = contentOf(file("screen/Xvfb_screen0"));
    const auto word = [&](std::size_t index) {
      std::size_t value = 0;
      for (std::size_t i = 0; i < 4; ++i) value = value << 8U | static_cast<unsigned char>(picture[index * 4 + i]);
      return value;
    };
    if (picture.size() < headerWords * 4) return false;
    const std::size_t at = word(0) + word(19) * colourSize + y * lineSize + x * 4;
    return at + 3 <= picture.size() && picture.substr(at, 3) == "\xff\xff\xff";
  }
  void click() { (void)said({"xdotool", "mousemove", std::to_string(x), std::to_string(y), "click", "1"}); }

 private:
  static constexpr std::size_t x = 550, y = 20;  ///< beside its text
  std::unique_ptr<ChildProcess> screen_;
  std::unique_ptr<ChildProcess> dunst_;
};

}  // namespace tallyvane::testing
