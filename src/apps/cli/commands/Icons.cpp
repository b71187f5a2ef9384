#include "cli/Json.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

void listIcons(Session& session) {
  Table table({{marked("Number"), true, 0, 0}, {marked("Title"), false, 8, 0}, {marked("Picture"), false, 8, 1}});
  Json list = Json::array();
  std::size_t number = 0;
  for (const CatalogueIcon& icon : iconCatalogue()) {
    list.push_back({{"number", number}, {"title", icon.title}, {"name", icon.imageName}});
    table.add({std::to_string(number), Cell(session.platform.region.localized(icon.title), std::string(icon.title)),
               std::string(icon.imageName)});
    ++number;
  }
  if (session.json) return printJson(session.console, list);
  table.print(session.console);
}

}  // namespace

void addIcons(CLI::App& app, Invocation& invocation) {
  addCommand(app, invocation, {"icons", marked("List the icons that a bill can have"), "tallyvane icons"}, listIcons);
}

}  // namespace tallyvane::cli
