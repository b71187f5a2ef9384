#include "freedesktop/DbusMenu.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tallyvane {

namespace {

constexpr const char* menuInterface = "com.canonical.dbusmenu";
/// The menu itself; its entries are numbered from 1.
constexpr std::int32_t rootId = 0;

/// Panels take an underscore for the sign of an access key unless it is doubled.
std::string labelOf(const MenuEntry& entry) {
  const std::string& text = entry.styledTitle.text.empty() ? entry.title : entry.styledTitle.text;
  std::string label;
  for (const char c : text) {
    label += c;
    if (c == '_') label += c;
  }
  return label;
}

bool wanted(const std::vector<std::string>& names, std::string_view name) {
  return names.empty() || std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

DbusMenu::DbusMenu(sdbus::IConnection& connection, const std::string& objectPath, Picture picture, Chosen chosen)
    : object_(sdbus::createObject(connection, objectPath)), picture_(std::move(picture)), chosen_(std::move(chosen)) {
  exportMethods();
  exportSignalsAndProperties();
  object_->finishRegistration();
}

void DbusMenu::exportMethods() {
  const auto method = [this](const std::string& name, auto call) {
    object_->registerMethod(name).onInterface(menuInterface).implementedAs(std::move(call));
  };
  method("GetLayout", [this](std::int32_t parent, std::int32_t depth, const Names& names) {
    return std::make_tuple(revision_, layout(parent, depth, names));
  });
  method("GetGroupProperties", [this](const Ids& ids, const Names& names) { return groupProperties(ids, names); });
  method("GetProperty", [this](std::int32_t id, const std::string& name) {
    const Properties found = propertiesOf(id, {name});
    if (found.empty()) throw sdbus::Error("org.freedesktop.DBus.Error.InvalidArgs", "no property '" + name + "'");
    return found.begin()->second;
  });
  method("Event", [this](std::int32_t id, const std::string& event, const sdbus::Variant& /*data*/,
                         std::uint32_t /*time*/) { handle(id, event); });
  method("EventGroup", [this](const std::vector<Event>& events) { return handleGroup(events); });
  // The menu is always up to date, so none of its parts needs an update before it is shown.
  method("AboutToShow", [](std::int32_t /*id*/) { return false; });
  method("AboutToShowGroup", [this](const Ids& ids) { return std::make_tuple(Ids(), unknown(ids)); });
}

void DbusMenu::exportSignalsAndProperties() {
  object_->registerSignal("ItemsPropertiesUpdated")
      .onInterface(menuInterface)
      .withParameters<std::vector<ItemProperties>, std::vector<sdbus::Struct<std::int32_t, Names>>>();
  object_->registerSignal("LayoutUpdated").onInterface(menuInterface).withParameters<std::uint32_t, std::int32_t>();
  object_->registerSignal("ItemActivationRequested")
      .onInterface(menuInterface)
      .withParameters<std::int32_t, std::uint32_t>();
  const auto property = [this](const std::string& name, auto value) {
    object_->registerProperty(name)
        .onInterface(menuInterface)
        .withGetter([value] { return value; })
        .withUpdateBehavior(sdbus::Flags::CONST_PROPERTY_VALUE);
  };
  property("Version", std::uint32_t{3});
  property("TextDirection", std::string("ltr"));
  property("Status", std::string("normal"));
  property("IconThemePath", Names());
}

void DbusMenu::setMenu(const Menu& menu) {
  std::map<std::string, int> seen;
  items_.clear();
  for (const MenuEntry& entry : menu.entries) {
    // What an entry is for makes it the same entry; two that are for the same are told apart by their order.
    std::string identity = std::to_string(static_cast<int>(entry.kind)) + entry.action + '\0' + entry.representedObject;
    identity += '\0' + std::to_string(seen[identity]++);
    items_.push_back({numberFor(identity), entry, entry.imageName.empty() ? Bytes() : picture_(entry.imageName)});
  }
}

std::int32_t DbusMenu::numberFor(const std::string& identity) {
  return numbers_.try_emplace(identity, static_cast<std::int32_t>(numbers_.size()) + 1).first->second;
}

void DbusMenu::announce() {
  if (items_ == announced_) return;
  if (sameLayoutAsAnnounced()) {
    announceProperties();
  } else {
    ++revision_;
    object_->emitSignal("LayoutUpdated").onInterface(menuInterface).withArguments(revision_, rootId);
  }
  announced_ = items_;
}

bool DbusMenu::sameLayoutAsAnnounced() const {
  return std::equal(items_.begin(), items_.end(), announced_.begin(), announced_.end(),
                    [](const Item& now, const Item& then) { return now.id == then.id; });
}

void DbusMenu::announceProperties() {
  std::vector<ItemProperties> changed;
  std::vector<sdbus::Struct<std::int32_t, Names>> removed;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (items_[i] == announced_[i]) continue;
    changed.emplace_back(items_[i].id, properties(items_[i], {}));
    if (items_[i].icon.empty() && !announced_[i].icon.empty()) removed.emplace_back(items_[i].id, Names{"icon-data"});
  }
  object_->emitSignal("ItemsPropertiesUpdated").onInterface(menuInterface).withArguments(changed, removed);
}

const MenuEntry* DbusMenu::firstCommand() const {
  for (const Item& item : items_) {
    if (item.entry.kind == MenuEntry::Kind::command) return &item.entry;
  }
  return nullptr;
}

const DbusMenu::Item* DbusMenu::find(std::int32_t id) const {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item.id == id; });
  return found == items_.end() ? nullptr : &*found;
}

