// In-memory stand-ins for the ports. Each keeps the contract that the real adapters keep; the contract suites run on
// both.
#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "support/InMemoryFileStore.h"

namespace tallyvane::testing {

/// Stands still until a test moves it.
class FakeClock : public Clock {
 public:
  [[nodiscard]] Date now() override { return moment; }
  Date moment = std::chrono::sys_days{std::chrono::year{2027} / 3 / 10} + std::chrono::hours{17};
};

/// Counts up, so that every draw differs and the same test draws the same.
class FakeRandom : public Random {
 public:
  [[nodiscard]] std::array<std::uint8_t, 16> bytes16() override {
    std::array<std::uint8_t, 16> bytes{};
    ++drawn_;
    for (std::size_t i = 0; i < bytes.size(); ++i)
      bytes[i] = static_cast<std::uint8_t>((drawn_ >> (8 * (i % 4))) * 37 + i);
    return bytes;
  }

 private:
  std::uint32_t drawn_ = 0;
};

class RecordingLog : public Log {
 public:
  void line(std::string_view text) override { lines.emplace_back(text); }
  void diagnostic(std::string_view text) override { diagnostics.emplace_back(text); }
  std::vector<std::string> lines;
  std::vector<std::string> diagnostics;
};

class FakeBookmarks : public Bookmarks {
 public:
  [[nodiscard]] Data bookmark(const std::string& path) override { return Data{{path.begin(), path.end()}}; }
  [[nodiscard]] std::optional<std::string> resolve(const Data& bookmark) override {
    ++resolved;
    if (bookmark.bytes.empty() || bookmark.bytes.front() != '/') return std::nullopt;
    return std::string(bookmark.bytes.begin(), bookmark.bytes.end());
  }
  void startAccessing(const std::string& path) override { accessed.push_back(path); }
  int resolved = 0;
  std::vector<std::string> accessed;
};

class InMemoryUserDefaults : public UserDefaults {
 public:
  [[nodiscard]] std::optional<Value> object(std::string_view key) override {
    if (const Value* value = content.find(key)) return *value;
    if (const Value* value = registered_.find(key)) return *value;
    return std::nullopt;
  }
  Result<> set(std::string_view key, const Value& value) override {
    if (beforeWrite) beforeWrite();
    if (failing) return Error{"the settings are read-only"};
    if (const Value* present = content.find(key); present != nullptr && *present == value) return {};
    ++writes;
    content.set(key, value);
    return {};
  }
  Result<> remove(std::string_view key) override {
    if (beforeWrite) beforeWrite();
    if (content.erase(key)) ++writes;
    return {};
  }
  Result<> synchronize() override {
    ++synchronized;
    return {};
  }
  void registerDefaults(const Dictionary& values) override {
    for (const auto& [key, value] : values) registered_.set(key, value);
  }
  [[nodiscard]] Dictionary stored() override { return content; }

  Dictionary content;
  std::function<void()> beforeWrite;
  bool failing = false;
  int writes = 0;
  int synchronized = 0;

 private:
  Dictionary registered_;
};

class InMemoryKeyValueStore : public KeyValueStore {
 public:
  Result<> set(std::string_view key, const Value& value) override {
    content.insert_or_assign(std::string(key), value);
    return {};
  }
  [[nodiscard]] std::optional<Value> object(std::string_view key) override {
    const auto found = content.find(std::string(key));
    return found == content.end() ? std::nullopt : std::optional<Value>(found->second);
  }
  Result<> remove(std::string_view key) override {
    content.erase(std::string(key));
    return {};
  }
  [[nodiscard]] std::vector<std::string> keys() override {
    std::vector<std::string> names;
    for (const auto& [key, value] : content) names.push_back(key);
    return names;
  }
  std::map<std::string, Value> content;
};

class FakeResources : public Resources {
 public:
  [[nodiscard]] std::optional<std::string> picture(std::string_view name) override {
    const std::string stem(name.ends_with(".png") ? name.substr(0, name.size() - 4) : name);
    return found(pictures, stem);
  }
  [[nodiscard]] std::optional<std::string> text(std::string_view name) override {
    return found(texts, std::string(name));
  }
  std::map<std::string, std::string> pictures;
  std::map<std::string, std::string> texts;

