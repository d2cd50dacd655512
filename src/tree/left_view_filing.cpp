// Filing: what is dropped on a folder.
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/list_state.h"
#include "list/reports.h"
#include "resources/resource_ids.h"
#include "tree/left_view.h"

namespace tree {
namespace {

using list::DragState;
using list::listState;

// Where in its image the pointer holds a dragged folder.
constexpr int hotSpot = -15;

}  // namespace

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
  if (const HTREEITEM item = itemAt(screen)) listState().drag.dropItem = item;
  transfer();
}

void CLeftView::transfer() {
  const store::FolderState& state = store::folderState();
  const auto source = store::folderOfItem(state, listState().drag.dragItem);
  const auto target = store::folderOfItem(state, listState().drag.dropItem);
  if (!source || !target || !store::isOnPc(*target) || source == target) return;
  // The rows are those of the shown folder, whatever was dragged.
  if (source != list_.shownFolder()) return;
  const std::vector<std::size_t> slots = list_.selectedSlots();
  if (slots.empty()) return;

  const framework::CWaitCursor wait;
  const bool move = store::isOnPc(*source);
  const store::WriteResult result = folders_.move(*source, *target, slots);
  if (result.ok() && move) list_.removeRows(slots);
  showCount(*target);
  showCount(*source);
  if (!list::report(result, IDS_CANNOT_CHANGE)) return;
  showResult(
      framework::formatText(framework::loadString(move ? IDS_MOVED : IDS_COPIED),
                            {std::to_string(slots.size()), state.folderPaths[store::position(*target)]}));
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
