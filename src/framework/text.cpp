#include "framework/text.h"

#include <windows.h>

namespace framework {

std::tm localTime() {
  // Not the C runtime's localtime: a TZ variable made for other programs would mislead it.
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::tm time{};
  time.tm_year = now.wYear - 1900;
  time.tm_mon = now.wMonth - 1;
  time.tm_mday = now.wDay;
  time.tm_hour = now.wHour;
  time.tm_min = now.wMinute;
  time.tm_sec = now.wSecond;
  return time;
}

std::string formatText(std::string_view pattern, std::initializer_list<std::string_view> values) {
  std::string text;
  auto value = values.begin();
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool field =
        pattern[i] == '%' && i + 1 < pattern.size() && (pattern[i + 1] == 's' || pattern[i + 1] == 'd');
    if (field && value != values.end()) {
      text += *value++;
      ++i;
    } else {
      text += pattern[i];
    }
  }
  return text;
}

}  // namespace framework
