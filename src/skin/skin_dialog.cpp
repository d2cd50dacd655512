#include "skin/skin_dialog.h"

#include <algorithm>

#include "framework/resources.h"
#include "skin/image.h"
#include "skin/settings.h"
#include "skin/skin_state.h"

namespace skin {

const framework::MessageMap* CSkinDialog::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onControlColour<&CSkinDialog::onControlColour>(WM_CTLCOLORDLG),
      framework::onControlColour<&CSkinDialog::onControlColour>(WM_CTLCOLORSTATIC),
      framework::onControlColour<&CSkinDialog::onControlColour>(WM_CTLCOLORBTN),
  };
  static const framework::MessageMap map{entries, CDialog::messageMap()};
  return &map;
}

bool CSkinDialog::onInitDialog() {
  RECT own{};
  GetWindowRect(handle(), &own);
  const HWND owner = GetWindow(handle(), GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner ? owner : handle(), MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  RECT around = work;
  if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around);

  const auto centred = [](LONG from, LONG to, LONG size, LONG least, LONG most) {
    // The title stays within reach even when the dialog is larger than the screen.
    return std::max(std::min((from + to - size) / 2, most - size), least);
  };
  const LONG left = centred(around.left, around.right, own.right - own.left, work.left, work.right);
  const LONG top = centred(around.top, around.bottom, own.bottom - own.top, work.top, work.bottom);
  SetWindowPos(handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return true;
}

void CSkinDialog::skinButtons(std::initializer_list<SkinnedButton> buttons) {
  const SkinState& state = skinState();
  std::string image;
  const bool skinned = zl_GetSettingString("Button", "image", skinFile(state.moduleDirectory), image);
  const GdiplusSession once;  // not started and ended anew for each image
  for (const auto& [button, id] : buttons) {
    if (!button.handle() && !button.subclass(handle(), id)) continue;
    if (!skinned) continue;
    button.SetSkinImage(skinFolder(state.moduleDirectory) + image);
    button.SkinEnabled = 1;
    button.SetTextFont(state.fontFace, state.fontSize, 0, 0);
  }
}

void CSkinDialog::placeControls(std::string_view section, std::span<const ControlPlace> places) {
  const std::string file = skinFile(skinState().moduleDirectory);
  for (const auto& [key, control] : places) {
    RECT place{};
    if (!zl_GetSettingRect(section, key, file, place)) continue;
    const HWND window = control == theDialog ? handle() : item(control);
    MoveWindow(window, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
  }
}

void CSkinDialog::setTexts(std::span<const ControlText> texts) {
  for (const auto& [control, text] : texts) {
    const std::string words = framework::loadString(text);
    if (control == theDialog)
      setText(words);
    else
      setItemText(control, words);
  }
}

HBRUSH CSkinDialog::onControlColour(HDC target, HWND) {
  const SkinState& state = skinState();
  SetTextColor(target, state.dialogText);
  SetBkColor(target, state.dialogBackground);
  SetDCBrushColor(target, state.dialogBackground);
  return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

}  // namespace skin
