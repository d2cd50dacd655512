#include "control_host.h"

const framework::MessageMap* ControlHost::messageMap() const {
  using namespace framework;
  static constexpr MessageEntry entries[] = {
      onRaw<&ControlHost::onSorted>(skin::CCustomListCtrl::sortedMessage),
      onRaw<&ControlHost::onChanged>(skin::CCustomListCtrl::cellChangedMessage),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

ControlHost::ControlHost() {
  CREATESTRUCTW c{};
  c.lpszClass = framework::registerWindowClass(L"ControlHost", nullptr, GetSysColorBrush(COLOR_BTNFACE));
  c.style = static_cast<LONG>(WS_POPUP | WS_VISIBLE);
  c.cx = 500;
  c.cy = 300;
  create(c);
}

ControlHost::~ControlHost() {
  destroy();
}

HWND ControlHost::addControl(const wchar_t* className, DWORD style, UINT id) {
  return CreateWindowExW(0, className, L"", style | WS_CHILD | WS_VISIBLE, 0, 0, 400, 200, handle(),
                         reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
}

LRESULT ControlHost::onSorted(WPARAM column, LPARAM ascending) {
  sorted.emplace_back(static_cast<int>(column), static_cast<int>(ascending));
  return 0;
}

LRESULT ControlHost::onChanged(WPARAM row, LPARAM column) {
  changed.emplace_back(static_cast<int>(row), static_cast<int>(column));
  return 0;
}

void runMessages(HWND dialog) {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (dialog && IsDialogMessageW(dialog, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void pressKey(HWND window, UINT key, std::initializer_list<int> held, HWND dialog) {
  BYTE before[256];
  GetKeyboardState(before);
  BYTE keys[256] = {};
  for (const int down : held) keys[down] = 0x80;
  SetKeyboardState(keys);
  PostMessageW(window, WM_KEYDOWN, key, 1);
  runMessages(dialog);
  SetKeyboardState(before);
}

void typeText(HWND window, std::string_view text) {
  for (const char c : text) SendMessageW(window, WM_CHAR, static_cast<BYTE>(c), 1);
}

std::vector<std::string> columnOf(const skin::CCustomListCtrl& list, int column) {
  std::vector<std::string> texts;
  for (int row = 0; row < list.itemCount(); ++row) texts.push_back(list.itemText(row, column));
  return texts;
}

void clickCell(const skin::CCustomListCtrl& list, int row, int column, UINT down) {
  RECT cell{};
  ListView_GetSubItemRect(list.handle(), row, column, LVIR_LABEL, &cell);
  const LPARAM at = MAKELPARAM((cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2);
  const UINT up = down <= WM_LBUTTONDBLCLK   ? WM_LBUTTONUP
                  : down <= WM_RBUTTONDBLCLK ? WM_RBUTTONUP
                                             : WM_MBUTTONUP;
  // The list may wait within the press until the button is released.
  PostMessageW(list.handle(), up, 0, at);
  list.send(down, MK_LBUTTON, at);
  runMessages();
}
