#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// UTF-8 and UTF-16. What is malformed (unpaired surrogates, broken sequences) becomes U+FFFD on the way from
// one to the other; a broken sequence costs its first byte only.
namespace text {

// At the start of a file it says that UTF-8 follows.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string utf8FromUtf16(std::u16string_view units);
std::u16string utf16FromUtf8(std::string_view text);

bool isValidUtf8(std::string_view text);
// Every malformed byte becomes U+FFFD.
std::string repairedUtf8(std::string_view text);

// The two halves of a character beyond U+FFFF.
constexpr bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}
// The first character, as its one or two units; the text must not be empty.
std::u16string_view firstCharacter(std::u16string_view units);
// The text without unpaired surrogates, halves of characters.
std::u16string withoutHalves(std::u16string_view units);
// The text with both characters of each line end, as edit boxes and the clipboard break lines.
std::u16string withWholeLineEnds(std::u16string_view units);
// As much of the text as fits into `limit` units with its last character whole.
std::u16string_view fitting(std::u16string_view units, std::size_t limit);

}  // namespace text
