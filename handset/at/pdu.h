#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/alphabet.h"

// Messages as a modem hands them out in PDU mode: hexadecimal digits, service centre first.
namespace handset::at {

enum class Coding { septets, octets, ucs2, compressed };

// What the status of a report means: below the first delivered, below the second not yet, else never.
inline constexpr std::uint8_t deliveredBelow = 0x20;
inline constexpr std::uint8_t triedBelow = 0x40;

// Where a handset listens for word of multimedia messages.
inline constexpr std::uint16_t multimediaPort = 2948;

// The text of one message or of one part, header taken off, not yet decoded: characters may be spread over
// parts. Septets are one to a byte, UCS-2 is most significant octet first.
struct UserData {
  Coding coding = Coding::septets;
  std::vector<std::uint8_t> units;
  Languages languages;     // of septets
  std::uint16_t port = 0;  // that the message is meant for; 0: a person

  bool operator==(const UserData&) const = default;
};

// Says that a message is one part of a longer one. `number` counts from 1 and is at most `total`.
struct PartOf {
  std::uint16_t reference = 0;
  std::uint8_t total = 0;
  std::uint8_t number = 0;

  bool operator==(const PartOf&) const = default;
};

enum class PduKind { deliver, submit, statusReport, undecodable };

struct Pdu {
  PduKind kind = PduKind::undecodable;
  std::string number;  // of the other party, "+" before an international one; may be a name
  std::string time;    // yyMMddhhmmss and two digits of zone (see handset.h); empty where there is none
  UserData data;
  std::optional<PartOf> part;
  std::uint8_t reference = 0;     // of a status report: of the message that it is about
  std::uint8_t reportStatus = 0;  // of a status report

  bool operator==(const Pdu&) const = default;
};

// Never fails: of an undecodable message the fields hold what could be read before it broke off.
Pdu decodePdu(std::string_view hex);

// The text in UTF-8 with LF line breaks. Parts are put together before they are decoded. What is no text is
// named, in parentheses, and shown as digits.
std::string textOf(std::span<const UserData> parts);

// What a list shows for a message that stands alone, whatever its kind. `hex` is the message itself.
std::string textOf(const Pdu& pdu, std::string_view hex);

}  // namespace handset::at
