#pragma once

#include <windows.h>

#include <string>

#include "skin/settings.h"

namespace skin {

// What all dialogs share; filled at start-up.
struct SkinState {
  std::string moduleDirectory = zl_GetModulePath();  // holds the skin's folder; ends in a backslash
  std::string fontFace;                              // of skinned buttons; empty when the skin names none
  int fontSize = 0;                                  // 0 = the control's default
  COLORREF dialogBackground = RGB(0xD4, 0xDE, 0xEA);
  COLORREF dialogText = RGB(0x0B, 0x4F, 0x95);
};

inline SkinState& skinState() {
  static SkinState state;
  return state;
}

}  // namespace skin
