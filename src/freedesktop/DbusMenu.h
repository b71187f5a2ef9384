// The status menu as panels read it over the bus: com.canonical.dbusmenu.
#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/StatusBar.h"

namespace tallyvane {

/// Serves one flat menu at an object path of a connection that outlives it. An entry keeps its number for as long as
/// the program runs, so a click in a menu that is still open while it changes never means another entry.
class DbusMenu {
 public:
  using Bytes = std::vector<std::uint8_t>;
  /// The PNG file of a picture; empty for none.
  using Picture = std::function<Bytes(const std::string& imageName)>;
  /// The user chose an entry that is in the menu now.
  using Chosen = std::function<void(const MenuEntry&)>;

  /// Throws sdbus::Error when the path is taken.
  DbusMenu(sdbus::IConnection& connection, const std::string& objectPath, Picture picture, Chosen chosen);

  /// Panels that ask see the new menu at once; they are told of it by `announce`.
  void setMenu(const Menu& menu);
  /// Tells panels what has changed since the last call: new texts and pictures of the same entries, or a new layout.
  void announce();
  /// The first command of the menu, or null.
  [[nodiscard]] const MenuEntry* firstCommand() const;

 private:
  using Properties = std::map<std::string, sdbus::Variant>;
  using Names = std::vector<std::string>;
  using Ids = std::vector<std::int32_t>;
  using Layout = sdbus::Struct<std::int32_t, Properties, std::vector<sdbus::Variant>>;
  using ItemProperties = sdbus::Struct<std::int32_t, Properties>;
  using Event = sdbus::Struct<std::int32_t, std::string, sdbus::Variant, std::uint32_t>;

  struct Item {
    std::int32_t id = 0;
    MenuEntry entry;
    Bytes icon;
    friend bool operator==(const Item&, const Item&) = default;
  };

  void exportMethods();
  void exportSignalsAndProperties();
  [[nodiscard]] std::int32_t numberFor(const std::string& identity);
  [[nodiscard]] const Item* find(std::int32_t id) const;
  [[nodiscard]] const Item& existing(std::int32_t id) const;
  [[nodiscard]] static Properties properties(const Item& item, const Names& names);
  [[nodiscard]] Properties propertiesOf(std::int32_t id, const Names& names) const;
  [[nodiscard]] Layout layout(std::int32_t parent, std::int32_t depth, const Names& names) const;
  [[nodiscard]] std::vector<ItemProperties> groupProperties(Ids ids, const Names& names) const;
  [[nodiscard]] bool sameLayoutAsAnnounced() const;
  void announceProperties();
  void handle(std::int32_t id, const std::string& event);
  [[nodiscard]] Ids handleGroup(const std::vector<Event>& events);
  [[nodiscard]] Ids unknown(const Ids& ids) const;

  std::unique_ptr<sdbus::IObject> object_;
  Picture picture_;
  Chosen chosen_;
  std::vector<Item> items_;
  std::vector<Item> announced_;
  std::map<std::string, std::int32_t> numbers_;
  std::uint32_t revision_ = 1;
};

}  // namespace tallyvane
