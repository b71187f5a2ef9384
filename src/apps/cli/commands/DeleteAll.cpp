#include <fmt/format.h>

#include <memory>

#include "cli/BillLookup.h"
#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/commands/Commands.h"
#include "storage/QMBill.h"

namespace tallyvane::cli {

namespace {

constexpr const char* question =
    "Take all bills, active, archived and deleted, off their lists? Restore cannot undo it.";

void deleteAll(Session& session, bool confirmed) {
  requireReadableData(session.platform);
  if (!confirmed && !session.console.canAsk()) wrongUsage("Nobody can be asked here; add --yes to delete all bills.");
  if (!confirmed && !session.console.confirms(question)) couldNot("Nothing was deleted.");
  std::size_t count = 0;
  session.write([&] {
    count = allBills(session.platform).size();
    QMBill{session.platform}.deleteAllBills();
  });
  if (session.json) return printJson(session.console, {{"deleted", count}});
  session.console.line(fmt::format("Deleted {} bills. Their files are kept.", count));
}

}  // namespace

void addDeleteAll(CLI::App& app, Invocation& invocation) {
  auto confirmed = std::make_shared<bool>(false);
  CLI::App* command = addCommand(
      app, invocation, {"delete-all", "Take all bills off their lists; asks first", "tallyvane delete-all --yes"},
      [confirmed](Session& session) { deleteAll(session, *confirmed); });
  command->add_flag("--yes", *confirmed, "Do not ask");
}

}  // namespace tallyvane::cli
