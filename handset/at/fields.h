#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The values in a modem's answers, read so that missing brackets and quotes do no harm.
namespace handset::at {

std::string_view trimmed(std::string_view text);

// What stands behind `prefix` (as in "+CPMS:"), trimmed; nullopt when the line does not begin with it.
std::optional<std::string_view> valueOf(std::string_view line, std::string_view prefix);

// The same for the first of the lines that has the prefix.
std::optional<std::string_view> valueOf(const std::vector<std::string>& lines, std::string_view prefix);

struct Field {
  std::string_view text;  // trimmed, quotes taken off; borrowed from what was split
  bool quoted = false;
};

// Splits at the commas outside quotes. A quote ends at one that a comma or the end follows, so that names
// may hold quotes; one that never ends goes up to the next comma.
std::vector<Field> fieldsOf(std::string_view values);

// A decimal number of at most nine digits, nothing else.
std::optional<int> numberOf(std::string_view text);

// The words of a list, whatever brackets, quotes and commas stand around them; those that are 16-bit
// characters in digits are decoded.
std::vector<std::string> wordsOf(std::string_view list);

// Up to the end of the first group in brackets; everything where there are none.
std::string_view firstGroupOf(std::string_view list);

// ASCII in UTF-16, four digits a character, for modems that want parameters so.
std::string hexOfAscii(std::string_view text);
std::optional<std::string> asciiOfHex(std::string_view hex);

}  // namespace handset::at
