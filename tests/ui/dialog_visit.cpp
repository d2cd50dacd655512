#include "dialog_visit.h"

#include <gtest/gtest.h>

#include "framework/text.h"
#include "framework/wnd.h"

namespace {

DialogVisit* activeVisit = nullptr;

}  // namespace

HWND shownDialog() {
  HWND shown = nullptr;
  for (HWND dialog = nullptr; (dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr));) {
    DWORD process = 0;
    GetWindowThreadProcessId(dialog, &process);
    // One that has opened another is disabled, even before the other is seen.
    if (process != GetCurrentProcessId() || !IsWindowVisible(dialog) || !IsWindowEnabled(dialog)) continue;
    EXPECT_EQ(shown, nullptr) << "two dialogs at once can be answered";
    shown = dialog;
  }
  return shown;
}

DialogVisit::DialogVisit(std::vector<Step> steps)
    : steps_(std::move(steps)),
      timer_(SetTimer(nullptr, 0, 20, onTimer)),
      hook_(SetWindowsHookExW(WH_CALLWNDPROC, onSent, nullptr, GetCurrentThreadId())) {
  activeVisit = this;
}

DialogVisit::~DialogVisit() {
  UnhookWindowsHookEx(hook_);
  KillTimer(nullptr, timer_);
  activeVisit = nullptr;
  EXPECT_EQ(next_, steps_.size()) << "steps taken in the dialog";
}

void DialogVisit::act() {
  const HWND dialog = shownDialog();
  if (!dialog) return;
  if (next_ < steps_.size())
    steps_[next_++](dialog);
  else
    hadToEndOne_ = EndDialog(dialog, notEnded) != 0;
}

// For a box without an owner, which tells nobody that it waits.
void CALLBACK DialogVisit::onTimer(HWND, UINT, UINT_PTR, DWORD) {
  if (activeVisit) activeVisit->act();
}

// A dialog tells its owner whenever it has nothing left to do.
LRESULT CALLBACK DialogVisit::onSent(int code, WPARAM wParam, LPARAM lParam) {
  const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && activeVisit && sent.message == WM_ENTERIDLE && sent.wParam == MSGF_DIALOGBOX) {
    activeVisit->act();
    PostMessageW(reinterpret_cast<HWND>(sent.lParam), WM_NULL, 0, 0);  // so that it looks up again
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

HWND item(HWND dialog, UINT id) {
  return GetDlgItem(dialog, static_cast<int>(id));
}

void enter(HWND dialog, UINT id, const std::string& text) {
  SendMessageW(item(dialog, id), EM_SETSEL, 0, -1);
  SendMessageW(item(dialog, id), EM_REPLACESEL, TRUE,
               reinterpret_cast<LPARAM>(framework::toWide(text).c_str()));
}

std::string wordsOf(HWND box) {
  std::string words;
  for (HWND part = nullptr; (part = FindWindowExW(box, part, L"Static", nullptr));)
    words += framework::windowText(part);
  return words;
}

DialogVisit::Step press(UINT id) {
  return [id](HWND dialog) { SendMessageW(item(dialog, id), BM_CLICK, 0, 0); };
}

DialogVisit::Step endWith(INT_PTR result) {
  return [result](HWND dialog) { EndDialog(dialog, result); };
}

DialogVisit::Step answer(const std::string& expected) {
  return [expected](HWND box) {
    const std::string words = wordsOf(box);
    EXPECT_NE(words.find(expected), std::string::npos) << "shown: " << words;
    EndDialog(box, IDOK);
  };
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
