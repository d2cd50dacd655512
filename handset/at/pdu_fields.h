#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "handset/at/octet_reader.h"
#include "handset/at/pdu.h"

// The fields that messages are made of. The reader remembers when one of them broke off.
namespace handset::at {

// A party's address: its length in digits, its type, its digits or characters.
std::string readAddress(OctetReader& reader);

// A service centre's time stamp; empty when it holds no date.
std::string readTime(OctetReader& reader);

Coding codingOf(std::uint8_t dataCoding);

struct Text {
  UserData data;
  std::optional<PartOf> part;
  bool whole = false;  // false: `data` holds what there was of it
};

// Length and text, with the header in front of it when `hasHeader`.
Text readText(OctetReader& reader, Coding coding, bool hasHeader);

}  // namespace handset::at
