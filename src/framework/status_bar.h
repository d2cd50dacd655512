#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "framework/wnd.h"

namespace framework {

// The status bar: a message part that takes the room left, then one part for each key indicator.
class CStatusBar : public CWnd {
 public:
  // A key whose toggled state lights up the text of that string resource.
  struct Indicator {
    UINT textId;
    int virtualKey;
  };

  bool createBar(HWND frame, UINT id, std::span<const Indicator> indicators);
  void setMessage(std::string_view text);
  // Shows the present state of the keys.
  void updateIndicators();
  // Lets the bar take its place at the bottom of the frame; its height in pixels.
  int dock();

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override { c.lpszClass = STATUSCLASSNAMEW; }

 private:
  void layOutParts();

  struct Part {
    Indicator indicator;
    std::wstring text;
    bool lit = false;
  };
  std::vector<Part> parts_;
};

}  // namespace framework
