#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "store/word.h"

// The few questions the stores ask of UTF-8 text.
namespace store {

bool isAscii(std::string_view text);
// ASCII and nothing below a blank, so without line breaks and NULs.
bool isPlainText(std::string_view text);
// Where the first character that is not plain text or is `mark`, itself plain, stands; else the text's
// length.
std::size_t plainLength(std::string_view text, char mark);
bool isValidUtf8(std::string_view text);
// Every malformed byte becomes U+FFFD.
std::string repairedUtf8(std::string_view text);

// Copies plain text to where there is room for it. Of other text any part may have been copied. Here, since
// writing a store is little else.
inline bool copyIfPlain(std::string_view text, char* to) {
  if (text.size() < wordSize) {
    text.copy(to, text.size());
    return isPlainText(text);
  }
  std::uint64_t found = 0;
  const auto copyWord = [&](std::size_t place) {
    const std::uint64_t word = wordAt(text.data() + place);
    std::memcpy(to + place, &word, wordSize);
    found |= notPlain(word);
  };
  const std::size_t last = text.size() - wordSize;
  std::size_t place = 0;
  for (; place + wordSize < last; place += 2 * wordSize) {
    copyWord(place);
    copyWord(place + wordSize);
  }
  copyWord(std::min(place, last));
  copyWord(last);
  return found == 0;
}

}  // namespace store
