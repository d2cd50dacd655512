// Dragging rows out of the list. The list keeps the mouse for as long as a drag lasts, so that a release
// anywhere ends it, and leads the moves over the folder tree to the tree.
#include <algorithm>

#include "list/list_state.h"
#include "list/quillet_view.h"

namespace list {
namespace {

// Where in its image the pointer holds the dragged row.
constexpr int hotSpot = 8;
constexpr int imageWidth = 240;

// The image of a row is as wide as the pane, but holds little more than the message: its beginning is enough.
framework::UniqueImageList cropped(framework::UniqueImageList row, COLORREF ground) {
  int width = 0;
  int height = 0;
  if (!ImageList_GetIconSize(row.get(), &width, &height) || width <= imageWidth) return row;
  framework::UniqueImageList beginning(ImageList_Create(imageWidth, height, ILC_COLOR24, 1, 0));
  const HDC screen = GetDC(nullptr);
  const HDC dc = CreateCompatibleDC(screen);
  const framework::UniqueBitmap bitmap(CreateCompatibleBitmap(screen, imageWidth, height));
  const HGDIOBJ former = SelectObject(dc, bitmap.get());
  const RECT all{0, 0, imageWidth, height};
  SetBkColor(dc, ground);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
  ImageList_Draw(row.get(), 0, dc, 0, 0, ILD_NORMAL);
  SelectObject(dc, former);
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
  ImageList_Add(beginning.get(), bitmap.get(), nullptr);
  return beginning;
}

// The place for the image of a drag whose pointer is at `at`, on the screen: an image that passes the
// screen's edge leaves holes in the windows below.
POINT imagePlace(HIMAGELIST image, POINT at) {
  int width = 0;
  int height = 0;
  ImageList_GetIconSize(image, &width, &height);
  const auto within = [](LONG place, int start, int room) {
    return std::clamp<LONG>(place, start + hotSpot, start + hotSpot + std::max(room, 0));
  };
  return {within(at.x, GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_CXVIRTUALSCREEN) - width),
          within(at.y, GetSystemMetrics(SM_YVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN) - height)};
}

}  // namespace

LRESULT CQuilletView::onBeginDrag(NMLISTVIEW& begin) {
  DragState& drag = listState().drag;
  store::FolderState& folders = store::folderState();
  if (!pane_ || drag.dragging) return 0;
  drag = {};
  drag.dragItem = folders.selectedItem;
  drag.draggedRow = begin.iItem;
  POINT origin{hotSpot, hotSpot};
  framework::UniqueImageList row(ListView_CreateDragImage(handle(), begin.iItem, &origin));
  drag.image = cropped(std::move(row), ListView_GetBkColor(handle()));
  if (drag.image) {
    ImageList_BeginDrag(drag.image.get(), 0, hotSpot, hotSpot);
    const POINT at = imagePlace(drag.image.get(), framework::toScreen(handle(), begin.ptAction));
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
  const POINT place = imagePlace(drag.image.get(), at);
  ImageList_DragMove(place.x, place.y);
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
    RedrawWindow(GetAncestor(handle(), GA_ROOT), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
  }
  if (GetCapture() == handle()) ReleaseCapture();
  pane_->dragLeft();
}

}  // namespace list
