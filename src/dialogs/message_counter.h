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
  std::optional<std::u16string> cut;  // what is left of the text, when something had to go
};

// Counts a text as the field holds it, line ends as the two characters they are. A text that needs 16-bit
// characters is cut at 70 of them; a character that takes two is kept whole or left out whole, and half of
// one, as a deletion can leave it, is left out.
MessageCount countMessage(std::u16string_view text);

// "5/160" or "5/70"
std::string counterText(const MessageCount& count);

}  // namespace dialogs
