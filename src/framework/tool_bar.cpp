#include "framework/tool_bar.h"

#include <algorithm>
#include <array>
#include <utility>

#include "framework/resources.h"
#include "framework/text.h"

namespace framework {
namespace {

const wchar_t* const toolBarResource = MAKEINTRESOURCEW(241);
constexpr int gripperExtent = 10;
constexpr int margin = 2;
constexpr int dockReach = 60;  // how near to a side the gripper must come, in pixels

}  // namespace

const MessageMap* CToolBar::messageMap() const {
  static constexpr MessageEntry entries[] = {
      onSize<&CToolBar::onSized>(),
      onPlain<&CToolBar::onPaint>(WM_PAINT),
      onMouse<&CToolBar::onLButtonDown>(WM_LBUTTONDOWN),
      onMouse<&CToolBar::onMouseMove>(WM_MOUSEMOVE),
      onMouse<&CToolBar::onLButtonUp>(WM_LBUTTONUP),
      onPlain<&CToolBar::onSetCursor>(WM_SETCURSOR),
      onRaw<&CToolBar::onCommand>(WM_COMMAND),
      onNotify<&CToolBar::onToolTip, NMTTDISPINFOW>(TTN_GETDISPINFOW),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

void CToolBar::preCreateWindow(CREATESTRUCTW& c) {
  c.lpszClass = registerWindowClass(L"QuilletToolBar", LoadCursorW(nullptr, IDC_ARROW),
                                    reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
}

bool CToolBar::createBar(HWND frame, UINT id, DockRequest dockTo) {
  dockTo_ = std::move(dockTo);
  if (!createChild(nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, {}, frame, id))
    return false;
  bar_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                         WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | TBSTYLE_TRANSPARENT |
                             CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
                         0, 0, 0, 0, handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!bar_) return false;
  SendMessageW(bar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  return true;
}

bool CToolBar::loadToolBar(UINT resourceId) {
  const HMODULE module = moduleWithResource(toolBarResource, resourceId);
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(resourceId), toolBarResource);
  if (!found || SizeofResource(module, found) < 4 * sizeof(WORD)) return false;
  const auto* words = static_cast<const WORD*>(LockResource(LoadResource(module, found)));
  const std::size_t count = words[3];
  if (SizeofResource(module, found) < (4 + count) * sizeof(WORD)) return false;

  SendMessageW(bar_, TB_SETBITMAPSIZE, 0, MAKELPARAM(words[1], words[2]));
  for (std::size_t i = 0; i < count; ++i) {
    TBBUTTON button{};
    button.iBitmap = static_cast<int>(i);
    button.idCommand = words[4 + i];
    button.fsStyle = BTNS_BUTTON;
    if (!SendMessageW(bar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button))) return false;
    commands_.push_back(words[4 + i]);
  }
  return true;
}

void CToolBar::setImageLists(UniqueImageList normal, UniqueImageList disabled, UniqueImageList hot) {
  const auto give = [this](UINT message, HIMAGELIST list) {
    SendMessageW(bar_, message, 0, reinterpret_cast<LPARAM>(list));
  };
  give(TB_SETIMAGELIST, normal.get());
  give(TB_SETDISABLEDIMAGELIST, disabled.get());
  give(TB_SETHOTIMAGELIST, hot.get());
  normal_ = std::move(normal), disabled_ = std::move(disabled), hot_ = std::move(hot);
}

void CToolBar::setExtendedStyle(DWORD style) {
  SendMessageW(bar_, TB_SETEXTENDEDSTYLE, 0, static_cast<LPARAM>(style));
}

void CToolBar::enable(UINT command, bool enabled) {
  if (isEnabled(command) != enabled) SendMessageW(bar_, TB_ENABLEBUTTON, command, MAKELPARAM(enabled, 0));
}

bool CToolBar::isEnabled(UINT command) const {
  return SendMessageW(bar_, TB_ISBUTTONENABLED, command, 0) != 0;
}

void CToolBar::setSide(DockSide side) {
  side_ = side;
  // A vertical bar is a horizontal one that breaks after every button.
  for (const UINT id : commands_) {
    const LRESULT state = SendMessageW(bar_, TB_GETSTATE, id, 0);
    const LRESULT wrapped = vertical() ? state | TBSTATE_WRAP : state & ~LRESULT{TBSTATE_WRAP};
    SendMessageW(bar_, TB_SETSTATE, id, MAKELPARAM(wrapped, 0));
  }
  const LONG style = GetWindowLongW(bar_, GWL_STYLE) & ~LONG{CCS_VERT};
  SetWindowLongW(bar_, GWL_STYLE, vertical() ? style | CCS_VERT : style);
}

int CToolBar::breadth() const {
  const auto size = static_cast<DWORD>(SendMessageW(bar_, TB_GETBUTTONSIZE, 0, 0));
  return (vertical() ? LOWORD(size) : HIWORD(size)) + 2 * margin;
}

RECT CToolBar::gripper() const {
  RECT rect = clientRect();
  if (vertical())
    rect.bottom = gripperExtent;
  else
    rect.right = gripperExtent;
  return rect;
}

void CToolBar::onSized(int width, int height) {
  const int left = vertical() ? margin : gripperExtent;
  const int top = vertical() ? gripperExtent : margin;
  MoveWindow(bar_, left, top, std::max(0, width - left), std::max(0, height - top), TRUE);
  InvalidateRect(handle(), nullptr, TRUE);
}

void CToolBar::onPaint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle(), &paint);
  RECT line = gripper();
  InflateRect(&line, -3, -3);
  if (vertical())
    line.bottom = line.top + 3;
  else
    line.right = line.left + 3;
  DrawEdge(dc, &line, BDR_RAISEDINNER, BF_RECT);
  EndPaint(handle(), &paint);
}

