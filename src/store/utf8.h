#pragma once

#include <string>
#include <string_view>

// The few questions the stores ask of UTF-8 text.
namespace store {

bool isAscii(std::string_view text);
// ASCII and nothing below a blank, so without line breaks and NULs.
bool isPlainText(std::string_view text);
bool isValidUtf8(std::string_view text);
// Every malformed byte becomes U+FFFD.
std::string repairedUtf8(std::string_view text);

}  // namespace store
