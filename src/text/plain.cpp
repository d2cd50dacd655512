#include "text/plain.h"

#include <algorithm>

namespace text {

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isAscii(std::string_view text) {
  unsigned char all = 0;  // without an early end, so that the compiler looks at many at once
  for (const char c : text) all |= static_cast<unsigned char>(c);
  return all < 0x80;
}

std::string_view trimmed(std::string_view text, std::string_view whiteSpace) {
  const std::size_t begin = text.find_first_not_of(whiteSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(whiteSpace) - begin + 1);
}

bool equalInAnyCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, lowered, lowered);
}

}  // namespace text
