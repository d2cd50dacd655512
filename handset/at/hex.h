#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace handset::at {

// The value of a hexadecimal digit, or -1.
constexpr int hexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  return -1;
}

// Whether there is at least one character and all are hexadecimal digits.
bool isHex(std::string_view text);

// The octets up to the first character that is no digit; half an octet at the end is left out.
std::vector<std::uint8_t> octetsFromHex(std::string_view hex);

// Two capital digits an octet.
std::string hexFromOctets(std::span<const std::uint8_t> octets);

// UTF-16 as a modem writes it into a text: four digits a code unit. nullopt when it is not that.
std::optional<std::u16string> unitsFromHex(std::string_view hex);
std::string hexFromUnits(std::u16string_view units);

}  // namespace handset::at
