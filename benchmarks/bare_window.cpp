// The least that shows the same window: a frame with a tree of seven items and a list of the same styles with
// as many rows as the first argument says, of the same texts. What the program's start is measured against.
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>
#include <string>

namespace {

HWND child(HWND frame, const wchar_t* className, DWORD style, int x, int width) {
  return CreateWindowExW(0, className, nullptr, WS_CHILD | WS_VISIBLE | WS_BORDER | WS_CLIPSIBLINGS | style,
                         x, 0, width, 560, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
}

void fillTree(HWND tree) {
  for (int i = 0; i < 7; ++i) {
    TVINSERTSTRUCTW item{};
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT;
    item.item.pszText = const_cast<wchar_t*>(L"Folder(1000)");
    TreeView_InsertItem(tree, &item);
  }
}

void fillList(HWND list, int rows) {
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  for (int column = 0; column < 3; ++column) {
    LVCOLUMNW c{};
    c.mask = LVCF_TEXT | LVCF_WIDTH;
    c.cx = column == 0 ? 400 : 200;
    c.pszText = const_cast<wchar_t*>(L"Heading");
    ListView_InsertColumn(list, column, &c);
  }
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  ListView_SetItemCount(list, rows);
  std::wstring text(160, L'm');
  for (int row = 0; row < rows; ++row) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = text.data();
    ListView_InsertItem(list, &item);
    ListView_SetItemText(list, row, 1, const_cast<wchar_t*>(L"+31600000001"));
    ListView_SetItemText(list, row, 2, const_cast<wchar_t*>(L"2026-03-02 11:22:33"));
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

LRESULT CALLBACK frameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR arguments, int) {
  InitCommonControls();
  WNDCLASSW frameClass{};
  frameClass.lpfnWndProc = frameProc;
  frameClass.hInstance = instance;
  frameClass.lpszClassName = L"QuilletBare";
  RegisterClassW(&frameClass);
  const HWND frame = CreateWindowExW(0, L"QuilletBare", L"Bare", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 100,
                                     100, 960, 640, nullptr, nullptr, instance, nullptr);
  fillTree(child(frame, WC_TREEVIEWW, TVS_HASBUTTONS | TVS_HASLINES, 0, 200));
  const HWND list = child(frame, WC_LISTVIEWW, LVS_REPORT | LVS_SHOWSELALWAYS, 206, 740);
  ShowWindow(frame, SW_SHOWNORMAL);
  UpdateWindow(frame);
  fillList(list, _wtoi(arguments));
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
