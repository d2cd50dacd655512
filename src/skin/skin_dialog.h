#pragma once

#include <initializer_list>
#include <span>

#include "framework/dialog.h"
#include "skin/button_ex.h"

namespace skin {

// Stands for the dialog itself where a control's id is asked for.
inline constexpr UINT theDialog = 0;

// A rectangle key of the dialog's section in the layout file, and the control that it places.
struct ControlPlace {
  const char* key;
  UINT control;
};

// A control, or the title, and its text's number.
struct ControlText {
  UINT control;
  UINT text;
};

struct SkinnedButton {
  CButtonEx& button;
  UINT id;
};

// A dialog that takes its look from the skin. Derived dialogs call the base's onInitDialog first and then the
// three steps below, in this order. The layout file is read afresh by each of them.
class CSkinDialog : public framework::CDialog {
 public:
  using CDialog::CDialog;

 protected:
  // Centres the dialog on its owner, or on the screen when it has none, inside the screen's work area.
  bool onInitDialog() override;
  const framework::MessageMap* messageMap() const override;

  // Takes over the buttons that have not been taken over yet; gives all of them, in this order, the skin's
  // image and font. Without an image key they keep the default look and font.
  void skinButtons(std::initializer_list<SkinnedButton> buttons);
  // Buttons, labels and with them the dialog grow where a text is longer than its place.
  void setTexts(std::span<const ControlText> texts);
  // Moves what has a rectangle in the section (pixels of the client area, of the screen for the dialog, all
  // at 96 dpi); the rest stays where the resource and the texts put it. The dialog takes the size of its
  // rectangle, and the place where that lies inside its owner and the work area.
  void placeControls(std::string_view section, std::span<const ControlPlace> places);

 private:
  void makeRoomForTexts();
  HBRUSH onControlColour(HDC target, HWND control);
};

}  // namespace skin
