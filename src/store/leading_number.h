#pragma once

#include <cstdint>
#include <string_view>

namespace store {

// The number that a text begins with, as atoi reads it, held within 32 bits; 0 when there is none.
constexpr std::int32_t leadingNumber(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n\f\v");
  text.remove_prefix(begin == std::string_view::npos ? text.size() : begin);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  constexpr std::int64_t beyond = std::int64_t{1} << 31;
  std::int64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    value = value * 10 + (c - '0');
    if (value > beyond) value = beyond;
  }
  if (negative) return static_cast<std::int32_t>(-value);
  return static_cast<std::int32_t>(value < beyond ? value : beyond - 1);
}

}  // namespace store
