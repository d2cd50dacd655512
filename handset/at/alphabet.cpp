#include "handset/at/alphabet.h"

#include <algorithm>
#include <array>

#include "handset/at/national.h"

namespace handset::at {
namespace {

constexpr std::array<Extension, 10> extensionTable{{{0x0A, u'\f'},
                                                    {0x14, u'^'},
                                                    {0x28, u'{'},
                                                    {0x29, u'}'},
                                                    {0x2F, u'\\'},
                                                    {0x3C, u'['},
                                                    {0x3D, u'~'},
                                                    {0x3E, u']'},
                                                    {0x40, u'|'},
                                                    {0x65, u'€'}}};

char16_t extended(std::uint8_t septet, Languages languages) {
  if (const char16_t character = singleShift(languages.single, septet)) return character;
  const auto found = std::ranges::find(extensionTable, septet, &Extension::septet);
  if (found != extensionTable.end()) return found->character;
  return septet == escapeSeptet ? u' ' : lockingTable(languages.locking)[septet];
}

}  // namespace

std::u16string textFromSeptets(Octets septets, Languages languages) {
  const std::u16string_view table = lockingTable(languages.locking);
  std::u16string text;
  text.reserve(septets.size());
  for (std::size_t i = 0; i < septets.size(); ++i) {
    const auto septet = static_cast<std::uint8_t>(septets[i] & 0x7FU);
    if (septet != escapeSeptet) {
      text += table[septet];
    } else if (i + 1 < septets.size()) {
      text += extended(static_cast<std::uint8_t>(septets[++i] & 0x7FU), languages);
    } else {
      text += u' ';
    }
  }
  return text;
}

std::optional<Septets> septetsFromText(std::u16string_view text) {
  Septets septets;
  septets.reserve(text.size());
  for (const char16_t character : text) {
    const std::size_t place = defaultTable.find(character);
    if (place != defaultTable.npos && place != escapeSeptet) {
      septets.push_back(static_cast<std::uint8_t>(place));
      continue;
    }
    const auto found = std::ranges::find(extensionTable, character, &Extension::character);
    if (found == extensionTable.end()) return std::nullopt;
    septets.push_back(escapeSeptet);
    septets.push_back(found->septet);
  }
  return septets;
}

std::vector<std::uint8_t> packSeptets(Octets septets, std::size_t fillBits) {
  std::vector<std::uint8_t> octets((fillBits + septets.size() * 7 + 7) / 8);
  std::size_t bit = fillBits;
  for (const std::uint8_t septet : septets) {
    const unsigned shifted = (septet & 0x7FU) << (bit % 8);
    octets[bit / 8] = static_cast<std::uint8_t>(octets[bit / 8] | (shifted & 0xFFU));
    if (bit % 8 > 1) octets[bit / 8 + 1] = static_cast<std::uint8_t>(shifted >> 8U);
    bit += 7;
  }
  return octets;
}

Septets unpackSeptets(Octets octets, std::size_t count, std::size_t fillBits) {
  const std::size_t bits = octets.size() * 8;
  const std::size_t whole = bits < fillBits ? 0 : (bits - fillBits) / 7;
  Septets septets(std::min(count, whole));
  std::size_t bit = fillBits;
  for (std::uint8_t& septet : septets) {
    unsigned two = octets[bit / 8];
    if (bit % 8 > 1) two |= static_cast<unsigned>(octets[bit / 8 + 1]) << 8U;
    septet = static_cast<std::uint8_t>((two >> (bit % 8)) & 0x7FU);
    bit += 7;
  }
  return septets;
}

}  // namespace handset::at
