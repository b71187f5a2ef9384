#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "cli/terminal/Console.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

constexpr int usualWidth = 80;

int terminalWidth() {
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return usualWidth;
}

bool environmentHas(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

Palette paletteOfTerminal() {
  const char* term = std::getenv("TERM");
  const std::string_view kind = term == nullptr ? "" : term;
  if (kind.empty() || kind == "dumb" || environmentHas("NO_COLOR")) return Palette::none;
  const bool many = kind.find("256color") != std::string_view::npos || environmentHas("COLORTERM");
  return many ? Palette::many : Palette::sixteen;
}

/// Asks on standard error, so that the output may go to a file.
std::optional<std::string> askPerson(const std::string& question) {
  std::cerr << question << std::flush;
  std::string answer;
  if (!std::getline(std::cin, answer)) return std::nullopt;
  return answer;
}

}  // namespace

Console standardConsole() {
  const bool interactive = ::isatty(STDOUT_FILENO) == 1;
  const bool showsProgress = interactive && ::isatty(STDERR_FILENO) == 1;
  const bool canAsk = ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
  // translators: not shown; where the language is written from right to left, "default:RTL", else as it is
  const bool rightToLeft = translated("default:LTR") == "default:RTL";
  return Console(std::cout, std::cerr,
                 {.interactive = interactive,
                  .palette = interactive ? paletteOfTerminal() : Palette::none,
                  .width = interactive ? terminalWidth() : usualWidth,
                  .rightToLeft = rightToLeft,
                  .showsProgress = showsProgress},
                 canAsk ? Console::Asker(askPerson) : nullptr);
}

}  // namespace tallyvane::cli
