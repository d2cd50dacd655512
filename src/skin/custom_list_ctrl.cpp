#include "skin/custom_list_ctrl.h"

#include <unordered_set>
#include <vector>

#include "framework/list_view.h"
#include "framework/text.h"
#include "skin/segment_sort.h"
#include "skin/system_cell_rules.h"

namespace skin {
namespace {

using framework::toWide;

std::wstring lowered(std::string_view text) {
  std::wstring wide = toWide(text);
  CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return wide;
}

int CALLBACK compareRanks(LPARAM a, LPARAM b, LPARAM) {
  return reinterpret_cast<const RowRecord*>(a)->rank < reinterpret_cast<const RowRecord*>(b)->rank ? -1 : 1;
}

}  // namespace

CCustomListCtrl::~CCustomListCtrl() {
  destroy();  // while the handlers of this class still answer
}

bool CCustomListCtrl::subclass(HWND dialog, UINT id) {
  const HWND list = GetDlgItem(dialog, static_cast<int>(id));
  if (!list || ListView_GetItemCount(list) > 0 || !attach(list)) return false;
  records_.setColumnCount(static_cast<std::size_t>(columnCount()));
  return createEditor();
}

int CCustomListCtrl::insertColumn(int position, std::string_view heading, int alignment, int width,
                                  int subItem) {
  endEdit(true);
  std::wstring wide = toWide(heading);
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH | (subItem >= 0 ? LVCF_SUBITEM : 0U);
  column.pszText = wide.data();
  column.fmt = alignment;
  column.cx = width;
  column.iSubItem = subItem;
  const int inserted = ListView_InsertColumn(handle(), position, &column);
  if (inserted >= 0) records_.insertColumn(static_cast<std::size_t>(inserted));
  return inserted;
}

bool CCustomListCtrl::deleteColumn(int position) {
  endEdit(true);
  if (position < 0 || !ListView_DeleteColumn(handle(), position)) return false;
  records_.deleteColumn(static_cast<std::size_t>(position));
  return true;
}

int CCustomListCtrl::columnCount() const {
  return Header_GetItemCount(ListView_GetHeader(handle()));
}

int CCustomListCtrl::insertItem(int row, std::string_view text, LPARAM data) {
  endEdit(true);
  RowRecord& record = records_.add(data);
  std::wstring wide = toWide(text);
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.iItem = row;
  item.pszText = wide.data();
  item.lParam = reinterpret_cast<LPARAM>(&record);
  const int inserted = ListView_InsertItem(handle(), &item);
  if (inserted < 0) records_.remove(record);
  return inserted;
}

// The texts are gathered once: the list's own search would go through its rows for each of them.
void CCustomListCtrl::appendMissing(std::span<const std::string> texts) {
  const framework::CRedrawLock lock(*this);
  std::unordered_set<std::wstring> held;
  for (int row = 0; row < itemCount(); ++row) held.insert(lowered(itemText(row, 0)));
  for (const std::string& text : texts)
    if (held.insert(lowered(text)).second) insertItem(itemCount(), text);
}

bool CCustomListCtrl::setItemText(int row, int column, std::string_view text) {
  endEdit(true);
  return putText(row, column, text);
}

bool CCustomListCtrl::putText(int row, int column, std::string_view text) {
  std::wstring wide = toWide(text);
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = wide.data();
  return send(LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)) != 0;
}

std::string CCustomListCtrl::itemText(int row, int column) const {
  return framework::listItemText(handle(), row, column);
}

LPARAM CCustomListCtrl::itemData(int row) const {
  const RowRecord* const record = recordOf(row);
  return record ? record->value : 0;
}

bool CCustomListCtrl::setItemData(int row, LPARAM data) {
  RowRecord* const record = recordOf(row);
  if (record) record->value = data;
  return record != nullptr;
}

bool CCustomListCtrl::deleteItem(int row) {
  endEdit(true);
  RowRecord* const record = recordOf(row);
  if (!ListView_DeleteItem(handle(), row)) return false;
  if (record) records_.remove(*record);
  return true;
}

int CCustomListCtrl::deleteItems(unsigned mask) {
  endEdit(false);
  const int count = itemCount();
  if (mask == 0) return 0;
  const framework::CRedrawLock lock(*this);
  if (mask == anyRow) {
    ListView_DeleteAllItems(handle());
    records_.clear();
    return count;
  }
  // When the focused row goes, the list gives the focus to its neighbour, which is not to follow it.
  std::vector<bool> matches;
  for (int row = 0; row < count; ++row) matches.push_back((stateOf(row) & mask) == mask);
  int row = 0;
  for (const bool goes : matches) {
    if (!goes || !deleteItem(row)) ++row;
  }
  return count - row;
}

unsigned CCustomListCtrl::stateOf(int row) const {
  if (row < 0 || row >= itemCount()) return 0;
  const UINT state = ListView_GetItemState(handle(), row, LVIS_SELECTED | LVIS_FOCUSED | LVIS_STATEIMAGEMASK);
  const bool check = (state & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
  return anyRow | (state & LVIS_SELECTED ? selected : notSelected) | (check ? checked : notChecked) |
         (state & LVIS_FOCUSED ? focused : notFocused);
}

void CCustomListCtrl::select(int row, bool select) {
  ListView_SetItemState(handle(), row, select ? LVIS_SELECTED : 0U, LVIS_SELECTED);
}

void CCustomListCtrl::sort(int column, bool ascending) {
  endEdit(true);
  if (column < 0 || column >= columnCount()) return;
  sortColumn_ = column;
  ascending_ = ascending;
  std::vector<std::string> texts;
  for (int row = 0; row < itemCount(); ++row) texts.push_back(itemText(row, column));
  std::size_t rank = 0;
  for (const std::size_t row : sortedOrder(texts, separator_, ascending, systemCellRules()))
    recordOf(static_cast<int>(row))->rank = rank++;
  // The list moves whole rows: texts, item data, selection, check mark and focus stay together.
  ListView_SortItems(handle(), compareRanks, 0);
  tellParent(sortedMessage, column, ascending);
}

RowRecord* CCustomListCtrl::recordOf(int row) const {
  LVITEMW item{};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  return ListView_GetItem(handle(), &item) ? reinterpret_cast<RowRecord*>(item.lParam) : nullptr;
}

void CCustomListCtrl::tellParent(UINT message, int first, int second) const {
  SendMessageW(GetParent(handle()), message, static_cast<WPARAM>(first), second);
}

}  // namespace skin
