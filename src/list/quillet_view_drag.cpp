// Dragging rows out of the list. The list keeps the mouse for as long as a drag lasts, so that a release
// anywhere ends it, and leads the moves over the folder tree to the tree.
#include "list/list_state.h"
#include "list/quillet_view.h"

namespace list {
namespace {

// Where in its image the pointer holds the dragged row.
constexpr int hotSpot = 8;

}  // namespace

LRESULT CQuilletView::onBeginDrag(NMLISTVIEW& begin) {
  DragState& drag = listState().drag;
  store::FolderState& folders = store::folderState();
  if (!pane_ || drag.dragging) return 0;
  drag = {};
  drag.dragItem = folders.selectedItem;
  drag.draggedRow = begin.iItem;
  POINT origin{hotSpot, hotSpot};
  drag.image.reset(ListView_CreateDragImage(handle(), begin.iItem, &origin));
  if (drag.image) {
    ImageList_BeginDrag(drag.image.get(), 0, hotSpot, hotSpot);
    const POINT at = framework::toScreen(handle(), begin.ptAction);
    ImageList_DragEnter(nullptr, at.x, at.y);
  }
  drag.dragging = true;
  drag.source = handle();
  SetCapture(handle());
  return 0;
}

void CQuilletView::onMouseMove(UINT, POINT point) {
  DragState& drag = listState().drag;
  if (!drag.dragging || drag.source != handle()) {
    defaultProcessing();
    return;
  }
  const POINT at = framework::toScreen(handle(), point);
  ImageList_DragMove(at.x, at.y);
  ImageList_DragShowNolock(FALSE);
  drag.target = WindowFromPoint(at);
  if (pane_->isAt(at))
    pane_->dragOver(at);
  else
    pane_->dragLeft();
  ImageList_DragShowNolock(TRUE);
}

void CQuilletView::onLButtonUp(UINT, POINT point) {
  DragState& drag = listState().drag;
  if (!drag.dragging || drag.source != handle()) {
    defaultProcessing();
    return;
  }
  const POINT at = framework::toScreen(handle(), point);
  drag.dropPoint = at;
  drag.target = WindowFromPoint(at);
  const bool overTarget = pane_->isAt(at);
  endDrag();  // first: the control gives the mouse back by itself
  defaultProcessing();
  if (overTarget) pane_->drop(at);
}

void CQuilletView::onKeyDown(UINT key) {
  if (key == VK_ESCAPE && listState().drag.dragging)
    endDrag();
  else
    defaultProcessing();
}

// Another window has taken the mouse: the drag is over, and nothing has changed.
void CQuilletView::onCaptureChanged(WPARAM, LPARAM taker) {
  if (reinterpret_cast<HWND>(taker) != handle()) endDrag();
  defaultProcessing();
}

void CQuilletView::endDrag() {
  DragState& drag = listState().drag;
  if (!drag.dragging || drag.source != handle()) return;
  drag.dragging = false;
  if (drag.image) {
    ImageList_DragLeave(nullptr);
    ImageList_EndDrag();
    drag.image.reset();
  }
  if (GetCapture() == handle()) ReleaseCapture();
  pane_->dragLeft();
}

}  // namespace list
