#include "skin/message_entry.h"

namespace skin {

const framework::MessageMap* CMessageEntry::messageMap() const {
  using namespace framework;
  static constexpr MessageEntry entries[] = {
      onKey<&CMessageEntry::onKeyDown>(WM_KEYDOWN),
      onPlain<&CMessageEntry::onPaste>(WM_PASTE),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

bool CMessageEntry::subclass(HWND dialog, UINT id) {
  const HWND edit = GetDlgItem(dialog, static_cast<int>(id));
  return edit && attach(edit);
}

void CMessageEntry::replaceText(const wchar_t* former, const wchar_t* text, DWORD caret) {
  const framework::CRedrawLock lock(*this);
  SetWindowTextW(handle(), former);
  send(EM_SETSEL, 0, -1);
  send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
  send(EM_SETSEL, caret, static_cast<LPARAM>(caret));
  send(EM_SCROLLCARET);
}

// Not every edit box pastes by a message when this key is pressed.
void CMessageEntry::onKeyDown(UINT key) {
  if (key == VK_INSERT && GetKeyState(VK_SHIFT) < 0)
    send(WM_PASTE);
  else
    defaultProcessing();
}

void CMessageEntry::onPaste() {
  const auto limit = static_cast<WPARAM>(send(EM_GETLIMITTEXT));
  send(EM_SETLIMITTEXT, 0);
  defaultProcessing();
  send(EM_SETLIMITTEXT, limit);
}

}  // namespace skin
