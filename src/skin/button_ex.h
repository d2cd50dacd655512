#pragma once

#include <cstdint>
#include <string>

#include "framework/handles.h"
#include "framework/wnd.h"
#include "skin/button_face.h"

namespace skin {

// A push button drawn from an image of the skin. It stands in for a button of a dialog resource, which stays
// a real button in everything but its look. The member of a dialog; its parent must be a framework window.
class CButtonEx : public framework::CWnd {
 public:
  CButtonEx() = default;

  // Takes over the dialog's button of that id; false when there is none.
  bool subclass(HWND dialog, UINT id);

  // Nonzero enables. Nonzero when the button was disabled before. A button that loses the focus by this
  // hands it to the next control.
  int EnableWindow(int enable);
  // face: UTF-8, empty = the face the button has; size: points at the system's resolution, 0 = the size it
  // has; colour: COLORREF, 0 = the dialogs' text colour; style: 1 bold, 2 italic, 4 underlined, added up.
  void SetTextFont(std::string face, int size, std::uint32_t colour, std::uint8_t style);
  // The face, by full path in UTF-8. A missing or broken image leaves the button plain.
  virtual void SetSkinImage(const std::string& path);

  // 0 = the button looks like any other.
  int SkinEnabled = 0;

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  LRESULT onCustomDraw(NMCUSTOMDRAW& notification);
  LRESULT onUiStateChange();
  void draw(HDC target, const RECT& place) const;
  void drawCaption(HDC target, RECT place, const ButtonState& state) const;
  ButtonState state() const;
  bool isHidden(UINT uiState) const;

  Pixels image_;
  framework::UniqueFont font_;
  HFONT firstFont_ = nullptr;  // the dialog's, borrowed
  COLORREF textColour_ = 0;
};

}  // namespace skin
