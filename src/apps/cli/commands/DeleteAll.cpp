#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "common/Sentences.h"
#include "storage/QMBill.h"

namespace tallyvane::cli {

namespace {

constexpr const char* question =
    marked("Take all bills, active, archived and deleted, off their lists? Restore cannot undo it.");

void deleteAll(Session& session, bool confirmed) {
  requireReadableData(session.platform);
  if (!confirmed && !session.console.canAsk())
    wrongUsage(translated("Nobody can be asked here; add --yes to delete all bills."));
  if (!confirmed && !session.console.confirms(translated(question))) couldNot(translated("Nothing was deleted."));
  session.write([&] {
    requireReadableData(session.platform);
    QMBill{session.platform}.deleteAllBills();
  });
  if (session.json) return printJson(session.console, {{"deletedAll", true}});
  session.console.line(translated("All bills are off their lists. Their files are kept."));
}

}  // namespace

void addDeleteAll(CLI::App& app, Invocation& invocation) {
  auto confirmed = std::make_shared<bool>(false);
  CLI::App* command =
      addCommand(app, invocation,
                 {"delete-all", marked("Take all bills off their lists; asks first"), "tallyvane delete-all --yes"},
                 [confirmed](Session& session) { deleteAll(session, *confirmed); });
  command->add_flag("--yes", *confirmed, "Do not ask");
}

}  // namespace tallyvane::cli
