#include "framework/tree_view.h"

#include "framework/text.h"

namespace framework {

const MessageMap* CTreeView::messageMap() const {
  static constexpr MessageEntry entries[] = {
      onRaw<&CTreeView::onSysKeyDown>(WM_SYSKEYDOWN),
  };
  static const MessageMap map{entries, CView::messageMap()};
  return &map;
}

// Some tree controls keep Alt+F4 and the like for themselves.
LRESULT CTreeView::onSysKeyDown(WPARAM wParam, LPARAM lParam) {
  return DefWindowProcW(handle(), WM_SYSKEYDOWN, wParam, lParam);
}

HTREEITEM CTreeView::insertItem(HTREEITEM parent, std::string_view text, int image) {
  std::wstring wide = toWide(text);
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
  insert.item.pszText = wide.data();
  insert.item.iImage = image;
  insert.item.iSelectedImage = image;
  return TreeView_InsertItem(handle(), &insert);
}

void CTreeView::setItemText(HTREEITEM item, std::string_view text) {
  std::wstring wide = toWide(text);
  TVITEMW change{};
  change.mask = TVIF_TEXT;
  change.hItem = item;
  change.pszText = wide.data();
  TreeView_SetItem(handle(), &change);
}

std::string CTreeView::itemText(HTREEITEM item) const {
  wchar_t text[260] = L"";  // the control itself shows no more
  TVITEMW query{};
  query.mask = TVIF_TEXT;
  query.hItem = item;
  query.pszText = text;
  query.cchTextMax = static_cast<int>(std::size(text));
  return TreeView_GetItem(handle(), &query) ? toUtf8(text) : std::string();
}

}  // namespace framework