void CToolBar::onLButtonDown(UINT, POINT point) {
  const RECT grip = gripper();
  if (PtInRect(&grip, point)) SetCapture(handle());
}

void CToolBar::onMouseMove(UINT, POINT point) {
  if (GetCapture() != handle()) return;
  RECT frame;
  GetClientRect(GetParent(handle()), &frame);
  MapWindowPoints(GetParent(handle()), nullptr, reinterpret_cast<POINT*>(&frame), 2);
  ClientToScreen(handle(), &point);
  const DockSide wanted = dockSideAt(frame, point, side_);
  if (wanted != side_ && dockTo_) dockTo_(wanted);
}

void CToolBar::onLButtonUp(UINT, POINT) {
  if (GetCapture() == handle()) ReleaseCapture();
}

LRESULT CToolBar::onSetCursor() {
  POINT point;
  GetCursorPos(&point);
  ScreenToClient(handle(), &point);
  const RECT grip = gripper();
  if (!PtInRect(&grip, point)) return defaultProcessing();
  SetCursor(LoadCursorW(nullptr, IDC_SIZEALL));
  return TRUE;
}

LRESULT CToolBar::onCommand(WPARAM wParam, LPARAM lParam) {
  return SendMessageW(GetParent(handle()), WM_COMMAND, wParam, lParam);
}

void CToolBar::onToolTip(NMTTDISPINFOW& info) {
  tip_ = toWide(tipOf(loadString(static_cast<UINT>(info.hdr.idFrom))));
  info.lpszText = tip_.data();
}

std::string CToolBar::tipOf(const std::string& commandText) {
  return commandText.substr(commandText.find('\n') + 1);
}

DockSide dockSideAt(const RECT& frame, POINT point, DockSide present) {
  struct Reach {
    LONG distance;
    DockSide side;
  };
  const std::array reaches{
      Reach{point.y - frame.top, DockSide::top}, Reach{frame.bottom - point.y, DockSide::bottom},
      Reach{point.x - frame.left, DockSide::left}, Reach{frame.right - point.x, DockSide::right}};
  const auto inReach = [&](DockSide side) {
    return std::any_of(reaches.begin(), reaches.end(),
                       [&](const Reach& reach) { return reach.side == side && reach.distance <= dockReach; });
  };
  // In a corner the bar stays at the side it has, so that it does not flicker between two.
  if (inReach(present)) return present;
  const auto nearest = std::min_element(
      reaches.begin(), reaches.end(), [](const Reach& a, const Reach& b) { return a.distance < b.distance; });
  return nearest->distance <= dockReach ? nearest->side : present;
}

}  // namespace framework
