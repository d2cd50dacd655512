#include "text/system.h"

#include <windows.h>

#include "text/plain.h"

namespace text {
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

// In these two every character has its bytes, and the system takes no flags for them.
bool holdsEverything(UINT page) {
  constexpr UINT gb18030 = 54936;
  return page == CP_UTF8 || page == gb18030;
}

}  // namespace

std::wstring toWide(std::string_view utf8) {
  return widen(CP_UTF8, utf8);
}

std::string toUtf8(std::wstring_view wide) {
  return narrow(CP_UTF8, 0, wide, nullptr);
}

std::optional<std::string> SystemCodePage::encode(std::string_view utf8) const {
  if (isAscii(utf8)) return std::string(utf8);
  const std::wstring wide = toWide(utf8);
  const bool everything = holdsEverything(GetACP());
  BOOL lost = FALSE;
  // Without the flag a character that the page lacks may turn into another one that looks alike.
  std::string bytes =
      narrow(CP_ACP, everything ? 0 : WC_NO_BEST_FIT_CHARS, wide, everything ? nullptr : &lost);
  // Malformed UTF-8 has already lost something on the way to UTF-16.
  if (lost || toUtf8(wide) != utf8 || widen(CP_ACP, bytes) != wide) return std::nullopt;
  return bytes;
}

std::string SystemCodePage::decode(std::string_view bytes) const {
  return isAscii(bytes) ? std::string(bytes) : toUtf8(widen(CP_ACP, bytes));
}

bool SystemCodePage::isLeadByte(char byte) const {
  return IsDBCSLeadByte(static_cast<BYTE>(byte)) != 0;
}

}  // namespace text
