#pragma once

#include <windows.h>

#include <string>

namespace skin {

// A balloon under a control that says why what was just done came to nothing. It stays until it is hidden;
// its window belongs to the control's dialog. The member of a control.
class CBalloonTip {
 public:
  void show(HWND control, const std::string& words);
  void hide();

 private:
  HWND window_ = nullptr;
};

}  // namespace skin
