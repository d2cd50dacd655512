#pragma once

#include <windows.h>

namespace framework {

// The hourglass for as long as the object lives; nested ones change nothing.
class CWaitCursor {
 public:
  CWaitCursor() : former_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
  ~CWaitCursor() { SetCursor(former_); }
  CWaitCursor(const CWaitCursor&) = delete;
  CWaitCursor& operator=(const CWaitCursor&) = delete;

 private:
  HCURSOR former_;
};

}  // namespace framework
