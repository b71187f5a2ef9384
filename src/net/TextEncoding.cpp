#include "net/TextEncoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <memory>

#include "foundation/IcuSupport.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

using Converter = std::unique_ptr<UConverter, decltype(&::ucnv_close)>;

/// One that stops at a character that it cannot write.
Converter strictConverter(TextEncoding encoding) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(::ucnv_open(std::string(ianaName(encoding)).c_str(), &status), &::ucnv_close);
  if (converter)
    ::ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  return U_SUCCESS(status) ? std::move(converter) : Converter(nullptr, &::ucnv_close);
}

}  // namespace

std::string_view ianaName(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::ascii:
      return "us-ascii";
    case TextEncoding::isoLatin1:
      return "iso-8859-1";
    case TextEncoding::isoLatin2:
      return "iso-8859-2";
    case TextEncoding::windowsLatin1:
      return "windows-1252";
    case TextEncoding::shiftJis:
      return "shift_jis";
    case TextEncoding::utf8:
      break;
  }
  return "utf-8";
}

std::optional<std::string> encodedText(std::string_view text, TextEncoding encoding) {
  if (!isValidUtf8(text)) return std::nullopt;
  if (encoding == TextEncoding::utf8) return std::string(text);
  const Converter converter = strictConverter(encoding);
  if (!converter) return std::nullopt;
  const icu::UnicodeString units = unicodeOf(text);
  constexpr std::int32_t mostBytesPerUnit = 8;
  std::string bytes(static_cast<std::size_t>(units.length() + 1) * mostBytesPerUnit, '\0');
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = ::ucnv_fromUChars(converter.get(), bytes.data(), static_cast<std::int32_t>(bytes.size()),
                                                units.getBuffer(), units.length(), &status);
  if (U_FAILURE(status)) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

}  // namespace tallyvane