 private:
  static std::optional<std::string> found(const std::map<std::string, std::string>& from, const std::string& name) {
    const auto entry = from.find(name);
    return entry == from.end() ? std::nullopt : std::optional<std::string>(entry->second);
  }
};

class FakeCalendarStore : public CalendarStore {
 public:
  [[nodiscard]] std::vector<EventCalendar> calendars() override {
    if (unreadable) throw CalendarStoreError("the list is locked");
    return calendarList;
  }
  [[nodiscard]] std::vector<CalendarSource> sources() override { return sourceList; }
  Result<EventCalendar> save(const EventCalendar& calendar) override {
    if (failing) return Error{"no room"};
    EventCalendar saved = calendar;
    saved.identifier = "calendar-" + std::to_string(++made_);
    calendarList.push_back(saved);
    return saved;
  }
  [[nodiscard]] CalendarEvent newEvent() override {
    CalendarEvent event;
    event.alarms = defaultAlarms;
    return event;
  }
  Result<> save(const CalendarEvent& event) override {
    if (failing) return Error{"no room"};
    eventList.push_back(event);
    eventList.back().identifier = "event-" + std::to_string(++made_);
    return {};
  }
  Result<> remove(const CalendarEvent& event) override {
    if (failing) return Error{"no room"};
    std::erase_if(eventList, [&](const CalendarEvent& e) { return e.identifier == event.identifier; });
    return {};
  }
  [[nodiscard]] std::vector<CalendarEvent> events(const std::string& calendar, Date from, Date to) override {
    std::vector<CalendarEvent> found;
    for (const CalendarEvent& event : eventList) {
      if (event.calendar == calendar && event.start <= to && event.end >= from) found.push_back(event);
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.start < b.start; });
    return found;
  }

  std::vector<EventCalendar> calendarList;
  std::vector<CalendarSource> sourceList{{"server", 2}, {"here", 0}};
  std::vector<CalendarEvent> eventList;
  std::vector<Alarm> defaultAlarms;
  bool unreadable = false;
  bool failing = false;

 private:
  int made_ = 0;
};

class FakeNotificationCenter : public UserNotificationCenter {
 public:
  Result<> schedule(const UserNotification& notification) override {
    scheduledList.push_back(notification);
    scheduledList.back().identifier = "notification-" + std::to_string(++made_);
    return {};
  }
  [[nodiscard]] std::vector<UserNotification> delivered() override { return deliveredList; }
  [[nodiscard]] std::vector<UserNotification> scheduled() override { return scheduledList; }
  Result<> removeDelivered(const UserNotification& notification) override {
    return removeFrom(deliveredList, notification);
  }
  Result<> removeScheduled(const UserNotification& notification) override {
    return removeFrom(scheduledList, notification);
  }
  Result<> changeTogether(const std::function<void()>& changes) override {
    const auto before = std::pair(scheduledList, deliveredList);
    const auto putBack = [&] { std::tie(scheduledList, deliveredList) = before; };
    try {
      changes();
    } catch (...) {
      putBack();
      throw;
    }
    if (!failing) return {};
    putBack();
    return Error{"no room"};
  }
  std::vector<UserNotification> scheduledList;
  std::vector<UserNotification> deliveredList;
  bool failing = false;

 private:
  static Result<> removeFrom(std::vector<UserNotification>& list, const UserNotification& notification) {
    std::erase_if(list, [&](const UserNotification& n) { return n.identifier == notification.identifier; });
    return {};
  }
  int made_ = 0;
};

/// Notes what a program and its desktop were asked, in the order asked.
class FakeWorkspace : public Workspace, public Application {
 public:
  [[nodiscard]] std::vector<std::string> runningApplications() override { return running; }
  Result<> openUrl(const std::string& url) override {
    calls.push_back("open " + url);
    if (failing) return Error{"nothing claims the scheme"};
    return {};
  }
  void terminate() override { calls.emplace_back("terminate"); }
  std::vector<std::string> running;
  std::vector<std::string> calls;
  bool failing = false;
};

/// What the last item shows; outlives the item.
struct ShownItem {
  bool highlight = false;
  bool enabled = false;
  std::string toolTip;
  std::string image;
  std::string alternateImage;
  StyledText title;
  Menu menu;
  int made = 0;
};

class FakeStatusBar : public StatusBar {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double length) override {
    ++shown.made;
    requestedLength = length;
    return std::make_unique<Item>(shown);
  }
  ShownItem shown;
  double requestedLength = 0;

 private:
  class Item : public StatusItem {
   public:
    explicit Item(ShownItem& shown) : shown_(shown) {}
    void setHighlightMode(bool on) override { shown_.highlight = on; }
    void setToolTip(const std::string& text) override { shown_.toolTip = text; }
    void setEnabled(bool on) override { shown_.enabled = on; }
    void setImage(const std::string& name) override { shown_.image = name; }
    void setAlternateImage(const std::string& name) override { shown_.alternateImage = name; }
    void setAttributedTitle(const StyledText& title) override { shown_.title = title; }
    void setMenu(const Menu& menu) override { shown_.menu = menu; }

   private:
    ShownItem& shown_;
  };
};

