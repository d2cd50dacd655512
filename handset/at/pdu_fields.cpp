#include "handset/at/pdu_fields.h"

#include <algorithm>
#include <string_view>

#include "handset/at/alphabet.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

constexpr std::string_view addressDigits = "0123456789*#abc";  // the sixteenth is a filler

unsigned lowNibble(std::uint8_t octet) {
  return octet & 0xFU;
}

unsigned highNibble(std::uint8_t octet) {
  return static_cast<unsigned>(octet) >> 4U;
}

std::string digitsOf(Octets octets, std::size_t count) {
  std::string digits;
  for (std::size_t i = 0; i < std::min(count, octets.size() * 2); ++i) {
    const unsigned nibble = i % 2 == 0 ? lowNibble(octets[i / 2]) : highNibble(octets[i / 2]);
    if (nibble < addressDigits.size()) digits += addressDigits[nibble];
  }
  return digits;
}

// The last two characters of a time: quarter hours, the sign in the top bit of the first as on the air.
std::string zoneOf(std::uint8_t octet) {
  if (highNibble(octet) > 9) return "00";
  constexpr std::string_view hexDigits = "0123456789ABCDEF";
  return {hexDigits[lowNibble(octet)], hexDigits[highNibble(octet)]};
}

// A header is a row of elements: identifier, length, value. One that runs past the end ends the row.
void readHeader(Octets header, Text& text) {
  constexpr std::uint8_t ports = 0x05;
  constexpr std::uint8_t singleShiftLanguage = 0x24;
  constexpr std::uint8_t lockingLanguage = 0x25;
  OctetReader reader{header};
  for (;;) {
    const std::uint8_t identifier = reader.next();
    const Octets value = reader.take(reader.next());
    if (reader.failed()) return;
    if (identifier == ports && value.size() == 4)
      text.data.port = static_cast<std::uint16_t>(value[0] * 256 + value[1]);
    if (identifier == singleShiftLanguage && value.size() == 1) text.data.languages.single = value[0];
    if (identifier == lockingLanguage && value.size() == 1) text.data.languages.locking = value[0];
    const std::size_t referenceOctets = identifier == 0x00 ? 1 : identifier == 0x08 ? 2 : 0;
    if (referenceOctets == 0 || value.size() != referenceOctets + 2) continue;
    const auto reference =
        static_cast<std::uint16_t>(referenceOctets == 1 ? value[0] : value[0] * 256 + value[1]);
    const PartOf found{reference, value[referenceOctets], value[referenceOctets + 1]};
    if (found.number != 0 && found.number <= found.total) text.part = found;
  }
}

}  // namespace

std::string readAddress(OctetReader& reader) {
  const std::size_t digits = reader.next();
  const unsigned type = (reader.next() >> 4U) & 0x7U;
  const Octets octets = reader.take((digits + 1) / 2);
  constexpr unsigned international = 1;
  constexpr unsigned alphanumeric = 5;
  if (type == alphanumeric)
    return text::utf8FromUtf16(textFromSeptets(unpackSeptets(octets, digits * 4 / 7, 0)));
  return (type == international && digits > 0 ? "+" : "") + digitsOf(octets, digits);
}

std::string readTime(OctetReader& reader) {
  const Octets octets = reader.take(7);
  if (octets.size() < 7) return {};
  for (const std::uint8_t octet : octets.first(6))
    if (lowNibble(octet) > 9 || highNibble(octet) > 9) return {};
  // Month or day 0: a message that never had a time.
  if (octets[1] == 0 || octets[2] == 0) return {};
  return digitsOf(octets, 12) + zoneOf(octets[6]);
}

Coding codingOf(std::uint8_t dataCoding) {
  const unsigned group = highNibble(dataCoding);
  if (group < 0x8) {
    if ((dataCoding & 0x20U) != 0) return Coding::compressed;
    const unsigned alphabet = (dataCoding >> 2U) & 0x3U;
    return alphabet == 1 ? Coding::octets : alphabet == 2 ? Coding::ucs2 : Coding::septets;
  }
  if (group == 0xE) return Coding::ucs2;
  if (group == 0xF && (dataCoding & 0x4U) != 0) return Coding::octets;
  return Coding::septets;
}

Text readText(OctetReader& reader, Coding coding, bool hasHeader) {
  const std::size_t length = reader.next();
  const bool septets = coding == Coding::septets;
  const Octets octets = reader.take(septets ? (length * 7 + 7) / 8 : length);
  Text text;
  text.whole = !reader.failed();
  text.data.coding = coding;

  std::size_t header = hasHeader && !octets.empty() ? std::size_t{1} + octets.front() : 0;
  const std::size_t headerSeptets = (header * 8 + 6) / 7;
  if (header > octets.size() || (septets && headerSeptets > length)) {
    text.whole = false;
    header = 0;
  } else if (header > 0) {
    readHeader(octets.subspan(1, header - 1), text);
  }
  const Octets body = octets.subspan(header);
  if (septets) {
    const std::size_t fillBits = header == 0 ? 0 : headerSeptets * 7 - header * 8;
    text.data.units = unpackSeptets(body, length - (header == 0 ? 0 : headerSeptets), fillBits);
  } else {
    text.data.units.assign(body.begin(), body.end());
  }
  return text;
}

}  // namespace handset::at
