#include "list/quillet_view.h"

#include <numeric>

#include "framework/resources.h"
#include "framework/text.h"
#include "list/columns.h"
#include "resources/resource_ids.h"
#include "store/time_stamp.h"

namespace list {
namespace {

constexpr COLORREF ground = RGB(212, 222, 234);
constexpr COLORREF ink = RGB(11, 79, 149);
constexpr int spare = 8;  // pixels: what the control keeps free beside a text, and a space

}  // namespace

const framework::MessageMap* CQuilletView::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onSize<&CQuilletView::onSized>(),
      framework::onPlain<&CQuilletView::onPaint>(WM_PAINT),
      framework::onNotify<&CQuilletView::onTip, NMTTDISPINFOW>(TTN_GETDISPINFOW),
      framework::onReflected<&CQuilletView::onGetDispInfo, NMLVDISPINFOW>(LVN_GETDISPINFOW),
      framework::onReflected<&CQuilletView::onFindItem, NMLVFINDITEMW>(LVN_ODFINDITEMW),
      framework::onNotify<&CQuilletView::onHeadingChanged, NMHEADERW>(HDN_ITEMCHANGEDW),
      framework::onReflected<&CQuilletView::onColumnClick, NMLISTVIEW>(LVN_COLUMNCLICK),
      framework::onReflected<&CQuilletView::onBeginDrag, NMLISTVIEW>(LVN_BEGINDRAG),
      framework::onMouse<&CQuilletView::onMouseMove>(WM_MOUSEMOVE),
      framework::onMouse<&CQuilletView::onLButtonUp>(WM_LBUTTONUP),
      framework::onKey<&CQuilletView::onKeyDown>(WM_KEYDOWN),
      framework::onRaw<&CQuilletView::onCaptureChanged>(WM_CAPTURECHANGED),
      framework::onReflected<&CQuilletView::onOpen>(static_cast<UINT>(NM_DBLCLK)),
      framework::onReflected<&CQuilletView::onOpen>(static_cast<UINT>(NM_RETURN)),
      framework::onRaw<&CQuilletView::onContextMenu>(WM_CONTEXTMENU),
  };
  static const framework::MessageMap map{entries, CListView::messageMap()};
  return &map;
}

void CQuilletView::preCreateWindow(CREATESTRUCTW& c) {
  CListView::preCreateWindow(c);
  c.style |= LVS_REPORT | LVS_SHOWSELALWAYS | LVS_OWNERDATA;
}

