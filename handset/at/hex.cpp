#include "handset/at/hex.h"

#include <algorithm>

namespace handset::at {
namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

void appendOctet(std::string& hex, unsigned octet) {
  hex += digits[(octet >> 4U) & 0xFU];
  hex += digits[octet & 0xFU];
}

}  // namespace

bool isHex(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return hexDigit(c) >= 0; });
}

std::vector<std::uint8_t> octetsFromHex(std::string_view hex) {
  std::vector<std::uint8_t> octets;
  octets.reserve(hex.size() / 2);
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    const int high = hexDigit(hex[i]);
    const int low = hexDigit(hex[i + 1]);
    if (high < 0 || low < 0) break;
    octets.push_back(static_cast<std::uint8_t>(high * 16 + low));
  }
  return octets;
}

std::string hexFromOctets(std::span<const std::uint8_t> octets) {
  std::string hex;
  hex.reserve(octets.size() * 2);
  for (const std::uint8_t octet : octets) appendOctet(hex, octet);
  return hex;
}

std::optional<std::u16string> unitsFromHex(std::string_view hex) {
  if (hex.size() % 4 != 0 || !isHex(hex)) return std::nullopt;
  const std::vector<std::uint8_t> octets = octetsFromHex(hex);
  std::u16string units;
  for (std::size_t i = 0; i + 1 < octets.size(); i += 2)
    units += static_cast<char16_t>(octets[i] * 256 + octets[i + 1]);
  return units;
}

std::string hexFromUnits(std::u16string_view units) {
  std::string hex;
  for (const char16_t unit : units) {
    appendOctet(hex, unit / 256U);
    appendOctet(hex, unit % 256U);
  }
  return hex;
}

}  // namespace handset::at
