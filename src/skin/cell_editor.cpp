#include "skin/cell_editor.h"

#include <algorithm>
#include <utility>

namespace skin {

using framework::MessageMap;

const MessageMap* CCellEditor::messageMap() const {
  using namespace framework;
  static constexpr MessageEntry entries[] = {
      framework::onDialogCode<&CCellEditor::onDialogCode>(),
      onKey<&CCellEditor::onKeyDown>(WM_KEYDOWN),
      onKey<&CCellEditor::onChar>(WM_CHAR),
      onPlain<&CCellEditor::onKillFocus>(WM_KILLFOCUS),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

bool CCellEditor::create(HWND list, Finish finish) {
  finish_ = std::move(finish);
  return createChild(WC_EDITW, WS_BORDER | ES_AUTOHSCROLL, {}, list, 0);
}

void CCellEditor::open(const RECT& cell, int textIndent, std::string_view text) {
  send(WM_SETFONT, static_cast<WPARAM>(SendMessageW(GetParent(handle()), WM_GETFONT, 0, 0)));
  send(EM_SETLIMITTEXT, 0);
  setText(text);
  // The frame goes around the cell's height, so that letters that reach below the line are not cut.
  const int border = GetSystemMetrics(SM_CYBORDER);
  SetWindowPos(handle(), HWND_TOP, cell.left, cell.top - border, cell.right - cell.left,
               cell.bottom - cell.top + 2 * border, SWP_SHOWWINDOW);
  const auto margin = static_cast<WORD>(std::max(textIndent - border, 0));
  send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, 0));
  send(EM_SETSEL, 0, -1);
  SetFocus(handle());
}

void CCellEditor::close() {
  if (GetFocus() == handle()) SetFocus(GetParent(handle()));
  ShowWindow(handle(), SW_HIDE);
}

// Without this a dialog would take Enter and Escape for its own buttons.
LRESULT CCellEditor::onDialogCode(const MSG* message) {
  const bool wanted = message && message->message == WM_KEYDOWN &&
                      (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE);
  return defaultProcessing() | (wanted ? DLGC_WANTMESSAGE : 0);
}

LRESULT CCellEditor::onKeyDown(UINT key) {
  if (key != VK_RETURN && key != VK_ESCAPE) return defaultProcessing();
  finish_(key == VK_RETURN);
  return 0;
}

// The characters of the two keys follow them; a box of one line would only beep.
LRESULT CCellEditor::onChar(UINT character) {
  return character == VK_RETURN || character == VK_ESCAPE ? 0 : defaultProcessing();
}

LRESULT CCellEditor::onKillFocus() {
  const LRESULT result = defaultProcessing();
  finish_(true);
  return result;
}

}  // namespace skin
