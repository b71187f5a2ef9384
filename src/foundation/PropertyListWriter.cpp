#include <string>
#include <variant>

#include "foundation/PropertyList.h"
#include "foundation/PropertyListCharacters.h"
#include "foundation/PropertyListScalars.h"

namespace tallyvane {
namespace {

// No document type: readers of the dialect do without, and it would name a document elsewhere.
constexpr std::string_view opening =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view closing = "</plist>\n";

class Writer {
 public:
  explicit Writer(std::string& out) : out_(out) {}

  void write(const Value& value, int depth) {
    indent(depth);
    std::visit([&](const auto& content) { element(content, depth); }, value.storage());
    out_ += '\n';
  }

 private:
  void indent(int depth) { out_.append(static_cast<std::size_t>(depth), '\t'); }

  void element(bool boolean, int) { out_ += boolean ? "<true/>" : "<false/>"; }

  void element(std::int64_t number, int) {
    out_ += "<integer>";
    appendInteger(out_, number);
    out_ += "</integer>";
  }

  void element(double number, int) {
    out_ += "<real>";
    appendReal(out_, number);
    out_ += "</real>";
  }

  void element(const std::string& content, int) {
    out_ += "<string>";
    text(content);
    out_ += "</string>";
  }

  void element(Date date, int) {
    out_ += "<date>";
    appendDate(out_, date);
    out_ += "</date>";
  }

  void element(const Data& data, int depth) {
    out_ += "<data>\n";
    appendBase64Lines(out_, data.bytes, depth);
    indent(depth);
    out_ += "</data>";
  }

  void element(const Array& array, int depth) {
    if (array.empty()) {
      out_ += "<array/>";
      return;
    }
    out_ += "<array>\n";
    for (const Value& value : array) write(value, depth + 1);
    indent(depth);
    out_ += "</array>";
  }

  void element(const Dictionary& dictionary, int depth) {
    if (dictionary.empty()) {
      out_ += "<dict/>";
      return;
    }
    out_ += "<dict>\n";
    for (const auto& [key, value] : dictionary) {
      indent(depth + 1);
      out_ += "<key>";
      text(key);
      out_ += "</key>\n";
      write(value, depth + 1);
    }
    indent(depth);
    out_ += "</dict>";
  }

  void text(std::string_view content) {
    const char* const end = content.data() + content.size();
    const char* run = content.data();  // what is not written yet
    for (const char* at = run; (at = endOfRun(plainTextCharacters, at, end)) != end;) {
      const std::size_t length = byteOf(*at) >= 0x80 ? multiByteLength(at, end) : 0;
      if (length == 0) {
        out_.append(run, at);
        out_ += escape(*at);
        run = ++at;
      }
      at += length;
    }
    out_.append(run, end);
  }

  static std::string_view escape(char character) {
    switch (character) {
      case '<':
        return "&lt;";
      case '>':
        return "&gt;";
      case '&':
        return "&amp;";
      case '\r':  // as it is it would come back as a line feed
        return "&#13;";
      default:
        return replacementCharacter;
    }
  }

  std::string& out_;
};

}  // namespace

std::string writePropertyList(const Value& value) {
  std::string out(opening);
  Writer(out).write(value, 0);
  out += closing;
  return out;
}

}  // namespace tallyvane
