#include "skin/button_ex.h"

#include <algorithm>

#include "framework/text.h"
#include "skin/image.h"
#include "skin/skin_state.h"

namespace skin {
namespace {

constexpr std::uint8_t boldStyle = 1;
constexpr std::uint8_t italicStyle = 2;
constexpr std::uint8_t underlinedStyle = 4;
constexpr int ringRoom = 4;       // pixels at each side that a long text leaves to the rings
constexpr int largestFont = 200;  // points; a layout file may say anything

std::uint32_t rgbOf(COLORREF colour) {
  return std::uint32_t{GetRValue(colour)} << 16 | std::uint32_t{GetGValue(colour)} << 8 | GetBValue(colour);
}

COLORREF colourOf(std::uint32_t rgb) {
  return RGB((rgb >> 16) & 255, (rgb >> 8) & 255, rgb & 255);
}

// The pixels as a bitmap that GDI can draw on; null when there is no memory for it.
framework::UniqueBitmap bitmapOf(const Pixels& pixels) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = pixels.width;
  info.bmiHeader.biHeight = -pixels.height;  // top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  framework::UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (bitmap) std::copy(pixels.values.begin(), pixels.values.end(), static_cast<std::uint32_t*>(bits));
  return bitmap;
}

int pixelsOfPoints(int points, HWND window) {
  const HDC dc = GetDC(window);
  const int height = MulDiv(std::min(points, largestFont), GetDeviceCaps(dc, LOGPIXELSY), 72);
  ReleaseDC(window, dc);
  return height;
}

}  // namespace

const framework::MessageMap* CButtonEx::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onReflected<&CButtonEx::onCustomDraw, NMCUSTOMDRAW>(NM_CUSTOMDRAW),
      framework::onPlain<&CButtonEx::onUiStateChange>(WM_UPDATEUISTATE),
  };
  static const framework::MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

bool CButtonEx::subclass(HWND dialog, UINT id) {
  const HWND button = GetDlgItem(dialog, static_cast<int>(id));
  return button && attach(button);
}

int CButtonEx::EnableWindow(int enable) {
  // Keys would go nowhere from a disabled control.
  if (!enable && GetFocus() == handle()) SendMessageW(GetParent(handle()), WM_NEXTDLGCTL, 0, FALSE);
  return ::EnableWindow(handle(), enable != 0);
}

void CButtonEx::SetTextFont(std::string face, int size, std::uint32_t colour, std::uint8_t style) {
  textColour_ = colour;
  if (!font_) firstFont_ = reinterpret_cast<HFONT>(send(WM_GETFONT));
  LOGFONTW font{};
  GetObjectW(firstFont_ ? firstFont_ : GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
  if (!face.empty()) lstrcpynW(font.lfFaceName, framework::toWide(face).c_str(), LF_FACESIZE);
  if (size > 0) font.lfHeight = -pixelsOfPoints(size, handle());
  if (style & boldStyle) font.lfWeight = FW_BOLD;
  if (style & italicStyle) font.lfItalic = TRUE;
  if (style & underlinedStyle) font.lfUnderline = TRUE;
  framework::UniqueFont made(CreateFontIndirectW(&font));
  if (!made) return;
  send(WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), TRUE);
  font_ = std::move(made);
}

void CButtonEx::SetSkinImage(const std::string& path) {
  const GdiplusSession session;
  image_ = CImage(path).pixels();
  InvalidateRect(handle(), nullptr, TRUE);
}

LRESULT CButtonEx::onCustomDraw(NMCUSTOMDRAW& notification) {
  if (!SkinEnabled || image_.empty()) return CDRF_DODEFAULT;
  // The face covers every pixel, so it stands in for the erasing as well. Whoever skips that may not be
  // asked to paint any more.
  const bool drawn = notification.dwDrawStage == CDDS_PREERASE || notification.dwDrawStage == CDDS_PREPAINT;
  if (drawn) draw(notification.hdc, clientRect());
  return CDRF_SKIPDEFAULT;
}

LRESULT CButtonEx::onUiStateChange() {
  const LRESULT result = defaultProcessing();
  InvalidateRect(handle(), nullptr, FALSE);  // focus ring and underline come or go
  return result;
}

bool CButtonEx::isHidden(UINT uiState) const {
  return (send(WM_QUERYUISTATE) & static_cast<LRESULT>(uiState)) != 0;
}

ButtonState CButtonEx::state() const {
  const LRESULT pushed = send(BM_GETSTATE);
  ButtonState state;
  state.hot = (pushed & BST_HOT) != 0;
  state.pressed = (pushed & BST_PUSHED) != 0;
  state.focused = GetFocus() == handle() && !isHidden(UISF_HIDEFOCUS);
  state.isDefault = (GetWindowLongW(handle(), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
  state.disabled = !IsWindowEnabled(handle());
  return state;
}

void CButtonEx::draw(HDC target, const RECT& place) const {
  const SkinState& skin = skinState();
  const ButtonState now = state();
  const int width = static_cast<int>(place.right - place.left);
  const int height = static_cast<int>(place.bottom - place.top);
  const framework::UniqueBitmap face = bitmapOf(
      drawButtonFace(image_, width, height, now, {rgbOf(skin.dialogBackground), rgbOf(skin.dialogText)}));
  const framework::UniqueMemoryDc memory(CreateCompatibleDC(target));
  if (!face || !memory) return;
  const HGDIOBJ former = SelectObject(memory.get(), face.get());
  drawCaption(memory.get(), {0, 0, width, height}, now);
  BitBlt(target, place.left, place.top, width, height, memory.get(), 0, 0, SRCCOPY);
  SelectObject(memory.get(), former);
}

void CButtonEx::drawCaption(HDC target, RECT place, const ButtonState& state) const {
  const SkinState& skin = skinState();
  std::uint32_t ink = rgbOf(textColour_ ? textColour_ : skin.dialogText);
  if (state.disabled) ink = mixColours(ink, rgbOf(skin.dialogBackground), 144);
  UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS;
  if (isHidden(UISF_HIDEACCEL)) format |= DT_HIDEPREFIX;
  InflateRect(&place, -ringRoom, 0);
  if (state.pressed) OffsetRect(&place, 0, 1);
  const auto font = reinterpret_cast<HFONT>(send(WM_GETFONT));
  const HGDIOBJ former = SelectObject(target, font ? font : GetStockObject(DEFAULT_GUI_FONT));
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, colourOf(ink));
  DrawTextW(target, framework::toWide(text()).c_str(), -1, &place, format);
  SelectObject(target, former);
}

}  // namespace skin
