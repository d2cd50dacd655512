#pragma once

#include <windows.h>

#include <commdlg.h>

#include <array>
#include <optional>

#include "app/sought_text.h"

namespace app {

// The system's dialog that asks for a text to find. It stays open beside the frame, which it tells what is
// asked. Owned by the frame.
class FindDialog {
 public:
  // Opens it, or brings it to the front.
  void open(HWND frame);
  HWND handle() const { return window_; }

  // Whether the message to the frame is the dialog's; then `asked` is what it asks to be found.
  struct Question {
    SoughtText text;
    bool backwards;
  };
  bool takes(UINT message, LPARAM lParam, std::optional<Question>& asked);

 private:
  HWND window_ = nullptr;
  FINDREPLACEW state_{};
  DWORD choices_ = FR_DOWN;  // as they were last asked with; a dialog that closes forgets them
  std::array<wchar_t, 161> text_{};
};

}  // namespace app
