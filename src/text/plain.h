#pragma once

#include <string_view>

// Questions about texts whose words are ASCII, as settings, stores and modems have them.
namespace text {

bool isAscii(std::string_view text);

// Without the white space at both ends.
std::string_view trimmed(std::string_view text, std::string_view whiteSpace = " \t\r\n\f\v");

// Only ASCII letters have two cases here.
char lowered(char c);
bool equalInAnyCase(std::string_view left, std::string_view right);

}  // namespace text
