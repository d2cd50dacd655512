#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <string_view>

#include "framework/view.h"

namespace framework {

// A view that is a tree control. Texts are UTF-8.
class CTreeView : public CView {
 public:
  HTREEITEM insertItem(HTREEITEM parent, std::string_view text, int image);
  void setItemText(HTREEITEM item, std::string_view text);
  std::string itemText(HTREEITEM item) const;
  HTREEITEM nextItem(HTREEITEM item, UINT relation) const {
    return TreeView_GetNextItem(handle(), item, relation);
  }
  HTREEITEM selectedItem() const { return nextItem(nullptr, TVGN_CARET); }
  void selectItem(HTREEITEM item) { TreeView_SelectItem(handle(), item); }
  void expand(HTREEITEM item) { TreeView_Expand(handle(), item, TVE_EXPAND); }

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override { c.lpszClass = WC_TREEVIEWW; }
  const MessageMap* messageMap() const override;

 private:
  LRESULT onSysKeyDown(WPARAM wParam, LPARAM lParam);
};

}  // namespace framework
