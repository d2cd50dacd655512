#include "framework/text.h"

#include <windows.h>

namespace framework {
namespace {

std::wstring widen(UINT codePage, std::string_view bytes) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), length);
  return wide;
}

std::string narrow(UINT codePage, DWORD flags, std::wstring_view wide, BOOL* lost) {
  if (wide.empty()) return {};
  const int size = static_cast<int>(wide.size());
  const int length = WideCharToMultiByte(codePage, flags, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(codePage, flags, wide.data(), size, bytes.data(), length, nullptr, lost);
  return bytes;
}

}  // namespace

std::wstring toWide(std::string_view utf8) {
  return widen(CP_UTF8, utf8);
}

std::string toUtf8(std::wstring_view wide) {
  return narrow(CP_UTF8, 0, wide, nullptr);
}

std::wstring fromAnsi(std::string_view bytes) {
  return widen(CP_ACP, bytes);
}

bool toAnsi(std::wstring_view wide, std::string& bytes) {
  // A system whose code page is UTF-8 takes neither the flag nor the report of lost characters.
  const bool utf8 = GetACP() == CP_UTF8;
  BOOL lost = FALSE;
  bytes = narrow(CP_ACP, utf8 ? 0 : WC_NO_BEST_FIT_CHARS, wide, utf8 ? nullptr : &lost);
  if (!lost && fromAnsi(bytes) == wide) return true;
  bytes.clear();
  return false;
}

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
