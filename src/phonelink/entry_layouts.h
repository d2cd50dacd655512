#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The packed little-endian records that cross the boundary between the program and a phone-link library.
// Both sides use this header and nothing else of each other. Entries are hostile input: every text ends at
// its field's end, whatever the bytes say. Decoding and encoding never fail and never read or write past
// the span they are given.
namespace phonelink {

inline constexpr std::size_t maxEntries = 1000;            // entries in every buffer the program hands out
inline constexpr std::size_t messageEntrySize = 212;       // received, outgoing and sent messages
inline constexpr std::size_t handsetEntrySize = 214;       // the same, then an unsigned 16-bit status
inline constexpr std::size_t contactHeadSize = 4;          // head of both phonebook buffers, not read
inline constexpr std::size_t contactEntrySize = 40;        // number (20 bytes), name (20 bytes)
inline constexpr std::size_t wideContactEntrySize = 2836;  // name (UTF-16LE, 255 bytes), number
inline constexpr std::size_t contactBufferSize = 40'000;   // head and whole entries of zelGetPB
inline constexpr std::size_t wideContactBufferSize = contactHeadSize + maxEntries * wideContactEntrySize;

inline constexpr std::size_t phoneCapacity = 16;     // characters of a number, its NUL not counted
inline constexpr std::size_t timeCapacity = 15;      // characters of a time text, its NUL not counted
inline constexpr std::size_t textCapacity = 160;     // bytes of a text; a full field has no NUL
inline constexpr std::size_t wideTextCapacity = 80;  // UTF-16 code units of a text
inline constexpr std::size_t contactNumberCapacity = 19;
inline constexpr std::size_t contactNameCapacity = 19;
inline constexpr std::size_t wideContactNameCapacity = 126;    // UTF-16 code units, NUL not counted
inline constexpr std::size_t wideContactNumberCapacity = 127;  // bytes, NUL not counted

// Data coding of a text: the default alphabet, or 16-bit characters.
inline constexpr std::uint8_t codingDefault = 0;
inline constexpr std::uint8_t codingUcs2 = 8;

// What the status of a handset entry says; other values occur and belong to no folder.
inline constexpr std::uint16_t statusReceivedRead = 1;
inline constexpr std::uint16_t statusReceivedUnread = 3;
inline constexpr std::uint16_t statusOutgoing = 7;

// One message as it crosses the boundary. `text` holds the field's bytes as they are: in the system code
// page, or UTF-16LE where both sides have agreed on 16-bit texts and `coding` is codingUcs2.
struct MessageEntry {
  std::string phone;  // at most phoneCapacity bytes
  std::uint8_t coding = codingDefault;
  std::string time;  // at most timeCapacity bytes
  std::array<char, textCapacity> text{};
  std::int16_t number = 0;   // storage number in the handset
  std::uint16_t status = 0;  // handset entries only

  // The text up to its first NUL, as bytes of the system code page.
  std::string narrowText() const;
  // The text up to its first 16-bit NUL, as UTF-16 code units.
  std::u16string wideText() const;
  // Fill the text field, the rest of it zero. False, and the field untouched, when the text is too long.
  bool setNarrowText(std::string_view bytes);
  bool setWideText(std::u16string_view units);
};

struct ContactEntry {
  std::string number;  // at most contactNumberCapacity bytes
  std::string name;    // at most contactNameCapacity bytes, system code page
};

struct WideContactEntry {
  std::u16string name;  // at most wideContactNameCapacity code units
  std::string number;   // at most wideContactNumberCapacity bytes
};

using MessageBytes = std::span<const std::byte, messageEntrySize>;
using HandsetBytes = std::span<const std::byte, handsetEntrySize>;
using ContactBytes = std::span<const std::byte, contactEntrySize>;
using WideContactBytes = std::span<const std::byte, wideContactEntrySize>;

MessageEntry decodeMessage(MessageBytes bytes);
MessageEntry decodeHandsetMessage(HandsetBytes bytes);
ContactEntry decodeContact(ContactBytes bytes);
WideContactEntry decodeWideContact(WideContactBytes bytes);

// Texts longer than their field are cut at its capacity; bytes that no field covers become zero.
void encodeMessage(const MessageEntry& entry, std::span<std::byte, messageEntrySize> bytes);
void encodeHandsetMessage(const MessageEntry& entry, std::span<std::byte, handsetEntrySize> bytes);
void encodeContact(const ContactEntry& entry, std::span<std::byte, contactEntrySize> bytes);
void encodeWideContact(const WideContactEntry& entry, std::span<std::byte, wideContactEntrySize> bytes);

}  // namespace phonelink
