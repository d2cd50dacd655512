#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/code_page.h"
#include "text/unicode.h"

namespace support {

// A page that is made of what one character becomes.
class FakePage : public text::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override {
    if (!text::isValidUtf8(utf8)) return std::nullopt;
    std::string bytes;
    for (const char16_t unit : text::utf16FromUtf8(utf8)) {
      const std::string character = bytesOf(unit);
      if (character.empty()) return std::nullopt;
      bytes += character;
    }
    return bytes;
  }

 protected:
  virtual std::string bytesOf(char16_t unit) const = 0;  // empty for a character that the page lacks
};

// One byte for each of the first 256 characters.
class Latin1Page : public FakePage {
 public:
  std::string decode(std::string_view bytes) const override {
    std::u16string units;
    for (const char byte : bytes) units += static_cast<unsigned char>(byte);
    return text::utf8FromUtf16(units);
  }
  bool isLeadByte(char) const override { return false; }

 private:
  std::string bytesOf(char16_t unit) const override {
    return unit > 0xFF ? std::string() : std::string(1, static_cast<char>(unit));
  }
};

// ASCII, 0xA1 to 0xDF as U+FF61 and on, and two bytes for each of some Korean syllables. The first of the two
// is 0x81 to 0x9F; the second is 0x30 or above and so may look like '=' or '['. U+AC0D is "\x81=".
class DoubleBytePage : public FakePage {
 public:
  std::string decode(std::string_view bytes) const override {
    std::u16string units;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const unsigned byte = static_cast<unsigned char>(bytes[i]);
      const unsigned next = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
      if (byte < 0x80 || (byte >= 0xA1 && byte <= 0xDF)) {
        units += static_cast<char16_t>(byte < 0x80 ? byte : 0xFF61 + byte - 0xA1);
      } else if (isLeadByte(bytes[i]) && next >= 0x30) {
        units += static_cast<char16_t>(0xAC00 + (byte - 0x81) * 0xD0 + next - 0x30);
        ++i;
      } else {
        units += char16_t{0xFFFD};
      }
    }
    return text::utf8FromUtf16(units);
  }
  bool isLeadByte(char byte) const override {
    return static_cast<unsigned char>(byte) >= 0x81 && static_cast<unsigned char>(byte) <= 0x9F;
  }

 private:
  std::string bytesOf(char16_t unit) const override {
    const unsigned place = unit - 0xAC00U;
    if (unit < 0x80) return std::string(1, static_cast<char>(unit));
    if (unit >= 0xFF61 && unit <= 0xFF9F) return std::string(1, static_cast<char>(unit - 0xFF61 + 0xA1));
    if (unit < 0xAC00 || place >= 31 * 0xD0) return {};
    return {static_cast<char>(0x81 + place / 0xD0), static_cast<char>(0x30 + place % 0xD0)};
  }
};

}  // namespace support
