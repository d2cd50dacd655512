#include "store/utf8.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "store/word.h"

namespace store {

namespace {

bool isBetween(char byte, unsigned low, unsigned high) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= low && value <= high;
}

// Bytes of the character that the text starts with, 0 when they are malformed. The second byte's range
// keeps out overlong forms, surrogates and what lies beyond U+10FFFF.
std::size_t characterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return 1;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (!isBetween(text[1], low, high)) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!isBetween(text[i], 0x80, 0xBF)) return 0;
  }
  return length;
}

constexpr std::uint64_t ones = 0x0101010101010101;

// Whether `find`, which looks at eight characters at once, finds nothing (0) in the whole text.
template <class Find>
bool noWord(std::string_view text, Find find) {
  std::uint64_t found = 0;
  if (text.size() < wordSize) {
    std::uint64_t word = blanks;
    std::memcpy(&word, text.data(), text.size());
    return find(word) == 0;
  }
  const std::size_t words = text.size() / wordSize;
  for (std::size_t i = 0; i < words; ++i) found |= find(wordAt(text.data() + i * wordSize));
  return (found | find(wordAt(text.data() + text.size() - wordSize))) == 0;
}

}  // namespace

bool isAscii(std::string_view text) {
  return noWord(text, [](std::uint64_t word) { return word & highBits; });
}

bool isPlainText(std::string_view text) {
  return noWord(text, notPlain);
}

std::size_t plainLength(std::string_view text, char mark) {
  static_assert(std::endian::native == std::endian::little, "the first character is a word's lowest byte");
  const std::uint64_t marks = ones * static_cast<unsigned char>(mark);
  const auto find = [marks](std::uint64_t word) {
    return notPlain(word) | (((word ^ marks) - ones) & highBits);
  };
  std::size_t length = 0;
  while (text.size() - length >= 2 * wordSize &&
         (find(wordAt(text.data() + length)) | find(wordAt(text.data() + length + wordSize))) == 0)
    length += 2 * wordSize;
  for (; text.size() - length >= wordSize; length += wordSize) {
    if (const std::uint64_t found = find(wordAt(text.data() + length)))
      return length + static_cast<std::size_t>(std::countr_zero(found)) / wordSize;
  }
  while (length < text.size() && text[length] != mark && isBetween(text[length], ' ', 0x7F)) ++length;
  return length;
}

bool isValidUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string repairedUtf8(std::string_view text) {
  std::string repaired;
  repaired.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) {
      repaired += "\xEF\xBF\xBD";
      text.remove_prefix(1);
    } else {
      repaired += text.substr(0, length);
      text.remove_prefix(length);
    }
  }
  return repaired;
}

}  // namespace store
