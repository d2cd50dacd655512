// Filing: what is dropped on a folder or moved there, and taken back.
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "framework/win_app.h"
#include "list/list_state.h"
#include "list/reports.h"
#include "resources/resource_ids.h"
#include "tree/left_view.h"

namespace tree {
namespace {

using framework::formatText;
using framework::loadString;
using list::DragState;
using list::listState;

// Where in its image the pointer holds a dragged folder.
constexpr int hotSpot = -15;

}  // namespace

const framework::CommandMap* CLeftView::commandMap() const {
  using enum store::Folder;
  static constexpr framework::CommandEntry entries[] = {
      framework::command<&CLeftView::moveTo<PInbox>, &CLeftView::canMoveTo<PInbox>>(ID_MOVE_TO_INBOX),
      framework::command<&CLeftView::moveTo<PSent>, &CLeftView::canMoveTo<PSent>>(ID_MOVE_TO_SENT),
      framework::command<&CLeftView::moveTo<PDraft>, &CLeftView::canMoveTo<PDraft>>(ID_MOVE_TO_DRAFT),
      framework::command<&CLeftView::onUndo, &CLeftView::canUndo>(ID_UNDO),
  };
  static const framework::CommandMap map{entries, CTreeView::commandMap()};
  return &map;
}

// The folder under the pointer becomes the selected one, so that the commands are about what is seen.
LRESULT CLeftView::onRightClick(NMHDR&) {
  const DWORD place = GetMessagePos();
  const POINT at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  if (const HTREEITEM item = itemAt(at)) selectItem(item);
  showMenu(at);
  return TRUE;  // the tree need not ask for a menu any more
}

// By the keyboard.
void CLeftView::onContextMenu() {
  RECT item{};
  TreeView_GetItemRect(handle(), selectedItem(), &item, TRUE);
  showMenu(framework::toScreen(handle(), {item.left, item.bottom}));
}

void CLeftView::showMenu(POINT at) {
  constexpr framework::MenuRow rows[] = {{ID_REFRESH, IDS_MENU_REFRESH},
                                         {ID_DELETE_ALL, IDS_MENU_DELETE_ALL},
                                         {ID_FIND, IDS_MENU_FIND},
                                         {ID_LAST_SEND, IDS_MENU_LAST_SEND}};
  framework::CWinApp::current()->mainFrame()->showMenu(rows, at);
}

HTREEITEM CLeftView::itemAt(POINT screen) const {
  TVHITTESTINFO hit{};
  hit.pt = screen;
  ScreenToClient(handle(), &hit.pt);
  return TreeView_HitTest(handle(), &hit);
}

void CLeftView::dragOver(POINT screen) {
  // Over empty space the item last hit stays the one to drop on.
  const HTREEITEM item = itemAt(screen);
  if (!item) return;
  highlight(item);
  listState().drag.dropItem = item;
}

void CLeftView::highlight(HTREEITEM item) {
  if (TreeView_GetDropHilight(handle()) == item) return;
  TreeView_SelectDropTarget(handle(), item);
  UpdateWindow(handle());  // now, while the drag image is hidden
}

void CLeftView::dragLeft() {
  highlight(nullptr);
  store::folderState().selectedItem = selectedItem();
}

void CLeftView::drop(POINT screen) {
  highlight(nullptr);
  DragState& drag = listState().drag;
  if (const HTREEITEM item = itemAt(screen)) drag.dropItem = item;
  const store::FolderState& state = store::folderState();
  const auto source = store::folderOfItem(state, drag.dragItem);
  const auto target = store::folderOfItem(state, drag.dropItem);
  // The rows are those of the shown folder, whatever was dragged.
  if (target && store::isOnPc(*target) && source && source == list_.shownFolder()) transfer(*target);
}

void CLeftView::transfer(store::Folder target) {
  const auto source = list_.shownFolder();
  const std::vector<std::size_t> slots = list_.selectedSlots();
  if (!source || source == target || slots.empty()) return;

  const framework::CWaitCursor wait;
  const bool move = store::isOnPc(*source);
  folders_.remember({*source, target});
  const store::WriteResult result = folders_.move(*source, target, slots);
  if (result.ok() && move) list_.removeRows(slots);
  showCount(target);
  showCount(*source);
  if (!list::report(result, IDS_CANNOT_CHANGE)) return;
  showResult(
      formatText(loadString(move ? IDS_MOVED : IDS_COPIED),
                 {std::to_string(slots.size()), store::folderState().folderPaths[store::position(target)]}));
}

void CLeftView::onUndo() {
  const framework::CWaitCursor wait;
  const std::vector<store::Folder> changed = folders_.undoFolders();
  const store::WriteResult result = folders_.undo();
  if (result.outcome == store::WriteResult::Outcome::changed) {
    showStatus(loadString(IDS_NOT_TAKEN_BACK));
    return;
  }
  // Nothing has changed then, and what has not been read has a count that nobody knows.
  if (!result.ok() && result.outcome != store::WriteResult::Outcome::inBoth) {
    list::report(result, IDS_CANNOT_CHANGE);
    return;
  }
  std::string paths;
  for (const store::Folder folder : changed) {
    showCount(folder);
    if (folder == store::selectedFolder(store::folderState())) list_.show(folder);
    paths += (paths.empty() ? "" : ", ") + store::folderState().folderPaths[store::position(folder)];
  }
  if (list::report(result, IDS_CANNOT_CHANGE)) showResult(formatText(loadString(IDS_TAKEN_BACK), {paths}));
}

LRESULT CLeftView::onBeginDrag(NMTREEVIEWW& begin) {
  DragState& drag = listState().drag;
  drag = {};
  drag.dragItem = begin.itemNew.hItem;
  drag.image.reset(TreeView_CreateDragImage(handle(), begin.itemNew.hItem));
  if (drag.image) {
    ImageList_BeginDrag(drag.image.get(), 0, hotSpot, hotSpot);
    const POINT at = framework::toScreen(handle(), begin.ptDrag);
    ImageList_DragEnter(nullptr, at.x, at.y);
  }
  drag.dragging = true;
  drag.source = handle();
  return 0;
}

void CLeftView::onMouseMove(UINT, POINT point) {
  if (listState().drag.dragging) {
    const POINT at = framework::toScreen(handle(), point);
    ImageList_DragMove(at.x, at.y);
    ImageList_DragShowNolock(FALSE);
    dragOver(at);
    ImageList_DragShowNolock(TRUE);
  }
  defaultProcessing();
}

void CLeftView::onLButtonUp(UINT, POINT point) {
  defaultProcessing();
  DragState& drag = listState().drag;
  if (!drag.dragging) return;
  drag.dragging = false;
  ImageList_DragLeave(handle());
  ImageList_EndDrag();
  drag.image.reset();
  drag.dropPoint = framework::toScreen(handle(), point);
  drag.target = WindowFromPoint(drag.dropPoint);
  drop(drag.dropPoint);
}

}  // namespace tree
