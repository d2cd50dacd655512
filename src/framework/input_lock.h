#pragma once

namespace framework {

// While one lives, the program's windows take no command, key, click or close, though what the thread works
// on may let messages in. What has come meanwhile is forgotten when the last one goes, so that no key pressed
// blindly answers what is shown next.
class CInputLock {
 public:
  CInputLock();
  ~CInputLock();
  CInputLock(const CInputLock&) = delete;
  CInputLock& operator=(const CInputLock&) = delete;

  // Whether a window is to leave that message alone now.
  static bool holdsBack(unsigned message);
};

}  // namespace framework