const DbusMenu::Item& DbusMenu::existing(std::int32_t id) const {
  if (const Item* item = find(id)) return *item;
  throw sdbus::Error("org.freedesktop.DBus.Error.InvalidArgs", "no entry " + std::to_string(id));
}

DbusMenu::Properties DbusMenu::properties(const Item& item, const Names& names) {
  Properties all;
  if (item.entry.kind == MenuEntry::Kind::separator) {
    if (wanted(names, "type")) all.emplace("type", sdbus::Variant(std::string("separator")));
    return all;
  }
  if (wanted(names, "label")) all.emplace("label", sdbus::Variant(labelOf(item.entry)));
  if (!item.icon.empty() && wanted(names, "icon-data")) all.emplace("icon-data", sdbus::Variant(item.icon));
  return all;
}

DbusMenu::Properties DbusMenu::propertiesOf(std::int32_t id, const Names& names) const {
  if (id != rootId) return properties(existing(id), names);
  if (!wanted(names, "children-display")) return {};
  return {{"children-display", sdbus::Variant(std::string("submenu"))}};
}

/// A depth of 0 leaves the children out; below zero there is no limit, and the menu is flat.
DbusMenu::Layout DbusMenu::layout(std::int32_t parent, std::int32_t depth, const Names& names) const {
  std::vector<sdbus::Variant> children;
  if (parent == rootId && depth != 0) {
    for (const Item& item : items_)
      children.emplace_back(Layout{item.id, properties(item, names), std::vector<sdbus::Variant>()});
  }
  return {parent, propertiesOf(parent, names), children};
}

/// No numbers means every entry; numbers that are not in the menu are left out.
std::vector<DbusMenu::ItemProperties> DbusMenu::groupProperties(Ids ids, const Names& names) const {
  if (ids.empty()) {
    for (const Item& item : items_) ids.push_back(item.id);
  }
  std::vector<ItemProperties> found;
  for (const std::int32_t id : ids) {
    if (id == rootId || find(id) != nullptr) found.emplace_back(id, propertiesOf(id, names));
  }
  return found;
}

/// Only clicks mean something; that an entry was hovered over or the menu opened is of no use here.
void DbusMenu::handle(std::int32_t id, const std::string& event) {
  if (id == rootId) return;
  const MenuEntry entry = existing(id).entry;
  if (event == "clicked" && entry.kind != MenuEntry::Kind::separator) chosen_(entry);
}

DbusMenu::Ids DbusMenu::handleGroup(const std::vector<Event>& events) {
  Ids strange;
  for (const Event& event : events) {
    const std::int32_t id = event.get<0>();
    if (id != rootId && find(id) == nullptr) {
      strange.push_back(id);
    } else {
      handle(id, event.get<1>());
    }
  }
  if (!events.empty() && strange.size() == events.size())
    throw sdbus::Error("org.freedesktop.DBus.Error.InvalidArgs", "no such entries");
  return strange;
}

DbusMenu::Ids DbusMenu::unknown(const Ids& ids) const {
  Ids strange;
  for (const std::int32_t id : ids) {
    if (id != rootId && find(id) == nullptr) strange.push_back(id);
  }
  return strange;
}

}  // namespace tallyvane
