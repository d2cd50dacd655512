#include "store/utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

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

}  // namespace

bool isAscii(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  std::size_t i = 0;
  for (; i + sizeof(std::uint64_t) <= text.size(); i += sizeof(std::uint64_t)) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + i, sizeof word);
    if ((word & highBits) != 0) return false;
  }
  for (; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0x80u) != 0) return false;
  }
  return true;
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
