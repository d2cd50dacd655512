#include "handset/entry_texts.h"

#include "text/unicode.h"

namespace handset {
namespace {

// encodedOf answers the bytes or units of one character.
template <typename Piece, typename EncodedOf>
std::vector<Piece> piecesOf(std::string_view text, std::size_t capacity, EncodedOf encodedOf) {
  const std::u16string units = text::utf16FromUtf8(text);
  std::vector<Piece> pieces(1);
  for (std::u16string_view rest = units; !rest.empty();) {
    const std::u16string_view character = text::firstCharacter(rest);
    rest.remove_prefix(character.size());
    if (character[0] == 0) continue;
    const Piece encoded = encodedOf(character);
    if (pieces.back().size() + encoded.size() > capacity) pieces.emplace_back();
    pieces.back() += encoded;
  }
  return pieces;
}

}  // namespace

std::vector<std::string> narrowPieces(std::string_view text, std::size_t capacity,
                                      const text::CodePage& codePage) {
  return piecesOf<std::string>(text, capacity, [&](std::u16string_view character) {
    return codePage.encode(text::utf8FromUtf16(character)).value_or("?");
  });
}

std::vector<std::u16string> widePieces(std::string_view text, std::size_t capacity) {
  return piecesOf<std::u16string>(text, capacity,
                                  [](std::u16string_view character) { return std::u16string{character}; });
}

}  // namespace handset
