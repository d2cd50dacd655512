#include "framework/wnd.h"

#include <new>

#include "framework/framework_state.h"
#include "framework/input_lock.h"
#include "framework/text.h"

namespace framework {

// What escapes a handler is lack of memory, so this asks for none.
void reportOutOfMemory() {
  static bool shown = false;
  if (shown) return;
  shown = true;
  MessageBoxW(nullptr, L"There is not enough memory.", L"Quillet", MB_OK | MB_ICONERROR | MB_TASKMODAL);
  shown = false;
}

CWnd::~CWnd() {
  destroy();
}

CWnd* CWnd::fromHandle(HWND window) {
  const auto& objects = frameworkState().objects;
  const auto found = objects.find(window);
  return found == objects.end() ? nullptr : found->second;
}

bool CWnd::create(const CREATESTRUCTW& wanted) {
  CREATESTRUCTW c = wanted;
  c.hInstance = GetModuleHandleW(nullptr);
  preCreateWindow(c);
  const CreationScope scope(*this);
  const HWND made = CreateWindowExW(c.dwExStyle, c.lpszClass, c.lpszName, static_cast<DWORD>(c.style), c.x,
                                    c.y, c.cx, c.cy, c.hwndParent, c.hMenu, c.hInstance, c.lpCreateParams);
  // A window that could not be attached has missed its first messages and is of no use.
  if (made && !handle_) DestroyWindow(made);
  return made && handle_;
}

bool CWnd::createChild(const wchar_t* className, DWORD style, const RECT& place, HWND parent, UINT id) {
  CREATESTRUCTW c{};
  c.lpszClass = className;
  c.style = static_cast<LONG>(style | WS_CHILD);
  c.x = place.left, c.y = place.top, c.cx = place.right - place.left, c.cy = place.bottom - place.top;
  c.hwndParent = parent;
  c.hMenu = reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id));
  return create(c);
}

void CWnd::destroy() {
  if (!handle_) return;
  // The class's own handlers are gone by the time a destructor comes here; the window goes without them.
  DestroyWindow(handle_);
}

// By its window procedure and a table here, not by the system's subclassing: that looks up a property of the
// window several times for every message, and a list is filled with thousands of messages.
bool CWnd::attach(HWND window) {
  if (handle_ || fromHandle(window)) return false;
  try {
    frameworkState().objects.emplace(window, this);
  } catch (const std::bad_alloc&) {
    return false;  // the caller may be Windows
  }
  former_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWnd::attachedProc)));
  if (!former_) {
    frameworkState().objects.erase(window);
    return false;
  }
  handle_ = window;
  return true;
}

void CWnd::detach() {
  // Whoever came in between keeps the window.
  if (GetWindowLongPtrW(handle_, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&CWnd::attachedProc))
    SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former_));
  frameworkState().objects.erase(handle_);
  handle_ = nullptr;
}

std::string CWnd::text() const {
  return windowText(handle_);
}

void CWnd::setText(std::string_view text) {
  SetWindowTextW(handle_, toWide(text).c_str());
}

RECT CWnd::clientRect() const {
  RECT rect{};
  GetClientRect(handle_, &rect);
  return rect;
}

bool CWnd::preTranslateMessage(MSG&) {
  return false;
}

LRESULT CWnd::defaultProcessing() {
  return defaultProcessing(current_.wParam, current_.lParam);
}

LRESULT CWnd::defaultProcessing(WPARAM wParam, LPARAM lParam) {
  return CallWindowProcW(former_, handle_, current_.message, wParam, lParam);
}

const MessageEntry* CWnd::findHandler(UINT message, UINT code, UINT id) const {
  const auto serves = [=](const MessageEntry& entry) {
    return entry.message == message && (entry.code == anyCode || entry.code == code) &&
           (entry.id == 0 || entry.id == id);
  };
  for (const MessageMap* map = messageMap(); map; map = map->base)
    for (const MessageEntry& entry : map->entries)
      if (serves(entry)) return &entry;
  return nullptr;
}

bool CWnd::reflect(WPARAM wParam, LPARAM lParam, LRESULT& result) {
  const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
  CWnd* const child = fromHandle(header.hwndFrom);
  if (!child || child == this) return false;
  const MessageEntry* const entry = child->findHandler(reflectedNotify, header.code, 0);
  if (!entry) return false;
  result = entry->handle(*child, wParam, lParam);
  return true;
}

