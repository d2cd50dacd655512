#pragma once

#include <ctime>
#include <initializer_list>
#include <string>
#include <string_view>

// The one place where the program's UTF-8 meets Windows' UTF-16 and the system code page.
namespace framework {

// Malformed input becomes U+FFFD; never fails.
std::wstring toWide(std::string_view utf8);
std::string toUtf8(std::wstring_view wide);

// Bytes of the system code page. `toAnsi` is exact: false when the page cannot hold the text, and `bytes`
// is then empty.
std::wstring fromAnsi(std::string_view bytes);
bool toAnsi(std::wstring_view wide, std::string& bytes);

// The local time as the system's clock shows it.
std::tm localTime();

// Replaces "%s" and "%d" in `pattern`, in order, by `values`.
std::string formatText(std::string_view pattern, std::initializer_list<std::string_view> values);

}  // namespace framework
