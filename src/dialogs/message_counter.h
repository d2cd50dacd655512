#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// How much of one short message a text takes up.
namespace dialogs {

inline constexpr std::size_t plainLimit = 160;  // characters of the default alphabet
inline constexpr std::size_t wideLimit = 70;    // 16-bit characters

struct MessageCount {
  bool needsUcs2 = false;             // some character is beyond ASCII
  std::size_t charCount = 0;          // characters; 16-bit ones when needsUcs2
  std::optional<std::u16string> cut;  // what is left of the text, when it is longer than one message
};

constexpr std::size_t limitOf(const MessageCount& count) {
  return count.needsUcs2 ? wideLimit : plainLimit;
}

// Counts a text as the field holds it, line ends as the two characters they are, and cuts it at the limit. A
// character or line end that takes two is kept whole or left out whole. Half a character, as a keyboard types
// it on the way to the other half, does not count.
MessageCount countMessage(std::u16string_view text);

// "5/160" or "5/70"
std::string counterText(const MessageCount& count);

}  // namespace dialogs
