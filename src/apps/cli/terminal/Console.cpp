#include "cli/terminal/Console.h"

#include "cli/input/Similar.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

/// The contrast of those of many to black and to white is 4 to 1 or more. Terminals with sixteen are mostly dark, and
/// their blue does not show there.
std::string_view escapeSequence(Colour colour, Palette palette) {
  const bool many = palette == Palette::many;
  switch (colour) {
    case Colour::bold:
      return "\x1b[1m";
    case Colour::dim:
      return "\x1b[2m";
    case Colour::red:
      return many ? "\x1b[38;5;196m" : "\x1b[31m";
    case Colour::yellow:
      return many ? "\x1b[38;5;130m" : "\x1b[33m";
    case Colour::green:
      return many ? "\x1b[38;5;28m" : "\x1b[32m";
    case Colour::blue:
      return many ? "\x1b[38;5;63m" : "\x1b[36m";
    case Colour::magenta:
      return many ? "\x1b[38;5;163m" : "\x1b[35m";
    case Colour::none:
      break;
  }
  return "";
}

}  // namespace

std::string_view Console::directionMark() const {
  constexpr std::string_view rightToLeftMark = "\u200f";
  return terminal_.interactive && terminal_.rightToLeft ? rightToLeftMark : std::string_view();
}

void Console::line(std::string_view text) { out_ << (text.empty() ? text : directionMark()) << text << '\n'; }

void Console::error(std::string_view sentence) {
  progress("");
  err_ << "tallyvane: " << printable(sentence) << '\n';
}

void Console::progress(std::string_view text) {
  if (!terminal_.showsProgress || (text.empty() && !showsProgress_)) return;
  showsProgress_ = !text.empty();
  err_ << '\r' << fitted(printable(text), terminal_.width - 1) << "\x1b[K" << std::flush;
}

std::string Console::painted(const std::string& text, Colour colour) const {
  const std::string_view sequence = escapeSequence(colour, terminal_.palette);
  if (terminal_.palette == Palette::none || sequence.empty() || text.empty()) return text;
  return std::string(sequence) + text + "\x1b[0m";
}

std::optional<std::string> Console::answer(const std::string& question) const {
  return asker_(printable(question) + " ");
}

bool Console::confirms(const std::string& question) const {
  // translators: stands after a question; "y" is the answer that is "y" below, N is what Enter means
  const std::string said = folded(answer(question + " " + translated("[y/N]")).value_or(std::string()));
  // translators: the shortest answer that means yes
  const std::string shortYes = folded(translated("y"));
  // translators: the answer yes to a question
  return said == "y" || said == "yes" || (!said.empty() && (said == shortYes || said == folded(translated("yes"))));
}

bool Console::flushed() { return static_cast<bool>(out_.flush()); }

}  // namespace tallyvane::cli
