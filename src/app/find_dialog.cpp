#include "app/find_dialog.h"

#include "framework/module.h"
#include "framework/text.h"

namespace app {

void FindDialog::open(HWND frame) {
  if (window_) {
    SetForegroundWindow(window_);
    return;
  }
  state_ = {};
  state_.lStructSize = sizeof state_;
  state_.hwndOwner = frame;
  state_.Flags = FR_HIDEWHOLEWORD | choices_;
  state_.lpstrFindWhat = text_.data();
  state_.wFindWhatLen = static_cast<WORD>(text_.size());
  const auto ask = framework::lateFunction<decltype(FindTextW)>("comdlg32.dll", "FindTextW");
  window_ = ask ? ask(&state_) : nullptr;
}

bool FindDialog::takes(UINT message, LPARAM lParam, std::optional<Question>& asked) {
  static const UINT findMessage = RegisterWindowMessageW(FINDMSGSTRINGW);
  if (message != findMessage || reinterpret_cast<const FINDREPLACEW*>(lParam) != &state_) return false;
  if (state_.Flags & FR_DIALOGTERM) window_ = nullptr;
  if (state_.Flags & FR_FINDNEXT) {
    choices_ = state_.Flags & (FR_DOWN | FR_MATCHCASE);
    asked = {SoughtText(framework::toUtf8(text_.data()), (state_.Flags & FR_MATCHCASE) != 0),
             !(state_.Flags & FR_DOWN)};
  }
  return true;
}

}  // namespace app
