#include "support/fake_code_pages.h"

namespace support {

namespace {

constexpr unsigned firstSyllable = 0xAC00;
constexpr unsigned firstLead = 0x81;
constexpr unsigned lastLead = 0x9F;
constexpr unsigned firstTrail = 0x30;
constexpr unsigned trailCount = 0x100 - firstTrail;
constexpr unsigned replacement = 0xFFFD;

unsigned byteAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

void appendByte(std::string& text, unsigned byte) {
  text += static_cast<char>(byte);
}

void appendUtf8(std::string& text, unsigned character) {
  if (character < 0x80) {
    appendByte(text, character);
  } else if (character < 0x800) {
    appendByte(text, 0xC0 | character >> 6);
    appendByte(text, 0x80 | (character & 0x3F));
  } else {
    appendByte(text, 0xE0 | character >> 12);
    appendByte(text, 0x80 | (character >> 6 & 0x3F));
    appendByte(text, 0x80 | (character & 0x3F));
  }
}

// The next character, or nothing when it is malformed or needs four bytes.
std::optional<unsigned> takeCharacter(std::string_view& text) {
  const unsigned lead = byteAt(text, 0);
  const std::size_t length = lead < 0x80                   ? 1
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                                                           : 0;
  if (length == 0 || text.size() < length) return std::nullopt;
  unsigned character = length == 1 ? lead : length == 2 ? lead & 0x1F : lead & 0x0F;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(text, i) & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (byteAt(text, i) & 0x3F);
  }
  text.remove_prefix(length);
  return character;
}

}  // namespace

std::optional<std::string> Latin1Page::encode(std::string_view utf8) const {
  std::string bytes;
  while (!utf8.empty()) {
    const auto character = takeCharacter(utf8);
    if (!character || *character > 0xFF) return std::nullopt;
    appendByte(bytes, *character);
  }
  return bytes;
}

std::string Latin1Page::decode(std::string_view bytes) const {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) appendUtf8(text, byteAt(bytes, i));
  return text;
}

std::optional<std::string> DoubleBytePage::encode(std::string_view utf8) const {
  std::string bytes;
  while (!utf8.empty()) {
    const auto character = takeCharacter(utf8);
    if (!character) return std::nullopt;
    if (*character < 0x80) {
      appendByte(bytes, *character);
      continue;
    }
    const unsigned place = *character - firstSyllable;
    if (*character < firstSyllable || place >= (lastLead - firstLead + 1) * trailCount) return std::nullopt;
    appendByte(bytes, firstLead + place / trailCount);
    appendByte(bytes, firstTrail + place % trailCount);
  }
  return bytes;
}

std::string DoubleBytePage::decode(std::string_view bytes) const {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const unsigned byte = byteAt(bytes, i);
    if (byte < 0x80) {
      appendByte(text, byte);
    } else if (byte >= firstLead && byte <= lastLead && i + 1 < bytes.size() &&
               byteAt(bytes, i + 1) >= firstTrail) {
      appendUtf8(text, firstSyllable + (byte - firstLead) * trailCount + byteAt(bytes, ++i) - firstTrail);
    } else {
      appendUtf8(text, replacement);
    }
  }
  return text;
}

}  // namespace support
