// bare_window ROWS FOLDER: the least that shows the same window, which the program's start is measured
// against: a frame with a toolbar, a status bar, a tree of seven items with their images from that folder,
// and a list of the same styles with so many rows of long texts.
#include <windows.h>

#include <commctrl.h>

#include <objidl.h>

#include <gdiplus.h>

#include <cstdlib>
#include <string>

#include "resources/resource_ids.h"

namespace {

constexpr int toolBarHeight = 44;
constexpr int treeImageExtent = 55;
constexpr const wchar_t* treeImages[] = {L"mobile", L"minbox", L"moutbox", L"pc",
                                         L"pinbox", L"psent",  L"pdraft"};

HWND child(HWND frame, const wchar_t* className, DWORD style, const RECT& place) {
  return CreateWindowExW(0, className, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, place.left,
                         place.top, place.right - place.left, place.bottom - place.top, frame, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

void giveImages(HWND bar, UINT message, UINT bitmapId) {
  const HBITMAP bitmap = LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(bitmapId));
  const HIMAGELIST images = ImageList_Create(40, 34, ILC_COLOR24, 5, 0);
  ImageList_Add(images, bitmap, nullptr);
  DeleteObject(bitmap);
  SendMessageW(bar, message, 0, reinterpret_cast<LPARAM>(images));
}

void createBars(HWND frame) {
  const HWND bar = child(frame, TOOLBARCLASSNAMEW, TBSTYLE_FLAT | CCS_NODIVIDER | CCS_NORESIZE,
                         {0, 0, 960, toolBarHeight});
  SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(40, 34));
  TBBUTTON buttons[5] = {};
  for (int i = 0; i < 5; ++i) buttons[i] = {i, i + 1, TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, 0};
  SendMessageW(bar, TB_ADDBUTTONSW, 5, reinterpret_cast<LPARAM>(buttons));
  giveImages(bar, TB_SETIMAGELIST, IDB_TOOLBAR_NORMAL);
  giveImages(bar, TB_SETDISABLEDIMAGELIST, IDB_TOOLBAR_DISABLED);
  giveImages(bar, TB_SETHOTIMAGELIST, IDB_TOOLBAR_HOT);

  const HWND status = child(frame, STATUSCLASSNAMEW, 0, {});
  const int edges[] = {700, 760, 820, 880};
  SendMessageW(status, SB_SETPARTS, 4, reinterpret_cast<LPARAM>(edges));
  SendMessageW(status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(L"Ready"));
}

void fillTree(HWND tree, const std::wstring& folder) {
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token, &input, nullptr);
  const HIMAGELIST images = ImageList_Create(treeImageExtent, treeImageExtent, ILC_COLOR16, 7, 0);
  TreeView_SetImageList(tree, images, TVSIL_NORMAL);
  for (const wchar_t* name : treeImages) {
    HBITMAP bitmap = nullptr;
    Gdiplus::Bitmap((folder + L"/" + name + L".png").c_str())
        .GetHBITMAP(Gdiplus::Color(255, 255, 255), &bitmap);
    const int i = ImageList_Add(images, bitmap, nullptr);
    DeleteObject(bitmap);
    TVINSERTSTRUCTW item{};
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.item.iImage = item.item.iSelectedImage = i;
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

int wmain(int count, wchar_t** arguments) {
  if (count != 3) return 2;
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  const INITCOMMONCONTROLSEX controls{sizeof controls,
                                      ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  WNDCLASSW frameClass{};
  frameClass.lpfnWndProc = frameProc;
  frameClass.hInstance = instance;
  frameClass.lpszClassName = L"QuilletBare";
  RegisterClassW(&frameClass);
  const HWND frame = CreateWindowExW(0, L"QuilletBare", L"Bare", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 100,
                                     100, 960, 640, nullptr, nullptr, instance, nullptr);
  createBars(frame);
  fillTree(
      child(frame, WC_TREEVIEWW, WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES, {0, toolBarHeight, 200, 580}),
      arguments[2]);
  const HWND list =
      child(frame, WC_LISTVIEWW, WS_BORDER | LVS_REPORT | LVS_SHOWSELALWAYS, {206, toolBarHeight, 946, 580});
  ShowWindow(frame, SW_SHOWNORMAL);
  UpdateWindow(frame);
  fillList(list, _wtoi(arguments[1]));
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
