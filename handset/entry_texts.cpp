#include "handset/entry_texts.h"

#include "phonelink/entry_layouts.h"

namespace handset {
namespace {

// Takes one character, one or two code units, off the front of well-formed UTF-16.
std::u16string_view takeCharacter(std::u16string_view& units) {
  const bool pair = units.size() > 1 && units[0] >= 0xD800 && units[0] < 0xDC00;
  const std::u16string_view character = units.substr(0, pair ? 2 : 1);
  units.remove_prefix(character.size());
  return character;
}

template <typename Piece>
void append(std::vector<Piece>& pieces, const Piece& character, std::size_t capacity) {
  if (pieces.back().size() + character.size() > capacity) pieces.emplace_back();
  pieces.back() += character;
}

}  // namespace

bool holds(const CodePage& codePage, std::string_view text) {
  const std::u16string units = phonelink::utf16FromUtf8(text);
  for (std::u16string_view rest = units; !rest.empty();)
    if (codePage.encode(takeCharacter(rest)).empty()) return false;
  return true;
}

std::vector<std::string> narrowPieces(std::string_view text, std::size_t capacity, const CodePage& codePage) {
  const std::u16string units = phonelink::utf16FromUtf8(text);
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
  const std::u16string units = phonelink::utf16FromUtf8(text);
  std::vector<std::u16string> pieces(1);
  for (std::u16string_view rest = units; !rest.empty();) {
    const std::u16string_view character = takeCharacter(rest);
    if (character[0] != 0) append(pieces, std::u16string{character}, capacity);
  }
  return pieces;
}

}  // namespace handset
