// Where a command's output goes and whom it may ask.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace tallyvane::cli {

enum class Colour { none, bold, dim, red, yellow, green, blue, magenta };

/// The colours that a terminal has. Of many, those are taken that read alike on a dark and on a light ground.
enum class Palette { none, sixteen, many };

/// What is at the other end of the output.
struct Terminal {
  bool interactive = false;  ///< a person's terminal; otherwise a pipe or a file
  Palette palette = Palette::none;
  int width = 80;              ///< columns; only looked at on a terminal
  bool rightToLeft = false;    ///< the language is written so; lines and columns run that way on a terminal that can
  bool showsProgress = false;  ///< standard error is a person's terminal, too
};

/// Prints lines of text that is fit for a terminal (see DisplayText), and asks questions.
class Console {
 public:
  /// Gives a person's answer to a question, or nothing when they ended the input. Unset where nobody can be asked.
  using Asker = std::function<std::optional<std::string>(const std::string& question)>;

  /// The streams outlive the console.
  Console(std::ostream& out, std::ostream& err, Terminal terminal, Asker asker = nullptr)
      : out_(out), err_(err), terminal_(terminal), asker_(std::move(asker)) {}

  [[nodiscard]] const Terminal& terminal() const { return terminal_; }
  [[nodiscard]] bool interactive() const { return terminal_.interactive; }
  /// What stands at the start of a line and between columns: a mark without width that keeps texts of the other
  /// direction apart where the language is written from right to left; else nothing.
  [[nodiscard]] std::string_view directionMark() const;

  /// One line of output. Text of a bill in it has gone through DisplayText.
  void line(std::string_view text = "");
  /// Several lines, the last with its line feed.
  void text(std::string_view lines) { out_ << lines; }
  /// One sentence on standard error, made fit for a terminal and marked as this program's.
  void error(std::string_view sentence);
  /// Puts a line in the place of the one before on standard error, for what goes on at the moment; "" takes it away.
  /// Nothing where nobody looks.
  void progress(std::string_view text);
  /// The text in a colour where the terminal shows colours.
  [[nodiscard]] std::string painted(const std::string& text, Colour colour) const;

  [[nodiscard]] bool canAsk() const { return asker_ != nullptr; }
  /// The person's answer; nothing when they ended the input.
  [[nodiscard]] std::optional<std::string> answer(const std::string& question) const;
  /// Whether the person answered yes, in English or in their language.
  [[nodiscard]] bool confirms(const std::string& question) const;

  /// Sends out what is still held back; whether all output arrived.
  [[nodiscard]] bool flushed();

 private:
  std::ostream& out_;
  std::ostream& err_;
  Terminal terminal_;
  Asker asker_;
  bool showsProgress_ = false;  ///< a line that the next one takes the place of
};

/// This process's own streams. Colours need a terminal and an environment without NO_COLOR; questions need a terminal
/// to be read from.
[[nodiscard]] Console standardConsole();

}  // namespace tallyvane::cli
