// What reads bytes that anybody may have made, each with what must hold whatever they are. A fuzzer feeds these with
// bytes of its own making, the tests with the files of the corpus.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tallyvane::fuzz {

/// What must hold does not: the end of a fuzzer, and of a test.
struct Finding : std::logic_error {
  using std::logic_error::logic_error;
};

inline void require(bool holds, const std::string& what) {
  if (!holds) throw Finding(what);
}

/// The bytes of a file that may be a property list.
void propertyList(std::string_view bytes);
/// Likewise; its first bytes are taken for those of the binary form, whatever they are.
void binaryPropertyList(std::string_view bytes);

/// A day as typed, for due dates, payments and months. The first byte, where it is no letter, figure or sign, chooses
/// one of several regions: "\x01" the first.
void typedDate(std::string_view bytes);
/// A repeat rule as typed.
void typedRepeat(std::string_view bytes);

/// The bytes of the queue of mails, which is then checked twice: with a mail service that does not answer, and with one
/// that does.
void mailQueue(std::string_view bytes);

/// What a form posts. The first byte says how, in its bits: multipart, streamed from disk, compressed, and from 8 on
/// the encoding. Then come entries, each ended by 0xFF: a byte that says which kind, a key, "=" and the content.
void formBody(std::string_view bytes);

}  // namespace tallyvane::fuzz
