#include "dialog_visit.h"

#include <gtest/gtest.h>

namespace {

DialogVisit* activeVisit = nullptr;

HWND shownDialog() {
  for (HWND dialog = nullptr; (dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr));) {
    DWORD process = 0;
    GetWindowThreadProcessId(dialog, &process);
    // One that has opened another is disabled, even before the other is seen.
    if (process == GetCurrentProcessId() && IsWindowVisible(dialog) && IsWindowEnabled(dialog)) return dialog;
  }
  return nullptr;
}

}  // namespace

DialogVisit::DialogVisit(std::vector<Step> steps)
    : steps_(std::move(steps)), timer_(SetTimer(nullptr, 0, 20, onTimer)) {
  activeVisit = this;
}

DialogVisit::~DialogVisit() {
  KillTimer(nullptr, timer_);
  activeVisit = nullptr;
  EXPECT_EQ(next_, steps_.size()) << "steps taken in the dialog";
}

void CALLBACK DialogVisit::onTimer(HWND, UINT, UINT_PTR, DWORD) {
  const HWND dialog = activeVisit ? shownDialog() : nullptr;
  if (!dialog) return;
  if (activeVisit->next_ < activeVisit->steps_.size())
    activeVisit->steps_[activeVisit->next_++](dialog);
  else
    EndDialog(dialog, notEnded);
}

std::vector<COLORREF> pictureOf(HWND window) {
  UpdateWindow(window);
  RECT client{};
  GetClientRect(window, &client);
  std::vector<COLORREF> picture;
  const HDC dc = GetDC(window);
  for (int y = 0; y < client.bottom; ++y)
    for (int x = 0; x < client.right; ++x) picture.push_back(GetPixel(dc, x, y));
  ReleaseDC(window, dc);
  return picture;
}
