#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <string_view>

#include "framework/view.h"

namespace framework {

// The text of a cell of any list control, whatever its length.
std::string listItemText(HWND list, int row, int column);

// For a list that gets the keys: unless a row has the focus, the first one in sight gets it, so that it shows
// where the keys act.
void focusSomeRow(HWND list);

// A view that is a list control. Texts are UTF-8.
class CListView : public CView {
 public:
  void insertColumn(int column, std::string_view heading, int alignment, int width, int subItem);
  void deleteColumn(int column) { ListView_DeleteColumn(handle(), column); }
  void setColumnWidth(int column, int width) { ListView_SetColumnWidth(handle(), column, width); }
  void deleteItem(int row) { ListView_DeleteItem(handle(), row); }
  void deleteAllItems() { ListView_DeleteAllItems(handle()); }
  int itemCount() const { return ListView_GetItemCount(handle()); }
  int selectedCount() const { return static_cast<int>(ListView_GetSelectedCount(handle())); }
  // The next selected row after `row` (-1 = from the start); -1 when there is none.
  int nextSelected(int row) const { return ListView_GetNextItem(handle(), row, LVNI_SELECTED); }

 protected:
  const MessageMap* messageMap() const override;
  void preCreateWindow(CREATESTRUCTW& c) override { c.lpszClass = WC_LISTVIEWW; }

 private:
  LRESULT onSetFocus();
};

}  // namespace framework
