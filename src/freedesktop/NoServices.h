// Stand-ins for services of the desktop that a program does without.
#pragma once

#include <memory>

#include "platform/Application.h"
#include "platform/CalendarStore.h"
#include "platform/HttpTransport.h"
#include "platform/MimeTypes.h"
#include "platform/StatusBar.h"

namespace tallyvane {

/// No calendars, no sources; what is saved is refused.
class NoCalendarStore : public CalendarStore {
 public:
  [[nodiscard]] std::vector<EventCalendar> calendars() override { return {}; }
  [[nodiscard]] std::vector<CalendarSource> sources() override { return {}; }
  Result<EventCalendar> save(const EventCalendar& /*calendar*/) override { return absent(); }
  [[nodiscard]] CalendarEvent newEvent() override { return {}; }
  Result<> save(const CalendarEvent& /*event*/) override { return absent(); }
  Result<> remove(const CalendarEvent& /*event*/) override { return absent(); }
  [[nodiscard]] std::vector<CalendarEvent> events(const std::string& /*calendar*/, Date /*from*/,
                                                  Date /*to*/) override {
    return {};
  }

 private:
  static Error absent() { return Error{"no calendar service is set up"}; }
};

/// Every exchange fails.
class NoHttpTransport : public HttpTransport {
 public:
  [[nodiscard]] Result<HttpAnswer> perform(const HttpExchange& exchange) override {
    return Error{exchange.url + ": no network service is set up"};
  }
};

/// Knows no type.
class NoMimeTypes : public MimeTypes {
 public:
  [[nodiscard]] std::optional<std::string> typeForExtension(std::string_view /*extension*/) override { return {}; }
};

/// Items that nobody sees.
class NoStatusBar : public StatusBar {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double /*length*/) override {
    return std::make_unique<Item>();
  }

 private:
  class Item : public StatusItem {
    void setHighlightMode(bool /*on*/) override {}
    void setToolTip(const std::string& /*text*/) override {}
    void setEnabled(bool /*on*/) override {}
    void setImage(const std::string& /*name*/) override {}
    void setAlternateImage(const std::string& /*name*/) override {}
    void setAttributedTitle(const StyledText& /*title*/) override {}
    void setMenu(const Menu& /*menu*/) override {}
  };
};

/// A program that ends by itself.
class NoApplication : public Application {
 public:
  void terminate() override {}
};

}  // namespace tallyvane
