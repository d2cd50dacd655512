#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The few questions the stores ask of UTF-8 text.
namespace store {

bool isAscii(std::string_view text);
// ASCII and nothing below a blank, so without line breaks and NULs.
bool isPlainText(std::string_view text);
// Where the first character that is not plain text or is `mark`, itself plain, stands; else the text's
// length.
std::size_t plainLength(std::string_view text, char mark);
// Copies plain text to where there is room for it. Of other text any part may have been copied.
bool copyIfPlain(std::string_view text, char* to);
bool isValidUtf8(std::string_view text);
// Every malformed byte becomes U+FFFD.
std::string repairedUtf8(std::string_view text);

}  // namespace store
