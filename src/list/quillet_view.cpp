#include "list/quillet_view.h"

#include "framework/resources.h"
#include "list/columns.h"
#include "resources/resource_ids.h"
#include "store/folder_state.h"
#include "store/time_stamp.h"

namespace list {
namespace {

constexpr COLORREF ground = RGB(212, 222, 234);
constexpr COLORREF ink = RGB(11, 79, 149);

// Messages are deleted on the PC only: what the handset holds is left to the handset.
bool deletesInSelectedFolder() {
  const auto folder = store::selectedFolder(store::folderState());
  return folder && store::isOnPc(*folder);
}

}  // namespace

const framework::MessageMap* CQuilletView::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onSize<&CQuilletView::onSized>(),
      framework::onReflected<&CQuilletView::onColumnClick, NMLISTVIEW>(LVN_COLUMNCLICK),
      framework::onReflected<&CQuilletView::onBeginDrag, NMLISTVIEW>(LVN_BEGINDRAG),
      framework::onMouse<&CQuilletView::onMouseMove>(WM_MOUSEMOVE),
      framework::onMouse<&CQuilletView::onLButtonUp>(WM_LBUTTONUP),
      framework::onKey<&CQuilletView::onKeyDown>(WM_KEYDOWN),
      framework::onRaw<&CQuilletView::onCaptureChanged>(WM_CAPTURECHANGED),
      framework::onReflected<&CQuilletView::onClick>(static_cast<UINT>(NM_CLICK)),
      framework::onReflected<&CQuilletView::onOpen>(static_cast<UINT>(NM_DBLCLK)),
      framework::onReflected<&CQuilletView::onOpen>(static_cast<UINT>(NM_RETURN)),
  };
  static const framework::MessageMap map{entries, CListView::messageMap()};
  return &map;
}

const framework::CommandMap* CQuilletView::commandMap() const {
  static constexpr framework::CommandEntry entries[] = {
      framework::command<&CQuilletView::onSave, &CQuilletView::canSave>(ID_SAVE),
      framework::command<&CQuilletView::onDelete, &CQuilletView::canDelete>(ID_DELETE),
      framework::command<&CQuilletView::onDeleteAll, &CQuilletView::canDeleteAll>(ID_DELETE_ALL),
      framework::command<&CQuilletView::onSelectAll, &CQuilletView::canSelectAll>(ID_SELECT_ALL),
  };
  static const framework::CommandMap map{entries, CListView::commandMap()};
  return &map;
}

void CQuilletView::preCreateWindow(CREATESTRUCTW& c) {
  CListView::preCreateWindow(c);
  c.style |= LVS_REPORT | LVS_SHOWSELALWAYS;
}

void CQuilletView::onInitialUpdate() {
  ListView_SetExtendedListViewStyle(handle(), LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  ListView_SetBkColor(handle(), ground);
  ListView_SetTextBkColor(handle(), ground);
  ListView_SetTextColor(handle(), ink);
  const auto [content, phone, time] = columnWidths(static_cast<int>(clientRect().right));
  insertColumn(contentColumn, framework::loadString(IDS_CONTENT), LVCFMT_LEFT, content, contentColumn);
  insertColumn(phoneColumn, framework::loadString(IDS_SENDER), LVCFMT_LEFT, phone, phoneColumn);
  insertColumn(timeColumn, framework::loadString(IDS_TIME), LVCFMT_RIGHT, time, timeColumn);
}

void CQuilletView::showRecords(std::span<const store::SmsRecord> records) {
  const int first = itemCount();
  const framework::CRedrawLock lock(*this);
  ListView_SetItemCountEx(handle(), first + static_cast<int>(records.size()), LVSICF_NOSCROLL);
  for (std::size_t slot = 0; slot < records.size(); ++slot) {
    const store::SmsRecord& record = records[slot];
    const int row = insertItem(first + static_cast<int>(slot), record.Content, static_cast<LPARAM>(slot));
    if (row < 0) break;
    setItemText(row, phoneColumn, record.Phone);
    setItemText(row, timeColumn, store::displayTime(record.Time));
  }
}

void CQuilletView::setPhoneHeading(std::string_view heading) {
  folderColumns_ = true;
  deleteColumn(phoneColumn);
  insertColumn(phoneColumn, heading, LVCFMT_LEFT, phoneWidth, -1);
}

void CQuilletView::setTimeColumnShown(bool shown) {
  setColumnWidth(timeColumn, shown ? timeWidth : 0);
}

bool CQuilletView::canDelete() const {
  return selectedCount() > 0 && deletesInSelectedFolder();
}

bool CQuilletView::canDeleteAll() const {
  return itemCount() > 0 && deletesInSelectedFolder();
}

LRESULT CQuilletView::onClick(NMHDR&) {
  return 0;
}

LRESULT CQuilletView::onOpen(NMHDR&) {
  const int row = nextSelected(-1);
  if (row >= 0 && open_) open_(static_cast<int>(itemData(row)));
  return 0;
}

void CQuilletView::layOutColumns(int paneWidth) {
  const auto widths = columnWidths(paneWidth);
  for (int column = 0; column < columnCount; ++column)
    setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
}

void CQuilletView::onSized(int width, int) {
  defaultProcessing();
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
