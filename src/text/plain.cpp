#include "text/plain.h"

#include <algorithm>

namespace text {
namespace {

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
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
