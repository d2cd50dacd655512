#include "handset/at/fields.h"

#include <algorithm>

#include "handset/at/hex.h"
#include "text/plain.h"

namespace handset::at {
namespace {

constexpr std::string_view space{" \t\0", 3};  // some modems send NULs

// Where the quote that begins at 0 ends; npos when it does not.
std::size_t endOfQuote(std::string_view text) {
  for (std::size_t at = text.find('"', 1); at != text.npos; at = text.find('"', at + 1)) {
    const std::size_t next = text.find_first_not_of(space, at + 1);
    if (next == text.npos || text[next] == ',') return at;
  }
  return text.npos;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  return text::trimmed(text, space);
}

std::optional<std::string_view> valueOf(std::string_view line, std::string_view prefix) {
  if (!line.starts_with(prefix)) return std::nullopt;
  return trimmed(line.substr(prefix.size()));
}

std::optional<std::string_view> valueOf(const std::vector<std::string>& lines, std::string_view prefix) {
  for (const std::string& line : lines)
    if (const std::optional<std::string_view> value = valueOf(line, prefix)) return value;
  return std::nullopt;
}

std::vector<Field> fieldsOf(std::string_view values) {
  std::vector<Field> fields;
  for (bool more = true; more;) {
    const std::size_t first = values.find_first_not_of(space);
    values.remove_prefix(std::min(first, values.size()));
    Field field;
    std::size_t comma = 0;
    if (const std::size_t end = values.starts_with('"') ? endOfQuote(values) : values.npos;
        end != values.npos) {
      field = {values.substr(1, end - 1), true};
      comma = values.find(',', end);
    } else {
      comma = values.find(',');
      field.text = trimmed(values.substr(0, comma));
      field.quoted = field.text.starts_with('"');
      if (field.quoted) field.text.remove_prefix(1);
    }
    fields.push_back(field);
    more = comma != values.npos;
    if (more) values.remove_prefix(comma + 1);
  }
  return fields;
}

std::optional<int> numberOf(std::string_view text) {
  if (text.empty() || text.size() > 9) return std::nullopt;
  int number = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return std::nullopt;
    number = number * 10 + (digit - '0');
  }
  return number;
}

std::vector<std::string> wordsOf(std::string_view list) {
  constexpr std::string_view separators = "()\", \t";
  std::vector<std::string> words;
  for (;;) {
    const std::size_t first = list.find_first_not_of(separators);
    if (first == list.npos) return words;
    list.remove_prefix(first);
    const std::string_view word = list.substr(0, list.find_first_of(separators));
    words.push_back(asciiOfHex(word).value_or(std::string{word}));
    list.remove_prefix(word.size());
  }
}

std::string_view firstGroupOf(std::string_view list) {
  return list.substr(0, list.find(')'));
}

std::string hexOfAscii(std::string_view text) {
  return hexFromUnits(std::u16string{text.begin(), text.end()});
}

std::optional<std::string> asciiOfHex(std::string_view hex) {
  const std::optional<std::u16string> units = unitsFromHex(hex);
  if (!units || !std::ranges::all_of(*units, [](char16_t unit) { return unit > 0x20 && unit < 0x7F; }))
    return std::nullopt;
  std::string text;
  for (const char16_t unit : *units) text += static_cast<char>(unit);
  return text;
}

}  // namespace handset::at
