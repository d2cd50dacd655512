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

}  // namespace

const framework::MessageMap* CNumberEntry::messageMap() const {
  using namespace framework;
  static constexpr MessageEntry entries[] = {
      onKey<&CNumberEntry::onChar>(WM_CHAR),
      onKey<&CNumberEntry::onKeyDown>(WM_KEYDOWN),
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

}  // namespace skin
