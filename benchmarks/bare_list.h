#pragma once

#include <windows.h>

#include <commctrl.h>

#include <span>
#include <string>
#include <vector>

// A list with nothing around it but a frame: the least that shows, sorts and deletes rows.
class BareList {
 public:
  using Row = std::vector<std::wstring>;

  BareList() {
    const HINSTANCE self = GetModuleHandleW(nullptr);
    WNDCLASSW frameClass{};
    frameClass.lpfnWndProc = DefWindowProcW;
    frameClass.hInstance = self;
    frameClass.lpszClassName = L"BareList";
    RegisterClassW(&frameClass);
    frame_ = CreateWindowExW(0, L"BareList", nullptr, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 100,
                             100, 800, 600, nullptr, nullptr, self, nullptr);
    list_ = CreateWindowExW(0, WC_LISTVIEWW, nullptr,
                            WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | LVS_REPORT | LVS_SHOWSELALWAYS, 0, 0,
                            780, 540, frame_, nullptr, self, nullptr);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    for (int column = 0; column < 3; ++column) {
      LVCOLUMNW c{};
      c.mask = LVCF_WIDTH;
      c.cx = column == 0 ? 390 : 195;
      ListView_InsertColumn(list_, column, &c);
    }
  }
  ~BareList() { DestroyWindow(frame_); }
  BareList(const BareList&) = delete;
  BareList& operator=(const BareList&) = delete;

  void fill(std::span<Row> rows) {
    SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(list_);
    ListView_SetItemCount(list_, static_cast<int>(rows.size()));
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
      Row& texts = rows[static_cast<std::size_t>(row)];
      LVITEMW item{};
      item.mask = LVIF_TEXT | LVIF_PARAM;
      item.iItem = row;
      item.pszText = texts[0].data();
      item.lParam = reinterpret_cast<LPARAM>(&texts);
      ListView_InsertItem(list_, &item);
      ListView_SetItemText(list_, row, 1, texts[1].data());
      ListView_SetItemText(list_, row, 2, texts[2].data());
    }
    draw();
  }
  // By the first column.
  void sort() {
    SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    ListView_SortItems(
        list_,
        [](LPARAM a, LPARAM b, LPARAM) -> int {
          return lstrcmpiW((*reinterpret_cast<const Row*>(a))[0].c_str(),
                           (*reinterpret_cast<const Row*>(b))[0].c_str());
        },
        0);
    draw();
  }
  // Every second row until so many are gone.
  void remove(int count) {
    SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    for (int row = 2 * count - 2; row >= 0; row -= 2) ListView_DeleteItem(list_, row);
    draw();
  }

 private:
  void draw() {
    SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list_, nullptr, TRUE);
    UpdateWindow(list_);
  }

  HWND frame_;
  HWND list_;
};
