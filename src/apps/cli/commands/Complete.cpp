#include <memory>

#include "cli/Completion.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "cli/settings/SettingsCatalogue.h"
#include "cli/terminal/DisplayText.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

using Candidates = std::vector<Candidate>;

Candidates bills(const Platform& platform) {
  Candidates found;
  for (const ListedBill& bill : allBills(platform)) found.push_back({bill.name(), std::string(bill.group.word)});
  return found;
}

Candidates tags(const Platform& platform) {
  Candidates found;
  const auto known = QMBillsLoader{platform}.getListOfTags().value_or(std::vector<std::string>());
  for (const std::string& tag : known) found.push_back({tag, {}});
  return found;
}

Candidates icons(const Platform& /*platform*/) {
  Candidates found;
  for (const CatalogueIcon& icon : iconCatalogue()) found.push_back({std::string(icon.title), {}});
  return found;
}

Candidates settingKeys(const Platform& /*platform*/) {
  Candidates found;
  for (const Setting& setting : settingsCatalogue())
    found.push_back({std::string(setting.key), std::string(setting.meaning)});
  return found;
}

/// The values that are looked up, by the word that help has for them; of others the shell offers files.
Candidates valuesOf(const Platform& platform, const std::string& kind) {
  constexpr std::pair<std::string_view, Candidates (*)(const Platform&)> lookups[] = {
      {"BILL", bills}, {"TAG", tags}, {"ICON", icons}, {"KEY", settingKeys}};
  for (const auto& [word, lookUp] : lookups) {
    if (kind.starts_with(word)) return lookUp(platform);
  }
  return {};
}

/// One line each, with its description after a tab. A text that does not fit in a line cannot be typed either.
void printCandidates(Console& console, const Candidates& candidates) {
  for (const Candidate& candidate : candidates) {
    if (candidate.text.empty() || printable(candidate.text) != candidate.text) continue;
    console.line(candidate.text + "\t" + printable(candidate.description));
  }
}

}  // namespace

void addComplete(CLI::App& app, Invocation& invocation) {
  auto words = std::make_shared<std::vector<std::string>>();
  CLI::App* command = app.add_subcommand("complete", "What may come next, for the shells");
  command->group("");
  command->add_option("WORD", *words);  // those so far, after --; the last one is being typed
  command->callback([&app, &invocation, words] {
    invocation.action = [words, completion = completionOf(app, *words)](Session& session) {
      printCandidates(session.console, completion.candidates);
      printCandidates(session.console, valuesOf(session.platform, completion.valueKind));
    };
  });
}

}  // namespace tallyvane::cli
