#pragma once

#include "framework/wnd.h"
#include "skin/balloon_tip.h"

namespace skin {

// An edit box for phone numbers: of what is typed it takes digits, ";", "+", "-" and "." only, and says so
// when something else is. What is pasted is not filtered, but taken whole or not at all; its lines become
// numbers of their own. The member of a dialog.
class CNumberEntry : public framework::CWnd {
 public:
  CNumberEntry() = default;

  // Takes over the dialog's edit box of that id; false when there is none.
  bool subclass(HWND dialog, UINT id);

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  LRESULT onChar(UINT character);
  LRESULT onKeyDown(UINT key);
  LRESULT onKillFocus();
  void onPaste();
  void onReplaceSelection(WPARAM canUndo, LPARAM text);

  CBalloonTip tip_;
};

}  // namespace skin
