#include "handset/at/submit.h"

#include <algorithm>

#include "handset/at/alphabet.h"
#include "handset/at/hex.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

constexpr std::size_t textOctets = 140;  // room for header and text
constexpr std::size_t maxParts = 255;
constexpr std::size_t maxDigits = 20;
constexpr std::uint8_t submit = 0x11;  // relative validity
constexpr std::uint8_t asksForReport = 0x20;

// Where the pieces of at most `room` units end; `belongsToNext` says that a unit may not be a piece's last.
template <typename Units, typename BelongsToNext>
std::vector<std::size_t> ends(const Units& units, std::size_t room, BelongsToNext belongsToNext) {
  std::vector<std::size_t> result;
  std::size_t begin = 0;
  do {
    std::size_t end = std::min(units.size(), begin + room);
    if (end < units.size() && belongsToNext(begin, end - 1)) --end;
    result.push_back(end);
    begin = end;
  } while (begin < units.size());
  return result;
}

// An escape septet is one only if it is not itself escaped; a piece never begins between the two.
bool endsInEscape(const Septets& septets, std::size_t begin, std::size_t last) {
  bool escaped = false;
  for (std::size_t i = begin; i <= last; ++i) escaped = !escaped && septets[i] == escapeSeptet;
  return escaped;
}

// The length octet and the header, which is empty or begins with its own length.
std::vector<std::uint8_t> begunField(std::size_t length, Octets header) {
  std::vector<std::uint8_t> field;
  field.reserve(1 + textOctets);
  field.push_back(static_cast<std::uint8_t>(length));
  field.insert(field.end(), header.begin(), header.end());
  return field;
}

std::vector<std::uint8_t> textField(Octets septets, Octets header) {
  const std::size_t headerSeptets = (header.size() * 8 + 6) / 7;
  std::vector<std::uint8_t> field = begunField(headerSeptets + septets.size(), header);
  const std::vector<std::uint8_t> packed = packSeptets(septets, headerSeptets * 7 - header.size() * 8);
  field.insert(field.end(), packed.begin(), packed.end());
  return field;
}

std::vector<std::uint8_t> textField(std::u16string_view units, Octets header) {
  std::vector<std::uint8_t> field = begunField(header.size() + units.size() * 2, header);
  for (const char16_t unit : units) {
    field.push_back(static_cast<std::uint8_t>(unit / 256U));
    field.push_back(static_cast<std::uint8_t>(unit % 256U));
  }
  return field;
}

// A reference that needs a second octet takes the longer kind of header.
std::vector<std::uint8_t> partHeader(std::uint16_t reference, std::size_t total, std::size_t number) {
  const auto high = static_cast<std::uint8_t>(reference / 256U);
  const auto low = static_cast<std::uint8_t>(reference % 256U);
  std::vector<std::uint8_t> header = high == 0 ? std::vector<std::uint8_t>{5, 0x00, 3, low}
                                               : std::vector<std::uint8_t>{6, 0x08, 4, high, low};
  header.push_back(static_cast<std::uint8_t>(total));
  header.push_back(static_cast<std::uint8_t>(number));
  return header;
}

std::vector<std::uint8_t> addressField(std::string_view number) {
  const bool international = number.starts_with('+');
  if (international) number.remove_prefix(1);
  const auto nibble = [](char digit) {
    return digit == '*' ? 0xAU : digit == '#' ? 0xBU : static_cast<unsigned>(digit - '0');
  };
  std::vector<std::uint8_t> field{static_cast<std::uint8_t>(number.size()),
                                  static_cast<std::uint8_t>(international ? 0x91 : 0x81)};
  for (std::size_t i = 0; i < number.size(); i += 2) {
    const unsigned high = i + 1 < number.size() ? nibble(number[i + 1]) : 0xFU;
    field.push_back(static_cast<std::uint8_t>(high << 4U | nibble(number[i])));
  }
  return field;
}

SubmitPdu submitPdu(std::string_view number, std::uint8_t first, bool ucs2, bool hasHeader, Octets text) {
  constexpr std::uint8_t fourDays = 0xAA;
  std::vector<std::uint8_t> octets{static_cast<std::uint8_t>(hasHeader ? first | 0x40U : first),
                                   0};  // the modem fills in the message reference
  const std::vector<std::uint8_t> address = addressField(number);
  octets.insert(octets.end(), address.begin(), address.end());
  octets.push_back(0);  // protocol: plain message
  octets.push_back(ucs2 ? 0x08 : 0x00);
  octets.push_back(fourDays);
  octets.insert(octets.end(), text.begin(), text.end());
  return {"00" + hexFromOctets(octets), octets.size()};  // the SIM's own service centre
}

// `units` are the text's septets or code units, of which `perMessage` fit one message.
template <typename Units, typename BelongsToNext>
std::optional<std::vector<SubmitPdu>> divided(std::string_view number, std::uint8_t first, bool ucs2,
                                              std::uint16_t reference, const Units& units,
                                              std::size_t perMessage, BelongsToNext belongsToNext) {
  if (units.size() <= perMessage)
    return std::vector{submitPdu(number, first, ucs2, false, textField(units, Octets{}))};
  const std::size_t left = textOctets - partHeader(reference, 0, 0).size();
  const std::vector<std::size_t> pieces = ends(units, ucs2 ? left / 2 : left * 8 / 7, belongsToNext);
  if (pieces.size() > maxParts) return std::nullopt;
  std::vector<SubmitPdu> pdus;
  std::size_t begin = 0;
  for (const std::size_t end : pieces) {
    const Units piece{units.begin() + static_cast<std::ptrdiff_t>(begin),
                      units.begin() + static_cast<std::ptrdiff_t>(end)};
    const std::vector<std::uint8_t> header = partHeader(reference, pieces.size(), pdus.size() + 1);
    pdus.push_back(submitPdu(number, first, ucs2, true, textField(piece, header)));
    begin = end;
  }
  return pdus;
}

// A line break becomes one line feed, however it was written.
std::u16string unitsOf(std::string_view text) {
  std::u16string units;
  char16_t before = 0;
  for (const char16_t unit : text::utf16FromUtf8(text)) {
    if (unit != u'\n' || before != u'\r') units += unit == u'\r' ? u'\n' : unit;
    before = unit;
  }
  return units;
}

}  // namespace

std::optional<std::string> dialledNumber(std::string_view number) {
  std::string dialled;
  for (const char c : number)
    if (std::string_view{" -.()"}.find(c) == std::string_view::npos) dialled += c;
  const std::string_view digits = std::string_view{dialled}.substr(dialled.starts_with('+') ? 1 : 0);
  if (digits.empty() || digits.size() > maxDigits) return std::nullopt;
  if (digits.find_first_not_of("0123456789*#") != digits.npos) return std::nullopt;
  return dialled;
}

std::optional<std::vector<SubmitPdu>> submitPdus(std::string_view number, std::string_view text,
                                                 std::uint16_t reference, bool report) {
  const std::optional<std::string> dialled = dialledNumber(number);
  if (!dialled) return std::nullopt;
  const std::u16string units = unitsOf(text);
  const std::uint8_t first = report ? submit | asksForReport : submit;
  if (const std::optional<Septets> septets = septetsFromText(units)) {
    return divided(
        *dialled, first, false, reference, *septets, 160,
        [&septets](std::size_t begin, std::size_t last) { return endsInEscape(*septets, begin, last); });
  }
  return divided(*dialled, first, true, reference, units, 70,
                 [&units](std::size_t, std::size_t last) { return text::isHighSurrogate(units[last]); });
}

}  // namespace handset::at
