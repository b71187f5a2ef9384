#include "freedesktop/Terminal.h"

#include <array>
#include <iterator>
#include <optional>
#include <string_view>

#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

/// Terminals by preference and the argument after which each takes a command as separate words; empty for those that
/// take it at once.
struct KnownTerminal {
  std::string_view program;
  std::string_view commandOption;
};
constexpr std::array knownTerminals{
    KnownTerminal{"xdg-terminal-exec", ""},
    KnownTerminal{"x-terminal-emulator", "-e"},
    KnownTerminal{"gnome-terminal", "--"},
    KnownTerminal{"kgx", "--"},
    KnownTerminal{"konsole", "-e"},
    KnownTerminal{"xfce4-terminal", "-x"},
    KnownTerminal{"mate-terminal", "-x"},
    KnownTerminal{"qterminal", "-e"},
    KnownTerminal{"tilix", "-e"},
    KnownTerminal{"kitty", ""},
    KnownTerminal{"foot", ""},
    KnownTerminal{"alacritty", "-e"},
    KnownTerminal{"terminator", "-x"},
    KnownTerminal{"urxvt", "-e"},
    KnownTerminal{"xterm", "-e"},
};

std::string_view commandOptionOf(std::string_view program) {
  for (const KnownTerminal& terminal : knownTerminals) {
    if (terminal.program == program) return terminal.commandOption;
  }
  return "-e";
}

std::vector<std::string> started(const std::string& path, std::vector<std::string> command) {
  std::vector<std::string> whole{path};
  const std::string_view option = commandOptionOf(nameOf(path));
  if (!option.empty()) whole.emplace_back(option);
  whole.insert(whole.end(), std::make_move_iterator(command.begin()), std::make_move_iterator(command.end()));
  return whole;
}

}  // namespace

Result<std::vector<std::string>> inTerminal(const SessionEnvironment& environment, std::vector<std::string> command) {
  if (const auto preferred = programPath(environment, environment.terminal))
    return started(*preferred, std::move(command));
  for (const KnownTerminal& terminal : knownTerminals) {
    if (const auto path = programPath(environment, terminal.program)) return started(*path, std::move(command));
  }
  return Error{"no terminal is installed; name one in the variable TERMINAL"};
}

}  // namespace tallyvane
