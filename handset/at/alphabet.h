#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The default alphabet of short messages with its extension table. Septets are kept one to a byte, packed
// only on their way into a message.
namespace handset::at {

using Septets = std::vector<std::uint8_t>;
using Octets = std::span<const std::uint8_t>;

// Announces a character of the extension table; the two septets belong together.
inline constexpr std::uint8_t escapeSeptet = 0x1B;

// Place 0x1B is the escape, which is no character of its own.
inline constexpr std::u16string_view defaultTable =
    u"@£$¥èéùìòÇ\nØø\rÅå"
    u"Δ_ΦΓΛΩΠΨΣΘΞ\x1BÆæßÉ"
    u" !\"#¤%&'()*+,-./"
    u"0123456789:;<=>?"
    u"¡ABCDEFGHIJKLMNO"
    u"PQRSTUVWXYZÄÖÑÜ§"
    u"¿abcdefghijklmno"
    u"pqrstuvwxyzäöñüà";
static_assert(defaultTable.size() == 128 && defaultTable[escapeSeptet] == u'\x1B');

// The national tables that a message is written in, by the numbers of their languages; 0: the default ones.
struct Languages {
  std::uint8_t locking = 0;
  std::uint8_t single = 0;

  bool operator==(const Languages&) const = default;
};

// Never fails: what the extension table lacks is read from the other one, a lone escape is a space. Only the
// lower seven bits of each byte count.
std::u16string textFromSeptets(Octets septets, Languages languages = {});

// nullopt when the alphabet lacks a character.
std::optional<Septets> septetsFromText(std::u16string_view text);

// Eight septets in seven octets, the first bit `fillBits` (0-6) into the first octet.
std::vector<std::uint8_t> packSeptets(Octets septets, std::size_t fillBits);

// Fewer than `count` when the octets end before.
Septets unpackSeptets(Octets octets, std::size_t count, std::size_t fillBits);

}  // namespace handset::at
