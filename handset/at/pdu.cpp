#include "handset/at/pdu.h"

#include "handset/at/alphabet.h"
#include "handset/at/hex.h"
#include "handset/at/octet_reader.h"
#include "handset/at/pdu_fields.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

constexpr std::uint8_t kindBits = 0x03;
constexpr std::uint8_t headerBit = 0x40;

void readTextInto(Pdu& pdu, OctetReader& reader, std::uint8_t dataCoding, bool hasHeader) {
  Text text = readText(reader, codingOf(dataCoding), hasHeader);
  pdu.data = std::move(text.data);
  pdu.part = text.part;
  if (!text.whole) pdu.kind = PduKind::undecodable;
}

void readDeliver(Pdu& pdu, OctetReader& reader, bool hasHeader) {
  pdu.kind = PduKind::deliver;
  pdu.number = readAddress(reader);
  reader.next();  // protocol identifier
  const std::uint8_t dataCoding = reader.next();
  pdu.time = readTime(reader);
  readTextInto(pdu, reader, dataCoding, hasHeader);
}

void readSubmit(Pdu& pdu, OctetReader& reader, std::uint8_t first) {
  pdu.kind = PduKind::submit;
  reader.next();  // message reference
  pdu.number = readAddress(reader);
  reader.next();  // protocol identifier
  const std::uint8_t dataCoding = reader.next();
  const unsigned validity = (first >> 3U) & 0x3U;  // none, enhanced, relative, absolute
  reader.take(validity == 0 ? 0 : validity == 2 ? 1 : 7);
  readTextInto(pdu, reader, dataCoding, (first & headerBit) != 0);
}

void readStatusReport(Pdu& pdu, OctetReader& reader) {
  pdu.kind = PduKind::statusReport;
  pdu.reference = reader.next();
  pdu.number = readAddress(reader);
  const std::string accepted = readTime(reader);
  const std::string settled = readTime(reader);
  pdu.time = settled.empty() ? accepted : settled;
  pdu.reportStatus = reader.next();
}

std::string withLineFeeds(const std::string& text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      result += text[i];
    } else if (i + 1 == text.size() || text[i + 1] != '\n') {
      result += '\n';
    }
  }
  return result;
}

std::string decoded(const UserData& data) {
  if (data.coding == Coding::octets && data.port == multimediaPort) return "(multimedia message waiting)";
  switch (data.coding) {
    case Coding::septets:
      return text::utf8FromUtf16(textFromSeptets(data.units, data.languages));
    case Coding::ucs2: {
      std::u16string units;
      for (std::size_t i = 0; i + 1 < data.units.size(); i += 2)
        units += static_cast<char16_t>(data.units[i] * 256 + data.units[i + 1]);
      return text::utf8FromUtf16(units);
    }
    case Coding::octets:
      return "(8-bit data) " + hexFromOctets(data.units);
    case Coding::compressed:
      return "(compressed text) " + hexFromOctets(data.units);
  }
  return {};
}

// "2026-11-21 10:22" with a space before it; empty where there is no time.
std::string dayAndMinute(const std::string& time) {
  if (time.size() < 10) return {};
  const auto two = [&time](std::size_t at) { return time.substr(at, 2); };
  return " 20" + two(0) + '-' + two(2) + '-' + two(4) + ' ' + two(6) + ':' + two(8);
}

std::string reportText(const Pdu& pdu) {
  const std::string when = dayAndMinute(pdu.time);
  if (pdu.reportStatus < deliveredBelow) return "(delivered" + when + ')';
  if (pdu.reportStatus < triedBelow) return "(not yet delivered" + when + ')';
  const std::uint8_t octets[] = {pdu.reportStatus};
  return "(not delivered" + when + ", reason " + hexFromOctets(octets) + ')';
}

}  // namespace

Pdu decodePdu(std::string_view hex) {
  const std::vector<std::uint8_t> octets = octetsFromHex(hex);
  OctetReader reader{octets};
  Pdu pdu;
  reader.take(reader.next());  // service centre
  const std::uint8_t first = reader.next();
  if (reader.failed()) return pdu;
  switch (first & kindBits) {
    case 1:
      readSubmit(pdu, reader, first);
      break;
    case 2:
      readStatusReport(pdu, reader);
      break;
    default:  // the reserved kind is to be read as a received message
      readDeliver(pdu, reader, (first & headerBit) != 0);
      break;
  }
  if (reader.failed()) pdu.kind = PduKind::undecodable;
  return pdu;
}

std::string textOf(std::span<const UserData> parts) {
  std::string text;
  for (std::size_t i = 0; i < parts.size();) {
    // Only parts that are written alike can share a character.
    UserData run = parts[i];
    const auto alike = [&run](const UserData& part) {
      return part.coding == run.coding && part.languages == run.languages && part.port == run.port;
    };
    for (++i; i < parts.size() && alike(parts[i]); ++i) {
      if (run.coding == Coding::ucs2 && run.units.size() % 2 != 0) run.units.pop_back();
      run.units.insert(run.units.end(), parts[i].units.begin(), parts[i].units.end());
    }
    text += decoded(run);
  }
  return withLineFeeds(text);
}

std::string textOf(const Pdu& pdu, std::string_view hex) {
  if (pdu.kind == PduKind::statusReport) return reportText(pdu);
  const std::string text = textOf(std::span{&pdu.data, 1});
  if (pdu.kind != PduKind::undecodable) return text;
  constexpr std::size_t longest = 400;
  return "(unreadable message) " + (pdu.data.units.empty() ? std::string{hex.substr(0, longest)} : text);
}

}  // namespace handset::at
