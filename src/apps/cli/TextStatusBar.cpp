#include "cli/TextStatusBar.h"

namespace tallyvane::cli {

namespace {

class TextStatusItem : public StatusItem {
 public:
  explicit TextStatusItem(ShownStatusItem& shown) : shown_(shown) { shown_.exists = true; }
  void setHighlightMode(bool /*on*/) override {}
  void setToolTip(const std::string& /*text*/) override {}
  void setEnabled(bool /*on*/) override {}
  void setImage(const std::string& /*name*/) override {}
  void setAlternateImage(const std::string& /*name*/) override {}
  void setAttributedTitle(const StyledText& title) override { shown_.title = title.text; }
  void setMenu(const Menu& menu) override { shown_.menu = menu; }

 private:
  ShownStatusItem& shown_;
};

}  // namespace

std::unique_ptr<StatusItem> TextStatusBar::statusItemWithLength(double /*length*/) {
  return std::make_unique<TextStatusItem>(shown_);
}

Platform withStatusBar(const Platform& p, StatusBar& statusBar) {
  return Platform{p.clock,         p.region,    p.random,    p.files,         p.resources, p.bookmarks,   p.defaults,
                  p.groupDefaults, p.cloud,     p.calendars, p.notifications, p.workspace, p.application, statusBar,
                  p.http,          p.workQueue, p.mainQueue, p.mimeTypes,     p.mail,      p.log};
}

}  // namespace tallyvane::cli