void CQuilletView::onInitialUpdate() {
  setText(framework::loadString(IDS_MESSAGES));
  ListView_SetExtendedListViewStyle(handle(), LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  createTip();
  ListView_SetBkColor(handle(), ground);
  ListView_SetTextBkColor(handle(), ground);
  ListView_SetTextColor(handle(), ink);
  const auto [content, phone, time] = columnWidths(static_cast<int>(clientRect().right));
  insertColumn(contentColumn, framework::loadString(IDS_CONTENT), LVCFMT_LEFT, content, contentColumn);
  insertColumn(phoneColumn, framework::loadString(IDS_SENDER), LVCFMT_LEFT, phone, phoneColumn);
  insertColumn(timeColumn, framework::loadString(IDS_TIME), LVCFMT_RIGHT, time, timeColumn);
}

void CQuilletView::show(store::Folder folder) {
  const framework::CRedrawLock lock(*this);
  empty();
  order_.resize((*folders_)[folder].size());
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  shown_ = folder;
  ListView_SetItemCountEx(handle(), static_cast<int>(order_.size()), LVSICF_NOSCROLL);
}

void CQuilletView::empty() {
  endDrag();
  hideTip();
  order_.clear();
  shown_.reset();
  deleteAllItems();
}

void CQuilletView::removeRows(const std::vector<std::size_t>& slots) {
  const framework::CRedrawLock lock(*this);
  for (const std::size_t slot : slots) removeRow(slot);
}

// Takes no memory, so that no row can come to stand for another message.
void CQuilletView::removeRow(std::size_t slot) {
  order_.pop_back();
  deleteItem(static_cast<int>(slot));
}

std::string CQuilletView::slotText(std::size_t slot, int column) const {
  if (!shown_ || slot >= (*folders_)[*shown_].size()) return {};
  const store::SmsRecord& record = (*folders_)[*shown_][slot];
  if (column == contentColumn) return record.Content;
  return column == phoneColumn ? record.Phone : store::displayTime(record.Time);
}

std::string CQuilletView::cellText(int row, int column) const {
  const auto place = static_cast<std::size_t>(row);
  return row >= 0 && place < order_.size() ? slotText(order_[place], column) : std::string();
}

LRESULT CQuilletView::onGetDispInfo(NMLVDISPINFOW& asked) {
  LVITEMW& item = asked.item;
  if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return 0;
  item.pszText[0] = L'\0';  // for when there is no memory for the text
  std::wstring text = framework::toWide(cellText(item.iItem, item.iSubItem));
  if (painting_ && item.iSubItem == timeColumn) {
    // A column without width still paints at its edge, and a text at the right end can lose its last pixels.
    const int width = ListView_GetColumnWidth(handle(), timeColumn);
    if (width == 0)
      text.clear();
    else if (ListView_GetStringWidth(handle(), text.c_str()) + spare <= width)
      text += L' ';
  }
  item.pszText[text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1)] = L'\0';
  return 0;
}

void CQuilletView::onPaint() {
  painting_ = true;
  defaultProcessing();
  painting_ = false;
}

// Type-ahead: the next row, from the start again behind the last, whose content begins with what was typed.
LRESULT CQuilletView::onFindItem(NMLVFINDITEMW& sought) {
  if (!(sought.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || order_.empty()) return -1;
  const std::wstring_view wanted = sought.lvfi.psz;
  const int count = static_cast<int>(order_.size());
  const int start = sought.iStart >= 0 && sought.iStart < count ? sought.iStart : 0;
  for (int i = 0; i < count; ++i) {
    const int row = (start + i) % count;
    const std::wstring text = framework::toWide(cellText(row, contentColumn)).substr(0, wanted.size());
    if (CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, text.data(), static_cast<int>(text.size()),
                       wanted.data(), static_cast<int>(wanted.size())) == CSTR_EQUAL)
      return row;
  }
  return -1;
}

void CQuilletView::setPhoneHeading(std::string_view heading) {
  folderColumns_ = true;
  deleteColumn(phoneColumn);
  insertColumn(phoneColumn, heading, LVCFMT_LEFT, framework::scaledPixels(handle(), phoneWidth), -1);
}

void CQuilletView::setTimeColumnShown(bool shown) {
  setColumnWidth(timeColumn, shown ? framework::scaledPixels(handle(), timeWidth) : 0);
}

void CQuilletView::layOutColumns(int paneWidth) {
  const auto widths = columnWidths(paneWidth);
  for (int column = 0; column < columnCount; ++column)
    setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
}

// Some list controls move only part of what they show when a column or the pane gets another size, and draw
// the new texts over old ones.
void CQuilletView::onHeadingChanged(NMHEADERW&) {
  defaultProcessing();
  InvalidateRect(handle(), nullptr, TRUE);
}

void CQuilletView::onSized(int width, int) {
  defaultProcessing();
  InvalidateRect(handle(), nullptr, TRUE);
  RECT pane{};
  GetWindowRect(handle(), &pane);
  const int paneWidth = static_cast<int>(pane.right - pane.left);
  // A scroll bar that comes or goes makes the client area another size, too. That is no reason to undo the
  // widths that the folder's columns were given.
  if (folderColumns_ && paneWidth == paneWidth_) return;
  folderColumns_ = false;
  paneWidth_ = paneWidth;
  layOutColumns(width);
}

}  // namespace list
