#include "freedesktop/StatusNotifierItem.h"

#include <unistd.h>

#include <utility>

#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* menuPath = "/MenuBar";
constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";

using Pixmaps = std::vector<sdbus::Struct<std::int32_t, std::int32_t, std::vector<std::uint8_t>>>;
using ToolTip = sdbus::Struct<std::string, Pixmaps, std::string, std::string>;

/// The widest count that a label is expected to have.
constexpr const char* labelGuide = "99";

std::string stemOf(const std::string& path) {
  const std::string name = nameOf(path);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(const Services& services, std::string folder, DbusMenu::Chosen chosen)
    : services_(services),
      chosen_(std::move(chosen)),
      busName_(std::string(itemInterface) + "-" + std::to_string(::getpid()) + "-1"),
      countPictures_(services.files, std::move(folder)),
      object_(sdbus::createObject(services.connection, itemPath)) {
  exportMethods();
  exportProperties();
  exportSignals();
  object_->finishRegistration();
  menu_ = std::make_unique<DbusMenu>(
      services.connection, menuPath, [this](const std::string& imageName) { return pictureBytes(imageName); }, chosen_);
  services_.connection.requestName(busName_);
  watchPanels();
  registerWithPanels();
}

StatusNotifierItem::~StatusNotifierItem() {
  try {
    services_.connection.releaseName(busName_);
  } catch (const sdbus::Error& error) {
    services_.log.diagnostic("The bus did not take the status item's name back: " + error.getMessage());
  }
}

/// Panels disagree about which click is which, and some send Activate though the item says that it is only a menu.
void StatusNotifierItem::exportMethods() {
  const auto method = [this](const std::string& name, auto call) {
    object_->registerMethod(name).onInterface(itemInterface).implementedAs(std::move(call));
  };
  method("Activate", [this](std::int32_t /*x*/, std::int32_t /*y*/) { activate(); });
  method("SecondaryActivate", [this](std::int32_t /*x*/, std::int32_t /*y*/) { activate(); });
  method("XAyatanaSecondaryActivate", [this](std::uint32_t /*time*/) { activate(); });
  // The panel shows the menu itself, and there is nothing to scroll through.
  method("ContextMenu", [](std::int32_t /*x*/, std::int32_t /*y*/) {});
  method("Scroll", [](std::int32_t /*delta*/, const std::string& /*orientation*/) {});
}

/// Changes are told by signals of the interface's own.
void StatusNotifierItem::exportProperties() {
  const auto property = [this](const std::string& name, auto get) {
    object_->registerProperty(name)
        .onInterface(itemInterface)
        .withGetter(std::move(get))
        .withUpdateBehavior(sdbus::Flags::EMITS_NO_SIGNAL);
  };
  property("Category", [] { return std::string("ApplicationStatus"); });
  property("Id", [] { return std::string("com.Quillmoor.Tallyvane"); });
  property("Title", [] { return std::string("Tallyvane"); });
  property("Status", [this] { return std::string(shown_.enabled ? "Active" : "Passive"); });
  property("WindowId", [] { return std::int32_t{0}; });
  property("IconThemePath", [this] { return shown_.icon.folder; });
  property("IconName", [this] { return shown_.icon.name; });
  property("IconPixmap", [] { return Pixmaps(); });
  property("OverlayIconName", [] { return std::string(); });
  property("OverlayIconPixmap", [] { return Pixmaps(); });
  property("AttentionIconName", [this] { return shown_.attentionIcon; });
  property("AttentionIconPixmap", [] { return Pixmaps(); });
  property("AttentionMovieName", [] { return std::string(); });
  property("ToolTip", [this] {
    const std::string count = shown_.count.empty() ? std::string() : " (" + shown_.count + ")";
    return ToolTip{std::string(), Pixmaps(), shown_.toolTip + count, std::string()};
  });
  property("ItemIsMenu", [] { return true; });
  property("Menu", [] { return sdbus::ObjectPath(menuPath); });
  property("XAyatanaLabel", [this] { return shown_.count; });
  property("XAyatanaLabelGuide", [] { return std::string(labelGuide); });
  property("XAyatanaOrderingIndex", [] { return std::uint32_t{0}; });
}

void StatusNotifierItem::exportSignals() {
  for (const char* name : {"NewTitle", "NewIcon", "NewAttentionIcon", "NewOverlayIcon", "NewToolTip", "NewMenu"})
    object_->registerSignal(name).onInterface(itemInterface);
  object_->registerSignal("NewStatus").onInterface(itemInterface).withParameters<std::string>();
  object_->registerSignal("NewIconThemePath").onInterface(itemInterface).withParameters<std::string>();
  object_->registerSignal("XAyatanaNewLabel").onInterface(itemInterface).withParameters<std::string, std::string>();
}

/// The watcher comes and goes with the panel; each new one knows of no item yet.
void StatusNotifierItem::watchPanels() {
  const std::string rule =
      "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',member='NameOwnerChanged',"
      "path='/org/freedesktop/DBus',arg0='" +
      std::string(watcherName) + "'";
  watcherOwner_ = services_.connection.addMatch(rule, [this](sdbus::Message& message) {
    std::string name;
    std::string oldOwner;
    std::string newOwner;
    message >> name >> oldOwner >> newOwner;
    if (!newOwner.empty()) registerWithPanels();
  });
  watcher_ = sdbus::createProxy(services_.connection, watcherName, "/StatusNotifierWatcher");
}

/// Without a watcher there is no panel yet, which is no failure.
void StatusNotifierItem::registerWithPanels() {
  watcher_->callMethodAsync("RegisterStatusNotifierItem")
      .onInterface(watcherName)
      .withArguments(busName_)
      .uponReplyInvoke([](const sdbus::Error* /*error*/) {});
}

void StatusNotifierItem::setToolTip(const std::string& text) {
  shown_.toolTip = text;
  changed();
}

void StatusNotifierItem::setEnabled(bool on) {
  shown_.enabled = on;
  changed();
}

void StatusNotifierItem::setImage(const std::string& name) {
  image_ = name;
  shown_.icon = iconFor(shown_.count);
  changed();
}

void StatusNotifierItem::setAlternateImage(const std::string& name) {
  const auto path = services_.resources.picture(name);
  shown_.attentionIcon = path ? stemOf(*path) : std::string();
  changed();
}

void StatusNotifierItem::setAttributedTitle(const StyledText& title) {
  if (title.text == shown_.count) return;
  shown_.count = title.text;
  shown_.icon = iconFor(shown_.count);
  changed();
}

void StatusNotifierItem::setMenu(const Menu& menu) {
  menu_->setMenu(menu);
  changed();
}

/// The plain picture where there is no count, and where the count cannot be drawn: the label and the tooltip have it.
StatusNotifierItem::Icon StatusNotifierItem::iconFor(const std::string& count) {
  const auto path = services_.resources.picture(image_);
  if (!path) return {};
  if (isDrawableCount(count)) {
    if (auto drawn = countPictures_.draw(*path, count))
      return {drawn->name, drawn->folder};
    else
      services_.log.diagnostic("The count is not in the status bar's picture: " + drawn.error());
  }
  return {stemOf(*path), parentOf(*path)};
}

DbusMenu::Bytes StatusNotifierItem::pictureBytes(const std::string& imageName) {
  const auto path = services_.resources.picture(imageName);
  if (!path) return {};
  const auto bytes = services_.files.read(*path);
  return bytes ? DbusMenu::Bytes(bytes->begin(), bytes->end()) : DbusMenu::Bytes();
}

void StatusNotifierItem::activate() {
  const MenuEntry* command = menu_->firstCommand();
  if (command == nullptr) return;
  const MenuEntry entry = *command;
  chosen_(entry);
}

/// Of several announcements that wait, the first tells everything.
void StatusNotifierItem::changed() {
  services_.mainQueue.post([this, life = std::weak_ptr<bool>(life_)] {
    if (!life.expired()) announce();
  });
}

void StatusNotifierItem::announce() {
  try {
    const Shown before = std::exchange(announced_, shown_);
    if (before.icon.folder != shown_.icon.folder)
      object_->emitSignal("NewIconThemePath").onInterface(itemInterface).withArguments(shown_.icon.folder);
    if (before.icon != shown_.icon) emit("NewIcon");
    if (before.attentionIcon != shown_.attentionIcon) emit("NewAttentionIcon");
    if (before.toolTip != shown_.toolTip || before.count != shown_.count) emit("NewToolTip");
    if (before.count != shown_.count)
      object_->emitSignal("XAyatanaNewLabel").onInterface(itemInterface).withArguments(shown_.count, labelGuide);
    if (before.enabled != shown_.enabled)
      object_->emitSignal("NewStatus")
          .onInterface(itemInterface)
          .withArguments(std::string(shown_.enabled ? "Active" : "Passive"));
    menu_->announce();
  } catch (const sdbus::Error& error) {
    services_.log.diagnostic("Panels were not told of a change: " + error.getMessage());
  }
}

void StatusNotifierItem::emit(const std::string& signal) { object_->emitSignal(signal).onInterface(itemInterface); }

}  // namespace tallyvane
