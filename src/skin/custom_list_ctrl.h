#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "framework/handles.h"
#include "framework/wnd.h"
#include "skin/cell_editor.h"
#include "skin/row_records.h"

namespace skin {

// A report list with colours for each cell, sorting by a click on a column's heading, editing in place and
// row states that stay with their rows. It is created with createChild, or stands in for an empty list view
// of a dialog; its parent must be a framework window. Rows and columns come and go through this class only,
// since each row's item data is its record here. Texts are UTF-8 of any length. Whatever changes the content
// first ends an edit in progress and keeps its text.
class CCustomListCtrl : public framework::CWnd {
 public:
  // Sent to the parent: after every sort, with the column and 1 for ascending; after an edit that changed
  // a text, with row and column.
  static constexpr UINT sortedMessage = 42769;
  static constexpr UINT cellChangedMessage = 42770;

  // Every row has `anyRow` and one of each of the three pairs.
  enum RowState : unsigned {
    anyRow = 1,
    selected = 2,
    notSelected = 4,
    checked = 8,
    notChecked = 16,
    focused = 32,
    notFocused = 64,
  };

  // Told when a mouse click, `message`, set or cleared a row's check mark.
  using CheckReport = std::function<void(int row, bool checked, UINT message)>;

  CCustomListCtrl() = default;
  ~CCustomListCtrl() override;

  // Takes over the dialog's list view of that id, which keeps its style; false when there is none or it
  // holds rows already.
  bool subclass(HWND dialog, UINT id);
  void addExtendedStyle(DWORD style) {
    SendMessageW(handle(), LVM_SETEXTENDEDLISTVIEWSTYLE, style, static_cast<LPARAM>(style));
  }
  // The control uses the images from now on and releases them with its window.
  void setSmallImages(framework::UniqueImageList images) { setImages(LVSIL_SMALL, std::move(images)); }
  void setStateImages(framework::UniqueImageList images) { setImages(LVSIL_STATE, std::move(images)); }

  // alignment: LVCFMT_…; width in pixels; subItem: -1 = that of the position. The column's number, -1 on
  // failure.
  int insertColumn(int position, std::string_view heading, int alignment, int width, int subItem = -1);
  bool deleteColumn(int position);
  int columnCount() const;

  // The new row's number, -1 on failure; a row beyond the end becomes the last.
  int insertItem(int row, std::string_view text, LPARAM data = 0);
  // Appends a row for each text, in order, that the first column does not hold yet, in any letter case.
  void appendMissing(std::span<const std::string> texts);
  bool setItemText(int row, int column, std::string_view text);
  std::string itemText(int row, int column) const;
  // The caller's own value.
  LPARAM itemData(int row) const;
  bool setItemData(int row, LPARAM data);
  int itemCount() const { return ListView_GetItemCount(handle()); }
  bool deleteItem(int row);
  // Deletes the rows that had all states of the mask (RowState, added up) when the call came; how many those
  // were. An edit in progress is given up.
  int deleteItems(unsigned mask);

  // The row's states, added up; 0 when there is no such row.
  unsigned stateOf(int row) const;
  void setChecked(int row, bool check) { ListView_SetCheckState(handle(), row, check); }
  void select(int row, bool select = true);
  // The next selected row after `row` (-1 = from the start); -1 when there is none.
  int nextSelected(int row) const { return ListView_GetNextItem(handle(), row, LVNI_SELECTED); }

  // An absent colour is the system's.
  void setTextColor(int row, int column, std::optional<COLORREF> color);
  void setBackgroundColor(int row, int column, std::optional<COLORREF> color);
  COLORREF textColor(int row, int column) const;
  COLORREF backgroundColor(int row, int column) const;

  // Sorts the rows by a column's texts; does nothing when there is no such column.
  void sort(int column, bool ascending);
  int sortColumn() const { return sortColumn_; }  // -1 before the first sort
  bool ascending() const { return ascending_; }
  // Rows with this text in the sort column stay in place and divide the others into segments.
  void setSeparator(std::optional<std::string> text) { separator_ = std::move(text); }

  // Whether a click on a cell of the row that is selected and focused edits it.
  void allowEditing(bool allow) { editingAllowed_ = allow; }
  bool editing() const { return editRow_ >= 0; }
  void endEdit(bool keep);
  void reportChecks(CheckReport report) { checkReport_ = std::move(report); }

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const framework::MessageMap* messageMap() const override;

 private:
  bool onCreate(const CREATESTRUCTW&);
  LRESULT onDestroy();
  LRESULT onHeaderClick(NMHEADERW& click);
  LRESULT onColumnChange(NMHDR&);
  LRESULT onSetFocus();
  LRESULT onScroll();
  LRESULT onCustomDraw(NMLVCUSTOMDRAW& draw);
  template <UINT Message>
  LRESULT onButton(UINT, POINT at) {
    return onButton(Message, at);
  }
  LRESULT onButton(UINT message, POINT at);

  bool createEditor();
  void startEdit(int row, int column);
  bool reportCheck(int row, bool before, bool after, UINT message);
  bool putText(int row, int column, std::string_view text);
  RowRecord* recordOf(int row) const;
  CellColors* colorsOf(int row, int column) const;
  void setImages(int kind, framework::UniqueImageList images);
  void tellParent(UINT message, int first, int second) const;

  RowRecords records_;
  CCellEditor editor_;
  std::optional<std::string> separator_;
  CheckReport checkReport_;
  framework::UniqueImageList smallImages_;
  framework::UniqueImageList stateImages_;
  int editRow_ = -1;
  int editColumn_ = -1;
  int sortColumn_ = -1;
  bool ascending_ = true;
  bool editingAllowed_ = false;
};

}  // namespace skin
