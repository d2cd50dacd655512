#include "framework/splitter_wnd.h"

#include <algorithm>
#include <utility>

namespace framework {
namespace {

constexpr int barWidth = 6;
constexpr int keyStep = 8;

}  // namespace

const MessageMap* CSplitterWnd::messageMap() const {
  static constexpr MessageEntry entries[] = {
      onSize<&CSplitterWnd::onSized>(),
      onPlain<&CSplitterWnd::onPaint>(WM_PAINT),
      onPlain<&CSplitterWnd::onSetCursor>(WM_SETCURSOR),
      onMouse<&CSplitterWnd::onLButtonDown>(WM_LBUTTONDOWN),
      onMouse<&CSplitterWnd::onMouseMove>(WM_MOUSEMOVE),
      onMouse<&CSplitterWnd::onLButtonUp>(WM_LBUTTONUP),
      onKey<&CSplitterWnd::onKeyDown>(WM_KEYDOWN),
      onPlain<&CSplitterWnd::onKillFocus>(WM_KILLFOCUS),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

void CSplitterWnd::preCreateWindow(CREATESTRUCTW& c) {
  c.lpszClass = registerWindowClass(L"QuilletSplitter", LoadCursorW(nullptr, IDC_ARROW),
                                    reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
}

bool CSplitterWnd::createStatic(HWND parent, UINT id) {
  return createChild(nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, {}, parent, id);
}

bool CSplitterWnd::createPane(int column, std::unique_ptr<CView> view, SIZE size, CDocument& document) {
  if (!view->createView(handle(), static_cast<UINT>(column) + 1, {0, 0, size.cx, size.cy}, document))
    return false;
  panes_[static_cast<std::size_t>(column)].view = std::move(view);
  // Whatever order they are created in, Tab and the window list go from left to right.
  if (column == 0)
    SetWindowPos(pane(0)->handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  return true;
}

void CSplitterWnd::setColumnInfo(int column, int idealWidth, int minimumWidth) {
  Pane& changed = panes_[static_cast<std::size_t>(column)];
  changed.idealWidth = idealWidth;
  changed.minimumWidth = minimumWidth;
  recalcLayout();
}

int CSplitterWnd::columnWidth(int column) const {
  RECT rect{};
  GetWindowRect(pane(column)->handle(), &rect);
  return static_cast<int>(rect.right - rect.left);
}

int fitFirstColumn(int wanted, int total, int bar, int firstMinimum, int secondMinimum) {
  const int most = std::max(total - bar - secondMinimum, firstMinimum);
  return std::clamp(wanted, firstMinimum, most);
}

void CSplitterWnd::recalcLayout() {
  const RECT client = clientRect();
  if (!pane(0) || !pane(1) || IsRectEmpty(&client)) return;
  const int first = fitFirstColumn(panes_[0].idealWidth, static_cast<int>(client.right), barWidth,
                                   panes_[0].minimumWidth, panes_[1].minimumWidth);
  const int second = first + barWidth;
  HDWP moves = BeginDeferWindowPos(2);
  const auto place = [&](CView* view, int left, int width) {
    if (moves)
      moves = DeferWindowPos(moves, view->handle(), nullptr, left, 0, std::max(width, 0),
                             static_cast<int>(client.bottom), SWP_NOZORDER | SWP_NOACTIVATE);
  };
  place(pane(0), 0, first);
  place(pane(1), second, static_cast<int>(client.right) - second);
  if (moves) EndDeferWindowPos(moves);
  const RECT bar = barRect();
  InvalidateRect(handle(), &bar, TRUE);
}

RECT CSplitterWnd::barRect() const {
  const int left = pane(0) ? columnWidth(0) : 0;
  return {left, 0, left + barWidth, clientRect().bottom};
}

void CSplitterWnd::moveBar(int firstWidth) {
  // Kept within bounds here so that the bar answers at once when the mouse comes back from far outside.
  panes_[0].idealWidth = fitFirstColumn(firstWidth, static_cast<int>(clientRect().right), barWidth,
                                        panes_[0].minimumWidth, panes_[1].minimumWidth);
  recalcLayout();
}

void CSplitterWnd::onSized(int, int) {
  recalcLayout();
}

void CSplitterWnd::onPaint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle(), &paint);
  const RECT bar = barRect();
  FillRect(dc, &bar, GetSysColorBrush(keyboardMove_ ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
  EndPaint(handle(), &paint);
}

LRESULT CSplitterWnd::onSetCursor() {
  POINT point;
  GetCursorPos(&point);
  ScreenToClient(handle(), &point);
  const RECT bar = barRect();
  if (!PtInRect(&bar, point)) return defaultProcessing();
  SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
  return TRUE;
}

void CSplitterWnd::onLButtonDown(UINT, POINT point) {
  endMove();
  grabOffset_ = static_cast<int>(point.x - barRect().left);
  SetCapture(handle());
}

void CSplitterWnd::onMouseMove(UINT, POINT point) {
  if (GetCapture() == handle()) moveBar(static_cast<int>(point.x) - grabOffset_);
}

void CSplitterWnd::onLButtonUp(UINT, POINT) {
  if (GetCapture() == handle()) ReleaseCapture();
}

void CSplitterWnd::beginKeyboardMove() {
  if (keyboardMove_) return;
  keyboardMove_ = true;
  widthBefore_ = columnWidth(0);
  focusBefore_ = SetFocus(handle());
  InvalidateRect(handle(), nullptr, FALSE);
}

void CSplitterWnd::endMove() {
  if (!std::exchange(keyboardMove_, false)) return;
  InvalidateRect(handle(), nullptr, FALSE);
  if (GetFocus() == handle() && focusBefore_) SetFocus(focusBefore_);
}

void CSplitterWnd::onKeyDown(UINT key) {
  if (!keyboardMove_) return;
  if (key == VK_LEFT) moveBar(columnWidth(0) - keyStep);
  if (key == VK_RIGHT) moveBar(columnWidth(0) + keyStep);
  if (key == VK_ESCAPE) moveBar(widthBefore_);
  if (key == VK_ESCAPE || key == VK_RETURN) endMove();
}

void CSplitterWnd::onKillFocus() {
  endMove();
}

}  // namespace framework