/// Reads what is to be sent to its end, and gives the outcome that a test has set.
class FakeHttpTransport : public HttpTransport {
 public:
  [[nodiscard]] HttpOutcome perform(const HttpExchange& exchange) override {
    exchanges.push_back(exchange);
    exchanges.back().body = nullptr;  // not there for longer than the exchange
    rates.push_back(exchange.body == nullptr ? 0 : exchange.body->bytesPerSecond());
    sent.emplace_back();
    if (exchange.stop.stop_requested()) return HttpFailure{HttpFailure::Kind::cancelled, "cancelled"};
    while (exchange.body != nullptr) {
      const Result<std::string> piece = exchange.body->read(7);
      if (!piece) return HttpFailure{HttpFailure::Kind::bodyUnreadable, piece.error()};
      if (piece->empty()) break;
      sent.back() += *piece;
    }
    return outcome;
  }
  std::vector<HttpExchange> exchanges;
  std::vector<std::string> sent;  ///< the body of each
  std::vector<std::uint64_t> rates;
  HttpOutcome outcome = HttpAnswer{200, {}, ""};
};

/// Keeps the work until a test has it run, on the test's own thread.
class FakeWorkQueue : public WorkQueue {
 public:
  void post(std::function<void(std::stop_token)> work) override { waiting.push_back(std::move(work)); }
  void run(std::stop_token stop = {}) {
    while (!waiting.empty()) {
      auto work = std::move(waiting.front());
      waiting.erase(waiting.begin());
      work(stop);
    }
  }
  std::vector<std::function<void(std::stop_token)>> waiting;
};

class FakeMainQueue : public MainQueue {
 public:
  void post(std::function<void()> work) override { waiting.push_back(std::move(work)); }
  /// Runs what waits, and what that posts.
  void run() {
    while (!waiting.empty()) {
      auto work = std::move(waiting.front());
      waiting.erase(waiting.begin());
      work();
    }
  }
  std::vector<std::function<void()>> waiting;
};

class FakeMimeTypes : public MimeTypes {
 public:
  [[nodiscard]] std::optional<std::string> typeForExtension(std::string_view extension) override {
    std::string lower(extension);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto found = types.find(lower);
    return found == types.end() ? std::nullopt : std::optional<std::string>(found->second);
  }
  std::map<std::string, std::string> types{{"pdf", "application/pdf"}, {"png", "image/png"}};
};

class FakeMailSettings : public MailSettings {
 public:
  [[nodiscard]] const MailService& service() override { return content; }
  MailService content{.host = "mail.example",
                      .port = 8443,
                      .userName = "support@example.org",
                      .apiKey = "3f1c0b7e-5d2a-4c9b-8e61-0a4d7c2b9f13",
                      .sender = "reminders@example.org",
                      .certificates = {}};
};

/// A whole desktop of fakes: noon of Wednesday 10 March 2027 in New York, in English.
struct FakeDesktop {
  FakeClock clock;
  Region region{"en_US", "America/New_York", {}};
  FakeRandom random;
  InMemoryFileStore files;
  FakeResources resources;
  FakeBookmarks bookmarks;
  InMemoryUserDefaults defaults;
  InMemoryUserDefaults groupDefaults;
  InMemoryKeyValueStore cloud;
  FakeCalendarStore calendars;
  FakeNotificationCenter notifications;
  FakeWorkspace workspace;
  FakeStatusBar statusBar;
  FakeHttpTransport http;
  FakeWorkQueue workQueue;
  FakeMainQueue mainQueue;
  FakeMimeTypes mimeTypes;
  FakeMailSettings mail;
  RecordingLog log;
  Platform platform = over(files);

  /// The same desktop with a decorated file store.
  Platform over(FileStore& store) {
    return Platform{clock,          region,    random,    store,          resources, bookmarks, defaults,
                    &groupDefaults, cloud,     calendars, &notifications, workspace, workspace, statusBar,
                    http,           workQueue, mainQueue, mimeTypes,      mail,      log};
  }
};

}  // namespace tallyvane::testing
