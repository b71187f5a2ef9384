#include <algorithm>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/commands/Commands.h"
#include "cli/doctor/Diagnosis.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Fields.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

struct Look {
  const char* word;  ///< for programs
  const char* mark;  ///< for people; says it without its colour, too
  Colour colour;
};

Look lookOf(Health health) {
  switch (health) {
    case Health::works:
      return {"works", "✓", Colour::none};
    case Health::off:
      return {"off", "–", Colour::none};
    case Health::lacking:
      return {"lacking", "!", Colour::yellow};
    case Health::broken:
      break;
  }
  return {"broken", "✗", Colour::red};
}

void printForPeople(Console& console, const std::vector<Diagnosis>& all) {
  std::vector<Field> fields;
  for (const Diagnosis& diagnosis : all) {
    const Look look = lookOf(diagnosis.health);
    const std::string remedy = diagnosis.remedy.empty() ? "" : " " + diagnosis.remedy;
    fields.push_back({diagnosis.subject, {look.mark + (" " + diagnosis.finding) + remedy, "", look.colour}});
  }
  printFields(console, fields);
}

void printForPrograms(Session& session, const std::vector<Diagnosis>& all) {
  Json list = Json::array();
  for (const auto& [subject, health, finding, remedy] : all) {
    if (!session.json)
      session.console.line(printable(subject) + "\t" + lookOf(health).word + "\t" + printable(finding) + "\t" +
                           printable(remedy));
    list.push_back({{"subject", subject}, {"state", lookOf(health).word}, {"finding", finding}, {"remedy", remedy}});
  }
  if (session.json) printJson(session.console, list);
}

void examine(Session& session) {
  const std::vector<Diagnosis> all = diagnose(session.platform, lookAround(session.platform, processEnvironment()));
  if (session.json || !session.console.interactive()) {
    printForPrograms(session, all);
  } else {
    printForPeople(session.console, all);
  }
  const auto broken = static_cast<std::size_t>(
      std::count_if(all.begin(), all.end(), [](const Diagnosis& d) { return d.health == Health::broken; }));
  if (broken > 0)
    couldNot(countedSentence(broken, "{} thing that you count on does not work.",
                             "{} things that you count on do not work.", broken));
}

}  // namespace

void addDoctor(CLI::App& app, Invocation& invocation) {
  addCommand(app, invocation,
             {"doctor", marked("Say what of the desktop works with Tallyvane here, and how to mend what does not"),
              "tallyvane doctor"},
             examine);
}

}  // namespace tallyvane::cli
