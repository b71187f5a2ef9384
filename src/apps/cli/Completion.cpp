#include "cli/Completion.h"

#include <algorithm>
#include <sstream>

namespace tallyvane::cli {

namespace {

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

bool isHidden(const CLI::Option& option) { return option.get_group().empty(); }

/// The innermost command of a line's words so far, and what the next word is for.
struct Place {
  CLI::App* command;
  const CLI::Option* awaited = nullptr;  ///< the option before, which takes a value
  std::size_t values = 0;                ///< how many words stood for themselves in this command
};

/// An option stands in its command or, as those of the program do, in one around it.
const CLI::Option* findOption(const CLI::App* command, const std::string& name) {
  for (; command != nullptr; command = command->get_parent()) {
    if (const CLI::Option* option = command->get_option_no_throw(name)) return option;
  }
  return nullptr;
}

CLI::App* findCommand(CLI::App& command, const std::string& name) {
  const auto found = command.get_subcommands([&](CLI::App* inner) { return inner->get_name() == name; });
  return found.empty() ? nullptr : found.front();
}

void advance(Place& place, const std::string& word) {
  if (place.awaited != nullptr) {
    place.awaited = nullptr;
  } else if (word.starts_with("-")) {
    const CLI::Option* option = findOption(place.command, word);
    if (option != nullptr && takesValue(*option)) place.awaited = option;
  } else if (CLI::App* inner = findCommand(*place.command, word)) {
    place = {inner};
  } else {
    ++place.values;
  }
}

const CLI::Option* valueAt(CLI::App& command, std::size_t position) {
  const auto values = command.get_options([](CLI::Option* option) { return option->get_positional(); });
  return position < values.size() ? values[position] : nullptr;
}

/// "TEXT:{active,archived}" has its choices in braces.
std::vector<std::string> choicesOf(const std::string& typeName) {
  const auto open = typeName.find('{');
  const auto close = typeName.find('}', open);
  if (close == std::string::npos) return {};
  std::istringstream list(typeName.substr(open + 1, close - open - 1));
  std::vector<std::string> choices;
  for (std::string choice; std::getline(list, choice, ',');) choices.push_back(choice);
  return choices;
}

void addValues(Completion& completion, const CLI::Option& option) {
  const std::string typeName = option.get_type_name();
  completion.valueKind = option.get_positional() ? option.get_name() : typeName;
  for (const std::string& choice : choicesOf(typeName)) completion.candidates.push_back({choice, {}});
}

void addCommands(Completion& completion, CLI::App& command) {
  for (const CLI::App* inner : command.get_subcommands(nullptr)) {
    if (!inner->get_group().empty()) completion.candidates.push_back({inner->get_name(), inner->get_description()});
  }
}

void addOptions(Completion& completion, const CLI::App* command) {
  std::vector<Candidate>& found = completion.candidates;
  for (; command != nullptr; command = command->get_parent()) {
    for (const CLI::Option* option : command->get_options(nullptr)) {
      if (isHidden(*option)) continue;
      for (const std::string& name : option->get_lnames()) {
        const std::string text = "--" + name;
        const auto isSame = [&](const Candidate& candidate) { return candidate.text == text; };
        if (std::none_of(found.begin(), found.end(), isSame)) found.push_back({text, option->get_description()});
      }
    }
  }
}

}  // namespace

Completion completionOf(CLI::App& app, const std::vector<std::string>& words) {
  if (words.empty()) return {};
  Place place{&app};
  for (auto word = words.begin(); word != words.end() - 1; ++word) advance(place, *word);
  Completion completion;
  if (place.awaited != nullptr) {
    addValues(completion, *place.awaited);
  } else if (words.back().starts_with("-")) {
    addOptions(completion, place.command);
  } else {
    if (place.values == 0) addCommands(completion, *place.command);
    if (const CLI::Option* value = valueAt(*place.command, place.values)) addValues(completion, *value);
  }
  return completion;
}

}  // namespace tallyvane::cli
