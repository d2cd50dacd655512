#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// JSON made of ready texts: every value is a text that is already JSON.
namespace json {

inline std::string text(std::wstring_view wide) {
  std::string utf8;
  if (!wide.empty()) {
    const int units = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), size, nullptr, nullptr);
  }
  std::string quoted = "\"";
  for (const char c : utf8) {
    if (static_cast<unsigned char>(c) < 0x20) {
      constexpr char digits[] = "0123456789abcdef";
      quoted += {'\\', 'u', '0', '0', digits[c >> 4], digits[c & 15]};
      continue;
    }
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

inline std::string number(long long value) {
  return std::to_string(value);
}
inline std::string flag(bool value) {
  return value ? "true" : "false";
}

// Screen pixels as [left, top, width, height].
inline std::string rectangle(const RECT& r) {
  return "[" + number(r.left) + ", " + number(r.top) + ", " + number(r.right - r.left) + ", " +
         number(r.bottom - r.top) + "]";
}

using Fields = std::vector<std::pair<const char*, std::string>>;

inline std::string object(const Fields& fields) {
  std::string joined;
  for (const auto& [name, value] : fields) {
    joined += joined.empty() ? "\"" : ", \"";
    joined += std::string(name) + "\": " + value;
  }
  return "{" + joined + "}";
}

inline std::string list(const std::vector<std::string>& values) {
  std::string joined;
  for (const std::string& value : values) joined += (joined.empty() ? "" : ", ") + value;
  return "[" + joined + "]";
}

}  // namespace json
