#include "skin/balloon_tip.h"

#include <commctrl.h>

#include "framework/text.h"

namespace skin {
namespace {

TTTOOLINFOW toolOf(HWND control) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_IDISHWND;
  tool.hwnd = GetParent(control);
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  return tool;
}

}  // namespace

void CBalloonTip::show(HWND control, const std::string& words) {
  hide();
  window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_ALWAYSTIP | TTS_BALLOON | TTS_NOPREFIX, 0, 0, 0, 0,
                            GetParent(control), nullptr, GetModuleHandleW(nullptr), nullptr);
  std::wstring wide = framework::toWide(words);
  TTTOOLINFOW tool = toolOf(control);
  tool.lpszText = wide.data();
  RECT place{};
  GetWindowRect(control, &place);
  const auto send = [this](UINT message, WPARAM wParam, LPARAM lParam) {
    SendMessageW(window_, message, wParam, lParam);
  };
  send(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(place.left + (place.bottom - place.top), place.bottom));
  send(TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void CBalloonTip::hide() {
  if (IsWindow(window_)) DestroyWindow(window_);
  window_ = nullptr;
}

}  // namespace skin
