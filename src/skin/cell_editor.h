#pragma once

#include <functional>
#include <string_view>

#include "framework/wnd.h"

namespace skin {

// The edit box that a list lays over the cell being edited. A child of the list, hidden at all other times.
class CCellEditor : public framework::CWnd {
 public:
  // Called when the user is done: true to keep the text (Enter, or the focus went elsewhere), false to leave
  // the cell as it was (Escape).
  using Finish = std::function<void(bool keep)>;

  bool create(HWND list, Finish finish);
  // Shows the box over `cell` (pixels of the list), in the list's font, all of its text selected.
  // textIndent: pixels from the cell's left edge to its text.
  void open(const RECT& cell, int textIndent, std::string_view text);
  // Hides the box; the list has the focus back if the box had it.
  void close();

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  LRESULT onDialogCode(const MSG* message);
  LRESULT onKeyDown(UINT key);
  LRESULT onChar(UINT character);
  LRESULT onKillFocus();

  Finish finish_;
};

}  // namespace skin
