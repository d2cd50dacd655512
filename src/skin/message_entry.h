#pragma once

#include "framework/wnd.h"

namespace skin {

// An edit box that takes a paste of any length, so that its dialog can cut it and say how much had to go.
// What is typed keeps to the limit. The member of a dialog.
class CMessageEntry : public framework::CWnd {
 public:
  // Takes over the dialog's edit box of that id; false when there is none.
  bool subclass(HWND dialog, UINT id);

  // Puts `text` in the place of the one that the box holds, the caret at `caret`; undoing that brings
  // `former` back.
  void replaceText(const wchar_t* former, const wchar_t* text, DWORD caret);

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  void onKeyDown(UINT key);
  void onPaste();
};

}  // namespace skin
