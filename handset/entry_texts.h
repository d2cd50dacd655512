#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "text/code_page.h"

// How UTF-8 texts become the contents of fixed fields. Characters stay whole: neither a surrogate pair nor a
// double-byte character is ever cut in two. A NUL, which would end a field early, is left out.
namespace handset {

// The text in the code page, in pieces of at most `capacity` bytes; "?" for what the page lacks. An empty
// text is one empty piece.
std::vector<std::string> narrowPieces(std::string_view text, std::size_t capacity,
                                      const text::CodePage& codePage);

// The same in UTF-16, in pieces of at most `capacity` code units.
std::vector<std::u16string> widePieces(std::string_view text, std::size_t capacity);

}  // namespace handset
