#include "framework/clipboard.h"

#include <memory>

namespace framework {
namespace {

struct CloseIt {
  void operator()(const int*) const { CloseClipboard(); }
};
// Whoever looks at what was copied last may have it open for a moment.
std::unique_ptr<const int, CloseIt> open(HWND owner) {
  static constexpr int opened = 1;
  constexpr DWORD pause = 20;  // milliseconds
  for (int attempt = 0; attempt < 5; ++attempt) {
    if (OpenClipboard(owner)) return std::unique_ptr<const int, CloseIt>(&opened);
    Sleep(pause);
  }
  return nullptr;
}

}  // namespace

std::wstring clipboardText(HWND owner) {
  std::wstring text;
  const auto clipboard = open(owner);
  const HANDLE data = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
  if (!data) return text;
  if (const auto* words = static_cast<const wchar_t*>(GlobalLock(data))) text = words;
  GlobalUnlock(data);
  return text;
}

bool copyToClipboard(HWND owner, std::wstring_view text) {
  const auto clipboard = open(owner);
  const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  auto* const words = clipboard && data ? static_cast<wchar_t*>(GlobalLock(data)) : nullptr;
  if (words) {
    words[text.copy(words, text.size())] = L'\0';
    GlobalUnlock(data);
    EmptyClipboard();
    if (SetClipboardData(CF_UNICODETEXT, data)) return true;  // which owns it now
  }
  GlobalFree(data);
  return false;
}

}  // namespace framework
