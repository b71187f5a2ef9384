#include <algorithm>
#include <memory>

#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

void printTags(Session& session) {
  const auto tags = QMBillsLoader{session.platform}.getListOfTags().value_or(std::vector<std::string>());
  if (session.json) return printJson(session.console, tags);
  for (const std::string& tag : tags) session.console.line(printable(tag));
  if (tags.empty() && session.console.interactive()) session.console.line(translated("There are no tags yet."));
}

void tags(Session& session, const std::optional<std::vector<std::string>>& replacement) {
  requireReadableData(session.platform);
  if (replacement) {
    const std::vector<std::string> names = tagsInput(*replacement);
    session.write([&] { QMBillsLoader{session.platform}.overwriteListOfTagsWithTags(names); },
                  [&] { agreeTagsWithFiles(session.platform); });
  }
  printTags(session);
}

}  // namespace

void addTags(CLI::App& app, Invocation& invocation) {
  auto replacement = std::make_shared<std::vector<std::string>>();
  CLI::App* command =
      addCommand(app, invocation,
                 {"tags", marked("List the tags, or replace the list"), "tallyvane tags --set Home Car Work"}, nullptr);
  CLI::Option* set = command->add_option("--set", *replacement, "The new list; one empty tag (\"\") empties it");
  set->expected(1, -1);
  command->callback([&invocation, replacement, set] {
    const auto chosen = set->count() > 0 ? std::optional(*replacement) : std::nullopt;
    invocation.action = [chosen](Session& session) { tags(session, chosen); };
  });
}

}  // namespace tallyvane::cli
