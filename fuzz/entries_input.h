#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

// What must hold for entries of any bytes.
namespace fuzz {

// Exactly one entry, so that a byte read beside it is noticed.
template <std::size_t Size>
class EntryBytes {
 public:
  EntryBytes() : bytes_{std::make_unique<std::array<std::byte, Size>>()} {}

  // As much of the input as fits; the rest is filled with the input's last byte.
  explicit EntryBytes(std::string_view input) : EntryBytes{} {
    if (!input.empty()) bytes_->fill(static_cast<std::byte>(input.back()));
    const std::size_t count = std::min(input.size(), Size);
    std::ranges::copy(std::as_bytes(std::span{input.substr(0, count)}), bytes_->begin());
  }

  std::span<std::byte, Size> span() const { return *bytes_; }
  bool operator==(const EntryBytes& other) const { return *bytes_ == *other.bytes_; }

 private:
  std::unique_ptr<std::array<std::byte, Size>> bytes_;
};

// Decodes the input, and what is encoded of that: encoding keeps everything that fits. Returns the first.
template <std::size_t Size, class Decode, class Encode>
auto decodedTwice(std::string_view input, Decode decode, Encode encode) {
  const EntryBytes<Size> given{input};
  const auto entry = decode(given.span());
  const EntryBytes<Size> encoded;
  encode(entry, encoded.span());
  const EntryBytes<Size> again;
  encode(decode(encoded.span()), again.span());
  require(encoded == again);
  return entry;
}

inline void requireMessage(phonelink::MessageEntry entry) {
  // A text that fills its field is one longer than what fits, so that it can be told from a whole one.
  require(entry.phone.size() <= phonelink::phoneCapacity + 1 &&
          entry.time.size() <= phonelink::timeCapacity + 1);
  require(entry.phone.find('\0') == std::string::npos && entry.time.find('\0') == std::string::npos);
  const std::string narrow = entry.narrowText();
  const std::u16string wide = entry.wideText();
  require(narrow.find('\0') == narrow.npos && wide.find(u'\0') == wide.npos);
  require(entry.setNarrowText(narrow) && entry.narrowText() == narrow);
  require(entry.setWideText(wide) && entry.wideText() == wide);
  requireUtf8(text::utf8FromUtf16(wide));
}

// The input as which kind it is, then one entry, or a text.
inline void entries(std::string_view input) {
  using namespace phonelink;
  Source source{input};
  const unsigned kind = source.byte() % 5;
  const std::string_view bytes = source.rest();
  if (kind == 0) {
    requireMessage(decodedTwice<messageEntrySize>(bytes, decodeMessage, encodeMessage));
  } else if (kind == 1) {
    requireMessage(decodedTwice<handsetEntrySize>(bytes, decodeHandsetMessage, encodeHandsetMessage));
  } else if (kind == 2) {
    const ContactEntry contact = decodedTwice<contactEntrySize>(bytes, decodeContact, encodeContact);
    require(contact.number.size() <= contactNumberCapacity + 1 &&
            contact.name.size() <= contactNameCapacity + 1);
  } else if (kind == 3) {
    const auto contact = decodedTwice<wideContactEntrySize>(bytes, decodeWideContact, encodeWideContact);
    require(contact.name.size() <= wideContactNameCapacity + 1);
    require(contact.number.size() <= wideContactNumberCapacity + 1);
    requireUtf8(utf8FromUtf16(contact.name));
  } else {
    requireUtf8(utf8FromUtf16(utf16FromUtf8(bytes)));
  }
}

}  // namespace fuzz
