#pragma once

#include <cstdint>
#include <string_view>

// The tables that national languages put in place of the default alphabet (locking) and of its extensions
// (single shift). Languages are numbered as in the headers of messages.
namespace handset::at {

struct Extension {
  std::uint8_t septet;
  char16_t character;
};

// The 128 characters of the alphabet; the default one for a language that has none of its own.
std::u16string_view lockingTable(std::uint8_t language);

// The character behind an escape; 0 when the language's table lacks it.
char16_t singleShift(std::uint8_t language, std::uint8_t septet);

}  // namespace handset::at
