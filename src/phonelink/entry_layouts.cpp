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

// Field follows field without a gap, whatever a compiler would make of a structure; only
// behind the number of a wide contact there are bytes that no field covers.
static_assert(phoneOffset + phoneCapacity + 1 == codingOffset && codingOffset + 1 == timeOffset);
static_assert(timeOffset + timeCapacity + 1 == textOffset && textOffset + textCapacity == numberOffset);
static_assert(numberOffset + 2 == messageEntrySize && statusOffset == messageEntrySize);
static_assert(statusOffset + 2 == handsetEntrySize && 2 * wideTextCapacity == textCapacity);
static_assert(contactNumberCapacity + 1 == contactNameOffset);
static_assert(contactNameOffset + contactNameCapacity + 1 == contactEntrySize);
static_assert(2 * (wideContactNameCapacity + 1) <= wideContactNumberOffset);
static_assert(wideContactNumberOffset + wideContactNumberCapacity + 1 <= wideContactEntrySize);

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

}  // namespace phonelink