LRESULT CWnd::windowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  UINT code = 0;
  UINT id = 0;
  LRESULT result = 0;
  if (message == WM_NOTIFY) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    code = header.code;
    id = static_cast<UINT>(header.idFrom);
    if (reflect(wParam, lParam, result)) return result;
  } else if (message == WM_COMMAND) {
    code = HIWORD(wParam);
    id = LOWORD(wParam);
  }
  if (const MessageEntry* entry = findHandler(message, code, id)) return entry->handle(*this, wParam, lParam);
  return defaultProcessing();
}

LRESULT CALLBACK CWnd::attachedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  CWnd* const object = fromHandle(window);
  if (!object) return DefWindowProcW(window, message, wParam, lParam);
  if (CInputLock::holdsBack(message)) return 0;
  CWnd& self = *object;
  const Current outer = self.current_;
  self.current_ = {message, wParam, lParam};
  LRESULT result = 0;
  try {
    result = self.windowProc(message, wParam, lParam);
  } catch (...) {
    // Nothing may escape into Windows. A creation that failed halfway is called off, and a window that cannot
    // be painted is not asked again at once.
    result = message == WM_CREATE ? -1 : 0;
    if (message == WM_PAINT) ValidateRect(window, nullptr);
    reportOutOfMemory();
  }
  if (message == WM_NCDESTROY) self.detach();
  self.current_ = outer;
  return result;
}

CRedrawLock::CRedrawLock(const CWnd& window)
    : window_(window.handle()), shown_((GetWindowLongW(window_, GWL_STYLE) & WS_VISIBLE) != 0) {
  SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  if (shown_) DefWindowProcW(window_, WM_SETREDRAW, FALSE, 0);
}

// A control that may draw again sets its scroll bars, which makes its client area another size, which may
// need other scroll bars: until that is settled the window is taken for invisible.
CRedrawLock::~CRedrawLock() {
  SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
  if (shown_) DefWindowProcW(window_, WM_SETREDRAW, TRUE, 0);
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

std::wstring windowWideText(HWND window) {
  std::wstring wide(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  wide.resize(static_cast<std::size_t>(GetWindowTextW(window, wide.data(), static_cast<int>(wide.size()))));
  return wide;
}

std::string windowText(HWND window) {
  return toUtf8(windowWideText(window));
}

SIZE textSize(HWND window, const std::wstring& text, int width) {
  const HDC dc = GetDC(window);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
  const HGDIOBJ former = font ? SelectObject(dc, font) : nullptr;
  RECT drawn{0, 0, width, 0};
  DrawTextW(dc, text.c_str(), -1, &drawn,
            static_cast<UINT>(DT_CALCRECT | (width > 0 ? DT_WORDBREAK : DT_SINGLELINE)));
  if (former) SelectObject(dc, former);
  ReleaseDC(window, dc);
  return {drawn.right, drawn.bottom};
}

int scaledPixels(HWND window, int pixels) {
  const HDC dc = GetDC(window);
  const int scaled = MulDiv(pixels, GetDeviceCaps(dc, LOGPIXELSY), USER_DEFAULT_SCREEN_DPI);
  ReleaseDC(window, dc);
  return scaled;
}

CreationScope::CreationScope(CWnd& window)
    : hook_(SetWindowsHookExW(WH_CBT, hookProc, nullptr, GetCurrentThreadId())),
      former_(frameworkState().awaitingWindow) {
  frameworkState().awaitingWindow = &window;
}

CreationScope::~CreationScope() {
  if (hook_) UnhookWindowsHookEx(hook_);
  frameworkState().awaitingWindow = former_;
}

LRESULT CALLBACK CreationScope::hookProc(int code, WPARAM wParam, LPARAM lParam) {
  wchar_t className[8] = L"";
  if (code == HCBT_CREATEWND) GetClassNameW(reinterpret_cast<HWND>(wParam), className, 8);
  // The input method's own window may be created in between; it is never the awaited one.
  if (code == HCBT_CREATEWND && frameworkState().awaitingWindow && lstrcmpiW(className, L"IME") != 0) {
    CWnd* const window = frameworkState().awaitingWindow;
    frameworkState().awaitingWindow = nullptr;
    window->attach(reinterpret_cast<HWND>(wParam));
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

const wchar_t* registerWindowClass(const wchar_t* name, HCURSOR cursor, HBRUSH background, HICON icon) {
  WNDCLASSEXW c{};
  c.cbSize = sizeof c;
  c.lpfnWndProc = DefWindowProcW;
  c.hInstance = GetModuleHandleW(nullptr);
  c.hCursor = cursor;
  c.hbrBackground = background;
  c.hIcon = icon;
  c.lpszClassName = name;
  RegisterClassExW(&c);  // a second registration of the same name changes nothing
  return name;
}

}  // namespace framework
