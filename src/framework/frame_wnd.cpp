#include "framework/frame_wnd.h"

#include <algorithm>

#include "framework/resources.h"
#include "framework/text.h"
#include "framework/win_app.h"

namespace framework {

const MessageMap* CFrameWnd::messageMap() const {
  static constexpr MessageEntry entries[] = {
      onCreate<&CFrameWnd::onCreated>(),
      onSize<&CFrameWnd::onSized>(),
      onPlain<&CFrameWnd::onSetFocus>(WM_SETFOCUS),
      onPlain<&CFrameWnd::onCloseWindow>(WM_CLOSE),
      onPlain<&CFrameWnd::onDestroyed>(WM_DESTROY),
      onRaw<&CFrameWnd::onCommand>(WM_COMMAND),
      onRaw<&CFrameWnd::onSysCommand>(WM_SYSCOMMAND),
      onPlain<&CFrameWnd::onQueryEndSession>(WM_QUERYENDSESSION),
      onRaw<&CFrameWnd::onEndSession>(WM_ENDSESSION),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

void CFrameWnd::preCreateWindow(CREATESTRUCTW& c) {
  const HICON icon = LoadIconW(moduleWithResource(RT_GROUP_ICON, resourceId_), MAKEINTRESOURCEW(resourceId_));
  c.lpszClass = registerWindowClass(L"QuilletFrame", LoadCursorW(nullptr, IDC_ARROW),
                                    reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), icon);
}

bool CFrameWnd::loadFrame(UINT resourceId, const std::string& title, CDocument& document) {
  resourceId_ = resourceId;
  document_ = &document;
  accelerators_ =
      LoadAcceleratorsW(moduleWithResource(RT_ACCELERATOR, resourceId), MAKEINTRESOURCEW(resourceId));
  const std::wstring wideTitle = toWide(title);
  CREATESTRUCTW c{};
  c.style = static_cast<LONG>(WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN);
  c.lpszName = wideTitle.c_str();
  c.x = c.y = c.cx = c.cy = CW_USEDEFAULT;
  return create(c);
}

bool CFrameWnd::onCreated(const CREATESTRUCTW&) {
  defaultProcessing();
  return onCreateClient(*document_) && onCreateBars();
}

void CFrameWnd::initialUpdate() {
  for (CView* view : document_->views()) view->onInitialUpdate();
  if (!activeView_ && !document_->views().empty()) activeView_ = document_->views().front();
  recalcLayout();
}

CView* CFrameWnd::activeView() {
  auto* focused = dynamic_cast<CView*>(fromHandle(GetFocus()));
  if (focused && IsChild(handle(), focused->handle())) activeView_ = focused;
  return activeView_;
}

std::optional<CommandSite> CFrameWnd::findCommand(UINT id) {
  if (CView* active = activeView())
    if (auto site = active->findCommand(id)) return site;
  if (document_)
    for (CView* view : document_->views())
      if (auto site = view->findCommand(id)) return site;
  if (auto site = findOwnCommand(id)) return site;
  return CWinApp::current()->findCommand(id);
}

void CFrameWnd::updateOnIdle() {
  for (const UINT id : toolBar_.commands()) {
    const auto site = findCommand(id);
    toolBar_.enable(id, site && site->enabled());
  }
  statusBar_.updateIndicators();
}

void CFrameWnd::recalcLayout() {
  if (!clientWindow()) return;
  RECT room = clientRect();
  if (statusBar_.handle()) room.bottom = std::max(room.top, room.bottom - statusBar_.dock());
  if (toolBar_.handle()) {
    RECT bar = room;
    const int breadth = toolBar_.breadth();
    switch (toolBar_.side()) {
      case DockSide::top:
        bar.bottom = room.top = std::min(room.top + breadth, room.bottom);
        break;
      case DockSide::bottom:
        bar.top = room.bottom = std::max(room.bottom - breadth, room.top);
        break;
      case DockSide::left:
        bar.right = room.left = std::min(room.left + breadth, room.right);
        break;
      case DockSide::right:
        bar.left = room.right = std::max(room.right - breadth, room.left);
        break;
    }
    MoveWindow(toolBar_.handle(), bar.left, bar.top, bar.right - bar.left, bar.bottom - bar.top, TRUE);
  }
  MoveWindow(clientWindow(), room.left, room.top, room.right - room.left, room.bottom - room.top, TRUE);
}

UniqueMenu CFrameWnd::menuOf(std::span<const MenuRow> rows) {
  UniqueMenu menu(CreatePopupMenu());
  for (const MenuRow& row : rows) {
    const std::wstring text = toWide(loadString(row.text));
    const auto site = findCommand(row.command);
    const UINT state = site && site->enabled() ? MF_ENABLED : MF_GRAYED;
    if (!row.popup.empty())
      AppendMenuW(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(menuOf(row.popup).release()),
                  text.c_str());
    else if (row.command)
      AppendMenuW(menu.get(), MF_STRING | state, row.command, text.c_str());
    else
      AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
  }
  return menu;
}

void CFrameWnd::showMenu(std::span<const MenuRow> rows, POINT at) {
  TrackPopupMenu(menuOf(rows).get(), TPM_RIGHTBUTTON, at.x, at.y, 0, handle(), nullptr);
}

void CFrameWnd::dockToolBar(DockSide side) {
  toolBar_.setSide(side);
  recalcLayout();
}

void CFrameWnd::centerOnScreen() {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(handle(), MONITOR_DEFAULTTOPRIMARY), &monitor);
  RECT own{};
  GetWindowRect(handle(), &own);
  const RECT& work = monitor.rcWork;
  const int x = static_cast<int>((work.left + work.right - (own.right - own.left)) / 2);
  const int y = static_cast<int>((work.top + work.bottom - (own.bottom - own.top)) / 2);
  SetWindowPos(handle(), nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool CFrameWnd::preTranslateMessage(MSG& message) {
  if (accelerators_ && TranslateAcceleratorW(handle(), accelerators_, &message)) return true;
  const bool inView = dynamic_cast<CView*>(fromHandle(message.hwnd)) != nullptr;
  if (message.message == WM_KEYDOWN && (message.wParam == VK_F6 || (message.wParam == VK_TAB && inView))) {
    focusNextPane();
    return true;
  }
  return false;
}

void CFrameWnd::focusNextPane() {
  const auto& views = document_->views();
  const auto found = std::find(views.begin(), views.end(), activeView());
  if (views.empty()) return;
  send(WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS));  // keys want to see where they act
  const bool last = found == views.end() || found + 1 == views.end();
  SetFocus((last ? views.front() : *(found + 1))->handle());
}

void CFrameWnd::onSized(int, int) {
  recalcLayout();
}

void CFrameWnd::onSetFocus() {
  if (CView* view = activeView()) SetFocus(view->handle());
}

void CFrameWnd::onCloseWindow() {
  if (IsWindowEnabled(handle()))
    DestroyWindow(handle());
  else
    SetForegroundWindow(GetLastActivePopup(handle()));  // a dialog may hold what is nowhere else
}

LRESULT CFrameWnd::onQueryEndSession() {
  return IsWindowEnabled(handle());
}

void CFrameWnd::onDestroyed() {
  defaultProcessing();
  PostQuitMessage(0);
}

LRESULT CFrameWnd::onCommand(WPARAM wParam, LPARAM) {
  if (const auto site = findCommand(LOWORD(wParam))) {
    site->run();
    return 0;
  }
  return defaultProcessing();
}

void CFrameWnd::onEndSession(WPARAM ending, LPARAM) {
  if (ending) CWinApp::current()->endSession();
}

LRESULT CFrameWnd::onSysCommand(WPARAM wParam, LPARAM) {
  // Commands of the program that were added to the window's own menu; the system's begin at SC_SIZE.
  const auto site = wParam < SC_SIZE ? findCommand(static_cast<UINT>(wParam)) : std::nullopt;
  return site && site->run() ? 0 : defaultProcessing();
}

}  // namespace framework
