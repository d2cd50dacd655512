// The context menu of the rows, and what it copies.
#include <algorithm>

#include "framework/clipboard.h"
#include "framework/win_app.h"
#include "list/columns.h"
#include "list/quillet_view.h"
#include "resources/resource_ids.h"
#include "text/unicode.h"

namespace list {
namespace {

using framework::MenuRow;

constexpr MenuRow folderMenu[] = {
    {ID_MOVE_TO_INBOX, IDS_PC_INBOX}, {ID_MOVE_TO_SENT, IDS_PC_SENT}, {ID_MOVE_TO_DRAFT, IDS_PC_DRAFT}};

}  // namespace

// By the right button, at the pointer, whose row is selected by then; by the keyboard, at the focused row.
void CQuilletView::onContextMenu(WPARAM, LPARAM at) {
  POINT point{GET_X_LPARAM(at), GET_Y_LPARAM(at)};
  if (at == -1) {
    const int focused = std::max(focusedRow(), 0);
    ListView_EnsureVisible(handle(), focused, FALSE);
    RECT row{};
    ListView_GetItemRect(handle(), focused, &row, LVIR_LABEL);
    point = framework::toScreen(handle(), {row.left, row.bottom});
  }
  const UINT filing = shownPcFolder() ? IDS_MENU_MOVE_TO : IDS_MENU_COPY_TO;
  const MenuRow rows[] = {{ID_OPEN_MESSAGE, IDS_MENU_OPEN},
                          {ID_REPLY, IDS_MENU_REPLY},
                          {ID_FORWARD, IDS_MENU_FORWARD},
                          {ID_EDIT_AS_NEW, IDS_MENU_EDIT_AS_NEW},
                          {},
                          {ID_COPY, IDS_MENU_COPY},
                          {0, filing, folderMenu},
                          {ID_SAVE, IDS_MENU_SAVE},
                          {ID_DELETE, IDS_MENU_DELETE},
                          {ID_REMOVE, IDS_MENU_REMOVE},
                          {},
                          {ID_SELECT_ALL, IDS_MENU_SELECT_ALL},
                          {ID_FIND, IDS_MENU_FIND},
                          {ID_UNDO, IDS_MENU_UNDO},
                          {ID_LAST_SEND, IDS_MENU_LAST_SEND}};
  framework::CWinApp::current()->mainFrame()->showMenu(rows, point);
}

// One message's text as it is; of several a line each, as a table takes them.
void CQuilletView::onCopy() {
  const std::vector<std::size_t> slots = selectedSlots();
  std::string text;
  for (auto slot = slots.rbegin(); slot != slots.rend() && slots.size() > 1; ++slot)
    for (int column = 0; column < columnCount; ++column) {
      std::string part = slotText(*slot, column);
      std::ranges::replace_if(
          part, [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
      text += part + (column + 1 < columnCount ? "\t" : "\r\n");
    }
  if (slots.size() == 1) text = slotText(slots[0], contentColumn);
  const std::u16string units = text::withWholeLineEnds(text::utf16FromUtf8(text));
  const bool copied = framework::copyToClipboard(handle(), std::wstring(units.begin(), units.end()));
  showResult(copied ? IDS_TEXT_COPIED : IDS_NOT_COPIED, {std::to_string(slots.size())});
}

}  // namespace list
