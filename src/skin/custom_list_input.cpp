// What the user does with the list, and how it is drawn: the handlers of CCustomListCtrl.
#include <algorithm>

#include "framework/list_view.h"
#include "skin/custom_list_ctrl.h"

namespace skin {
namespace {

// From a cell's left edge to its text, as the list itself indents it.
constexpr int textIndentOfFirstColumn = 2;
constexpr int textIndent = 6;

bool isLeft(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
}

}  // namespace

const framework::MessageMap* CCustomListCtrl::messageMap() const {
  using namespace framework;
  using List = CCustomListCtrl;
  static constexpr MessageEntry entries[] = {
      framework::onCreate<&List::onCreate>(),
      onPlain<&List::onDestroy>(WM_DESTROY),
      onNotify<&List::onHeaderClick, NMHEADERW>(HDN_ITEMCLICKW),
      onNotify<&List::onColumnChange>(HDN_ITEMCHANGINGW),
      onPlain<&List::onSetFocus>(WM_SETFOCUS),
      onPlain<&List::onScroll>(WM_HSCROLL),
      onPlain<&List::onScroll>(WM_VSCROLL),
      onPlain<&List::onScroll>(WM_MOUSEWHEEL),
      onReflected<&List::onCustomDraw, NMLVCUSTOMDRAW>(NM_CUSTOMDRAW),
      onMouse<&List::onButton<WM_LBUTTONDOWN>>(WM_LBUTTONDOWN),
      onMouse<&List::onButton<WM_LBUTTONDBLCLK>>(WM_LBUTTONDBLCLK),
      onMouse<&List::onButton<WM_RBUTTONDOWN>>(WM_RBUTTONDOWN),
      onMouse<&List::onButton<WM_RBUTTONDBLCLK>>(WM_RBUTTONDBLCLK),
      onMouse<&List::onButton<WM_MBUTTONDOWN>>(WM_MBUTTONDOWN),
      onMouse<&List::onButton<WM_MBUTTONDBLCLK>>(WM_MBUTTONDBLCLK),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

void CCustomListCtrl::preCreateWindow(CREATESTRUCTW& c) {
  c.lpszClass = WC_LISTVIEWW;
  c.style &= ~static_cast<LONG>(LVS_SMALLICON | LVS_EDITLABELS | LVS_NOSCROLL);
  c.style |= static_cast<LONG>(WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | LVS_REPORT);
}

bool CCustomListCtrl::onCreate(const CREATESTRUCTW&) {
  if (defaultProcessing() != 0) return false;
  addExtendedStyle(LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
  return createEditor();
}

bool CCustomListCtrl::createEditor() {
  return editor_.create(handle(), [this](bool keep) { endEdit(keep); });
}

LRESULT CCustomListCtrl::onDestroy() {
  deleteItems(anyRow);
  editor_.destroy();
  if (smallImages_) setSmallImages(nullptr);
  if (stateImages_) setStateImages(nullptr);
  records_ = {};
  sortColumn_ = -1;
  ascending_ = true;
  return defaultProcessing();
}

void CCustomListCtrl::setImages(int kind, framework::UniqueImageList images) {
  // The list's former images are either the ones held here or, for check boxes, its own: they go either way.
  auto& held = kind == LVSIL_SMALL ? smallImages_ : stateImages_;
  static_cast<void>(held.release());
  held = std::move(images);
  const framework::UniqueImageList former(ListView_SetImageList(handle(), held.get(), kind));
}

LRESULT CCustomListCtrl::onHeaderClick(NMHEADERW& click) {
  constexpr int leftButton = 0;
  if (click.iButton == leftButton) sort(click.iItem, click.iItem != sortColumn_ || !ascending_);
  return defaultProcessing();
}

// In both of these the cell would move away below the edit box.
LRESULT CCustomListCtrl::onColumnChange(NMHDR&) {
  endEdit(true);
  return defaultProcessing();
}

LRESULT CCustomListCtrl::onScroll() {
  endEdit(true);
  return defaultProcessing();
}

LRESULT CCustomListCtrl::onSetFocus() {
  const LRESULT result = defaultProcessing();
  framework::focusSomeRow(handle());
  return result;
}

LRESULT CCustomListCtrl::onCustomDraw(NMLVCUSTOMDRAW& draw) {
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
      const int row = static_cast<int>(draw.nmcd.dwItemSpec);
      draw.clrText = textColor(row, draw.iSubItem);
      draw.clrTextBk = backgroundColor(row, draw.iSubItem);
      return CDRF_DODEFAULT;
    }
    default:
      return CDRF_DODEFAULT;
  }
}

CellColors* CCustomListCtrl::colorsOf(int row, int column) const {
  RowRecord* const record = recordOf(row);
  if (!record || column < 0 || column >= static_cast<int>(record->colors.size())) return nullptr;
  return &record->colors[static_cast<std::size_t>(column)];
}

void CCustomListCtrl::setTextColor(int row, int column, std::optional<COLORREF> color) {
  CellColors* const colors = colorsOf(row, column);
  if (!colors) return;
  colors->text = color;
  ListView_RedrawItems(handle(), row, row);
}

void CCustomListCtrl::setBackgroundColor(int row, int column, std::optional<COLORREF> color) {
  CellColors* const colors = colorsOf(row, column);
  if (!colors) return;
  colors->background = color;
  ListView_RedrawItems(handle(), row, row);
}

COLORREF CCustomListCtrl::textColor(int row, int column) const {
  const CellColors* const colors = colorsOf(row, column);
  return colors && colors->text ? *colors->text : GetSysColor(COLOR_WINDOWTEXT);
}

COLORREF CCustomListCtrl::backgroundColor(int row, int column) const {
  const CellColors* const colors = colorsOf(row, column);
  return colors && colors->background ? *colors->background : GetSysColor(COLOR_WINDOW);
}

LRESULT CCustomListCtrl::onButton(UINT message, POINT at) {
  const bool wasEditing = editing();
  endEdit(true);  // first, since the parent may answer with a sort
  LVHITTESTINFO hit{};
  hit.pt = at;
  ListView_SubItemHitTest(handle(), &hit);
  const RowRecord* const record = recordOf(hit.iItem);
  const unsigned before = stateOf(hit.iItem);
  const LRESULT result = defaultProcessing();
  // The parent has been told of the click, and may have taken the row or the whole list away.
  if (!record || !handle() || recordOf(hit.iItem) != record) return result;

  const bool isChecked = stateOf(hit.iItem) & checked;
  const bool reported = reportCheck(hit.iItem, before & checked, isChecked, message);
  const bool wasActive = (before & selected) && (before & focused);
  if (isLeft(message) && editingAllowed_ && !reported && !wasEditing && wasActive)
    startEdit(hit.iItem, hit.iSubItem);
  return result;
}

bool CCustomListCtrl::reportCheck(int row, bool before, bool after, UINT message) {
  if (before == after) return false;
  if (checkReport_) checkReport_(row, after, message);
  return true;
}

void CCustomListCtrl::startEdit(int row, int column) {
  ListView_EnsureVisible(handle(), row, FALSE);
  RECT cell{};
  if (!ListView_GetSubItemRect(handle(), row, column, LVIR_LABEL, &cell)) return;
  const RECT client = clientRect();
  cell.left = std::max(cell.left, client.left);
  cell.right = std::min(cell.right, client.right);
  editRow_ = row;
  editColumn_ = column;
  editor_.open(cell, column == 0 ? textIndentOfFirstColumn : textIndent, itemText(row, column));
}

void CCustomListCtrl::endEdit(bool keep) {
  if (!editing()) return;
  // Over before anything else happens: closing takes the focus from the box, and the parent may sort.
  const int row = std::exchange(editRow_, -1);
  const int column = std::exchange(editColumn_, -1);
  const std::string text = editor_.text();
  const bool changed = keep && text != itemText(row, column);
  editor_.close();
  if (changed && putText(row, column, text)) tellParent(cellChangedMessage, row, column);
}

}  // namespace skin
