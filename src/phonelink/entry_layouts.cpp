#include "phonelink/entry_layouts.h"

#include <algorithm>

namespace phonelink {
namespace {

// Where the fields of the records begin.
constexpr std::size_t phoneOffset = 16;
constexpr std::size_t codingOffset = 33;
constexpr std::size_t timeOffset = 34;
constexpr std::size_t textOffset = 50;
constexpr std::size_t numberOffset = 210;
constexpr std::size_t statusOffset = 212;
constexpr std::size_t contactNameOffset = 20;
constexpr std::size_t wideContactNumberOffset = 255;

constexpr char32_t replacement = 0xFFFD;

std::string textAt(std::span<const std::byte> bytes, std::size_t offset, std::size_t capacity) {
  std::string text;
  for (std::size_t i = 0; i < capacity && bytes[offset + i] != std::byte{0}; ++i)
    text.push_back(static_cast<char>(bytes[offset + i]));
  return text;
}

void putText(std::span<std::byte> bytes, std::size_t offset, std::size_t capacity, std::string_view text) {
  const std::size_t length = std::min(text.size(), capacity);
  for (std::size_t i = 0; i < length; ++i) bytes[offset + i] = static_cast<std::byte>(text[i]);
}

std::uint16_t unitAt(std::span<const std::byte> bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(std::to_integer<unsigned>(bytes[offset]) |
                                    (std::to_integer<unsigned>(bytes[offset + 1]) << 8U));
}

void putUnit(std::span<std::byte> bytes, std::size_t offset, std::uint16_t unit) {
  bytes[offset] = static_cast<std::byte>(unit & 0xFFU);
  bytes[offset + 1] = static_cast<std::byte>(unit >> 8U);
}

std::u16string unitsAt(std::span<const std::byte> bytes, std::size_t offset, std::size_t capacity) {
  std::u16string units;
  for (std::size_t i = 0; i < capacity; ++i) {
    const std::uint16_t unit = unitAt(bytes, offset + 2 * i);
    if (unit == 0) break;
    units.push_back(static_cast<char16_t>(unit));
  }
  return units;
}

MessageEntry decodeFields(std::span<const std::byte> bytes) {
  MessageEntry entry;
  entry.phone = textAt(bytes, phoneOffset, phoneCapacity + 1);
  entry.coding = std::to_integer<std::uint8_t>(bytes[codingOffset]);
  entry.time = textAt(bytes, timeOffset, timeCapacity + 1);
  for (std::size_t i = 0; i < textCapacity; ++i) entry.text[i] = static_cast<char>(bytes[textOffset + i]);
  entry.number = static_cast<std::int16_t>(unitAt(bytes, numberOffset));
  return entry;
}

void encodeFields(const MessageEntry& entry, std::span<std::byte> bytes) {
  std::fill(bytes.begin(), bytes.end(), std::byte{0});
  putText(bytes, phoneOffset, phoneCapacity, entry.phone);
  bytes[codingOffset] = std::byte{entry.coding};
  putText(bytes, timeOffset, timeCapacity, entry.time);
  putText(bytes, textOffset, textCapacity, {entry.text.data(), entry.text.size()});
  putUnit(bytes, numberOffset, static_cast<std::uint16_t>(entry.number));
}

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

std::string MessageEntry::narrowText() const {
  return {text.begin(), std::find(text.begin(), text.end(), '\0')};
}

std::u16string MessageEntry::wideText() const {
  return unitsAt(std::as_bytes(std::span{text}), 0, wideTextCapacity);
}

bool MessageEntry::setNarrowText(std::string_view bytes) {
  if (bytes.size() > textCapacity) return false;
  text.fill('\0');
  std::copy(bytes.begin(), bytes.end(), text.begin());
  return true;
}

bool MessageEntry::setWideText(std::u16string_view units) {
  if (units.size() > wideTextCapacity) return false;
  text.fill('\0');
  for (std::size_t i = 0; i < units.size(); ++i)
    putUnit(std::as_writable_bytes(std::span{text}), 2 * i, static_cast<std::uint16_t>(units[i]));
  return true;
}

MessageEntry decodeMessage(MessageBytes bytes) {
  return decodeFields(bytes);
}

MessageEntry decodeHandsetMessage(HandsetBytes bytes) {
  MessageEntry entry = decodeFields(bytes);
  entry.status = unitAt(bytes, statusOffset);
  return entry;
}

ContactEntry decodeContact(ContactBytes bytes) {
  return {textAt(bytes, 0, contactNumberCapacity + 1),
          textAt(bytes, contactNameOffset, contactNameCapacity + 1)};
}

WideContactEntry decodeWideContact(WideContactBytes bytes) {
  // The name field ends where the number begins, in the middle of its last code unit.
  return {unitsAt(bytes, 0, wideContactNumberOffset / 2),
          textAt(bytes, wideContactNumberOffset, wideContactNumberCapacity + 1)};
}

void encodeMessage(const MessageEntry& entry, std::span<std::byte, messageEntrySize> bytes) {
  encodeFields(entry, bytes);
}

void encodeHandsetMessage(const MessageEntry& entry, std::span<std::byte, handsetEntrySize> bytes) {
  encodeFields(entry, bytes);
  putUnit(bytes, statusOffset, entry.status);
}

void encodeContact(const ContactEntry& entry, std::span<std::byte, contactEntrySize> bytes) {
  std::fill(bytes.begin(), bytes.end(), std::byte{0});
  putText(bytes, 0, contactNumberCapacity, entry.number);
  putText(bytes, contactNameOffset, contactNameCapacity, entry.name);
}

void encodeWideContact(const WideContactEntry& entry, std::span<std::byte, wideContactEntrySize> bytes) {
  std::fill(bytes.begin(), bytes.end(), std::byte{0});
  const std::size_t length = std::min(entry.name.size(), wideContactNameCapacity);
  for (std::size_t i = 0; i < length; ++i) putUnit(bytes, 2 * i, static_cast<std::uint16_t>(entry.name[i]));
  putText(bytes, wideContactNumberOffset, wideContactNumberCapacity, entry.number);
}

std::string utf8FromUtf16(std::u16string_view units) {
  std::string text;
  text.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t c = units[i];
    const bool high = c >= 0xD800 && c < 0xDC00;
    if (high && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (units[i + 1] - char32_t{0xDC00});
      ++i;
    } else if (c >= 0xD800 && c < 0xE000) {
      c = replacement;
    }
    appendUtf8(text, c);
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

}  // namespace phonelink
