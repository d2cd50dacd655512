#include "framework/list_view.h"

#include "framework/text.h"

namespace framework {

const MessageMap* CListView::messageMap() const {
  static constexpr MessageEntry entries[] = {
      onPlain<&CListView::onSetFocus>(WM_SETFOCUS),
  };
  static const MessageMap map{entries, CView::messageMap()};
  return &map;
}

LRESULT CListView::onSetFocus() {
  const LRESULT result = defaultProcessing();
  focusSomeRow(handle());
  return result;
}

void focusSomeRow(HWND list) {
  if (ListView_GetNextItem(list, -1, LVNI_FOCUSED) >= 0) return;
  ListView_SetItemState(list, ListView_GetTopIndex(list), LVIS_FOCUSED, LVIS_FOCUSED);
}

void CListView::insertColumn(int column, std::string_view heading, int alignment, int width, int subItem) {
  std::wstring wide = toWide(heading);
  LVCOLUMNW insert{};
  insert.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
  insert.pszText = wide.data();
  insert.fmt = alignment;
  insert.cx = width;
  if (subItem >= 0) {
    insert.mask |= LVCF_SUBITEM;
    insert.iSubItem = subItem;
  }
  ListView_InsertColumn(handle(), column, &insert);
}

std::string listItemText(HWND list, int row, int column) {
  std::wstring text(256, L'\0');
  for (;;) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const auto length = static_cast<std::size_t>(
        SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
    if (length + 1 < text.size()) return toUtf8({text.data(), length});
    text.resize(4 * text.size());  // the list says how much it copied, not how much there is
  }
}

}  // namespace framework
