#include "skin/number_entry.h"

namespace skin {
namespace {

bool isTaken(UINT character) {
  constexpr UINT backspace = 8;
  return (character >= '0' && character <= '9') || character == ';' || character == '+' || character == '-' ||
         character == '.' || character == backspace;
}

bool isDown(int key) {
  return GetKeyState(key) < 0;
}

// Characters of the text that a paste would bring.
std::size_t clipboardLength(HWND window) {
  std::size_t length = 0;
  if (!OpenClipboard(window)) return length;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* text = static_cast<const wchar_t*>(GlobalLock(data))) length = wcslen(text);
    GlobalUnlock(data);
  }
  CloseClipboard();
  return length;
}

}  // namespace

const framework::MessageMap* CNumberEntry::messageMap() const {
  using namespace framework;
  static constexpr MessageEntry entries[] = {
      onKey<&CNumberEntry::onChar>(WM_CHAR),
      onKey<&CNumberEntry::onKeyDown>(WM_KEYDOWN),
      onPlain<&CNumberEntry::onPaste>(WM_PASTE),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

bool CNumberEntry::subclass(HWND dialog, UINT id) {
  const HWND edit = GetDlgItem(dialog, static_cast<int>(id));
  return edit && attach(edit);
}

LRESULT CNumberEntry::onChar(UINT character) {
  return isTaken(character) ? defaultProcessing() : static_cast<LRESULT>(character);
}

// An edit box knows its shortcuts by the control characters that follow the keys, and those are dropped like
// any other character. So the keys themselves are served here, and not passed on, lest anything be done
// twice.
LRESULT CNumberEntry::onKeyDown(UINT key) {
  // Together with Alt, Ctrl types characters on many keyboards.
  const bool shortcut = isDown(VK_CONTROL) && !isDown(VK_MENU) && !isDown(VK_SHIFT);
  switch (shortcut ? key : 0) {
    case 'A':
      return send(EM_SETSEL, 0, -1);
    case 'C':
      return send(WM_COPY);
    case 'V':
      return send(WM_PASTE);
    case 'X':
      return send(WM_CUT);
    case 'Z':
      return send(EM_UNDO);
    default:
      return defaultProcessing();
  }
}

// An edit box takes as much of a paste as it has room for. Half a number would reach somebody else.
LRESULT CNumberEntry::onPaste() {
  DWORD begin = 0;
  DWORD end = 0;
  send(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  const auto kept = static_cast<std::size_t>(GetWindowTextLengthW(handle())) - (end - begin);
  if (kept + clipboardLength(handle()) <= static_cast<std::size_t>(send(EM_GETLIMITTEXT)))
    return defaultProcessing();
  MessageBeep(MB_ICONWARNING);
  return 0;
}

}  // namespace skin
