#include "text/unicode.h"

namespace text {
namespace {

constexpr char32_t replacement = 0xFFFD;

void appendUtf8(std::string& text, char32_t c) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

// Takes one character off the front of `text`; a broken sequence costs its first byte only.
char32_t takeUtf8(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  std::size_t length = 1;
  char32_t c = lead;
  char32_t least = 0;
  if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, c = lead & 0x07U, least = 0x10000;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3, c = lead & 0x0FU, least = 0x800;
  } else if (lead >= 0xC2 && lead < 0xE0) {
    length = 2, c = lead & 0x1FU, least = 0x80;
  } else if (lead >= 0x80) {
    c = replacement;
  }
  bool broken = length > text.size();
  for (std::size_t i = 1; i < length && !broken; ++i) {
    broken = (byte(i) & 0xC0U) != 0x80U;
    c = (c << 6) | (byte(i) & 0x3FU);
  }
  if (broken || c < least || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) {
    length = 1;
    c = replacement;
  }
  text.remove_prefix(length);
  return c;
}

}  // namespace

std::string utf8FromUtf16(std::u16string_view units) {
  std::string text;
  text.reserve(units.size());
  while (!units.empty()) {
    const std::u16string_view character = firstCharacter(units);
    char32_t c = character[0];
    if (character.size() == 2)
      c = 0x10000 + ((c - 0xD800) << 10) + (character[1] - char32_t{0xDC00});
    else if (isHighSurrogate(character[0]) || isLowSurrogate(character[0]))
      c = replacement;
    appendUtf8(text, c);
    units.remove_prefix(character.size());
  }
  return text;
}

std::u16string utf16FromUtf8(std::string_view text) {
  std::u16string units;
  units.reserve(text.size());
  while (!text.empty()) {
    const char32_t c = takeUtf8(text);
    if (c < 0x10000) {
      units.push_back(static_cast<char16_t>(c));
    } else {
      units.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
  }
  return units;
}

bool isValidUtf8(std::string_view text) {
  return repairedUtf8(text) == text;
}

std::string repairedUtf8(std::string_view text) {
  std::string repaired;
  repaired.reserve(text.size());
  while (!text.empty()) appendUtf8(repaired, takeUtf8(text));
  return repaired;
}

std::u16string_view firstCharacter(std::u16string_view units) {
  const bool pair = units.size() > 1 && isHighSurrogate(units[0]) && isLowSurrogate(units[1]);
  return units.substr(0, pair ? 2 : 1);
}

std::u16string withoutHalves(std::u16string_view units) {
  std::u16string whole;
  while (!units.empty()) {
    const std::u16string_view character = firstCharacter(units);
    const bool half =
        character.size() == 1 && (isHighSurrogate(character[0]) || isLowSurrogate(character[0]));
    if (!half) whole += character;
    units.remove_prefix(character.size());
  }
  return whole;
}

std::u16string withWholeLineEnds(std::u16string_view units) {
  std::u16string whole;
  for (const char16_t unit : units) {
    if (unit == u'\n' && !whole.ends_with(u'\r')) whole += u'\r';
    whole += unit;
  }
  return whole;
}

std::u16string_view fitting(std::u16string_view units, std::size_t limit) {
  if (units.size() <= limit) return units;
  const bool splitsPair = limit > 0 && isHighSurrogate(units[limit - 1]) && isLowSurrogate(units[limit]);
  return units.substr(0, splitsPair ? limit - 1 : limit);
}

}  // namespace text
