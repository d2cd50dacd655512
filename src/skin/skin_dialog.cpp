#include "skin/skin_dialog.h"

#include <algorithm>
#include <string>
#include <vector>

#include "framework/resources.h"
#include "skin/image.h"
#include "skin/room_for_texts.h"
#include "skin/settings.h"
#include "skin/skin_state.h"

namespace skin {
namespace {

// What a dialog stands over, its owner or else the work area, and the work area of the monitor.
struct Surroundings {
  RECT owner;
  RECT work;
};

Surroundings surroundingsOf(HWND dialog) {
  const HWND owner = GetWindow(dialog, GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner ? owner : dialog, MONITOR_DEFAULTTONEAREST), &monitor);
  Surroundings around{monitor.rcWork, monitor.rcWork};
  if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around.owner);
  return around;
}

void moveTo(HWND window, const RECT& place) {
  MoveWindow(window, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
}

// Gives the dialog this size, over the middle of its owner and inside the work area.
void centre(HWND dialog, const RECT& size) {
  const auto [owner, work] = surroundingsOf(dialog);
  const auto centred = [](LONG from, LONG to, LONG length, LONG least, LONG most) {
    // The title stays within reach even when the dialog is larger than the screen.
    return std::max(std::min((from + to - length) / 2, most - length), least);
  };
  const LONG width = size.right - size.left;
  const LONG height = size.bottom - size.top;
  const LONG left = centred(owner.left, owner.right, width, work.left, work.right);
  const LONG top = centred(owner.top, owner.bottom, height, work.top, work.bottom);
  moveTo(dialog, {left, top, left + width, top + height});
}

bool contains(const RECT& outer, const RECT& inner) {
  RECT shared{};
  return IntersectRect(&shared, &outer, &inner) && EqualRect(&shared, &inner);
}

// A layout file cannot know where the owner stands: its place counts only where it lies inside the owner and
// the work area, its size always.
void moveDialog(HWND dialog, const RECT& place) {
  const auto [owner, work] = surroundingsOf(dialog);
  if (contains(owner, place) && contains(work, place))
    moveTo(dialog, place);
  else
    centre(dialog, place);
}

// A control, where it stands in its dialog, and its text.
struct Control {
  HWND window;
  RECT place{};
  std::wstring text{};
  DWORD style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));

  bool isOf(const wchar_t* className) const {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return lstrcmpiW(name, className) == 0;
  }
};

Control controlOf(HWND dialog, HWND window) {
  Control control{window};
  // A combo box is placed with its opened list; nothing else answers this message.
  if (!SendMessageW(window, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&control.place)))
    GetWindowRect(window, &control.place);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&control.place), 2);
  control.text = framework::windowWideText(window);
  return control;
}

// How wide or, when its width is settled, how high the control must be for its text.
SIZE neededBy(const Control& control) {
  constexpr int buttonRoom = 8;  // at each side of the text
  if (control.text.empty()) return {};
  const SIZE line = framework::textSize(control.window, control.text);
  if (control.isOf(L"Button")) return {line.cx + 2 * framework::scaledPixels(control.window, buttonRoom), 0};
  if (!control.isOf(L"Static") || (control.style & SS_TYPEMASK) > SS_RIGHT) return {};
  if (control.place.bottom - control.place.top < 2 * line.cy) return {line.cx, 0};
  const int width = static_cast<int>(control.place.right - control.place.left);
  return {0, framework::textSize(control.window, control.text, width).cy};
}

}  // namespace

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
  centre(handle(), own);
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
    for (LONG* const edge : {&place.left, &place.top, &place.right, &place.bottom})
      *edge = framework::scaledPixels(handle(), *edge);
    if (control == theDialog)
      moveDialog(handle(), place);
    else
      moveTo(item(control), place);
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
  makeRoomForTexts();
}

void CSkinDialog::makeRoomForTexts() {
  const RECT before = clientRect();
  std::vector<Control> controls{{handle(), before}};  // the dialog itself grows with its controls
  for (HWND child = GetWindow(handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    controls.push_back(controlOf(handle(), child));
  const auto grow = [&controls](LONG RECT::*from, LONG RECT::*to, LONG SIZE::*length) {
    std::vector<Place> places;
    for (const Control& control : controls)
      places.push_back({static_cast<int>(control.place.*from), static_cast<int>(control.place.*to),
                        static_cast<int>(neededBy(control).*length),
                        (control.style & SS_TYPEMASK) == SS_CENTER && control.isOf(L"Static")});
    makeRoom(places);
    for (std::size_t i = 0; i < places.size(); ++i) {
      controls[i].place.*from = places[i].from;
      controls[i].place.*to = places[i].to;
    }
  };
  grow(&RECT::left, &RECT::right, &SIZE::cx);
  grow(&RECT::top, &RECT::bottom, &SIZE::cy);
  const RECT after = controls[0].place;
  if (EqualRect(&before, &after)) return;
  for (std::size_t i = 1; i < controls.size(); ++i) moveTo(controls[i].window, controls[i].place);
  RECT own{};
  GetWindowRect(handle(), &own);
  own.right += after.right - before.right;
  own.bottom += after.bottom - before.bottom;
  centre(handle(), own);
}

HBRUSH CSkinDialog::onControlColour(HDC target, HWND) {
  const SkinState& state = skinState();
  SetTextColor(target, state.dialogText);
  SetBkColor(target, state.dialogBackground);
  SetDCBrushColor(target, state.dialogBackground);
  return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

}  // namespace skin
