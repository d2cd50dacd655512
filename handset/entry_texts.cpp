#include "handset/entry_texts.h"

#include <algorithm>

#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset {
namespace {

// Takes one character, one or two code units, off the front of well-formed UTF-16.
std::u16string_view takeCharacter(std::u16string_view& units) {
  const bool pair = units.size() > 1 && units[0] >= 0xD800 && units[0] < 0xDC00;
  const std::u16string_view character = units.substr(0, pair ? 2 : 1);
  units.remove_prefix(character.size());
  return character;
}

// Nearly all there is: one byte for each character in every code page that a system can have.
bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c != 0 && c < 0x80; });
}

std::vector<std::string> plainPieces(std::string_view text, std::size_t capacity) {
  std::vector<std::string> pieces(1, std::string{text.substr(0, capacity)});
  for (std::size_t i = capacity; i < text.size(); i += capacity) pieces.emplace_back(text.substr(i, capacity));
  return pieces;
}

template <typename Piece>
void append(std::vector<Piece>& pieces, const Piece& character, std::size_t capacity) {
  if (pieces.back().size() + character.size() > capacity) pieces.emplace_back();
  pieces.back() += character;
}

}  // namespace

bool holds(const CodePage& codePage, std::string_view text) {
  if (isPlain(text)) return true;
  const std::u16string units = text::utf16FromUtf8(text);
  for (std::u16string_view rest = units; !rest.empty();)
    if (codePage.encode(takeCharacter(rest)).empty()) return false;
  return true;
}

std::vector<std::string> narrowPieces(std::string_view text, std::size_t capacity, const CodePage& codePage) {
  if (isPlain(text)) return plainPieces(text, capacity);
  const std::u16string units = text::utf16FromUtf8(text);
  std::vector<std::string> pieces(1);
  for (std::u16string_view rest = units; !rest.empty();) {
    const std::u16string_view character = takeCharacter(rest);
    if (character[0] == 0) continue;
    std::string bytes = codePage.encode(character);
    if (bytes.empty()) bytes.push_back('?');
    append(pieces, bytes, capacity);
  }
  return pieces;
}

std::vector<std::u16string> widePieces(std::string_view text, std::size_t capacity) {
  const std::u16string units = text::utf16FromUtf8(text);
  std::vector<std::u16string> pieces(1);
  for (std::u16string_view rest = units; !rest.empty();) {
    const std::u16string_view character = takeCharacter(rest);
    if (character[0] != 0) append(pieces, std::u16string{character}, capacity);
  }
  return pieces;
}

}  // namespace handset
