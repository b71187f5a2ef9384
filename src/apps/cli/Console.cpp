#include "cli/Console.h"

#include "cli/DisplayText.h"
#include "cli/Similar.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

std::string_view escapeSequence(Colour colour) {
  switch (colour) {
    case Colour::bold:
      return "\x1b[1m";
    case Colour::dim:
      return "\x1b[2m";
    case Colour::red:
      return "\x1b[31m";
    case Colour::yellow:
      return "\x1b[33m";
    case Colour::green:
      return "\x1b[32m";
    case Colour::blue:
      return "\x1b[34m";
    case Colour::magenta:
      return "\x1b[35m";
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

void Console::error(std::string_view sentence) { err_ << "tallyvane: " << printable(sentence) << '\n'; }

std::string Console::painted(const std::string& text, Colour colour) const {
  const std::string_view sequence = escapeSequence(colour);
  if (!terminal_.colours || sequence.empty() || text.empty()) return text;
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
