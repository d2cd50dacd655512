#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>

#include "framework/handles.h"

namespace app {

// One running program for each folder of stores: two would write over each other's changes. Whoever runs
// holds a file of the folder open to itself, so that it does not matter who starts the second one, or by
// which name of the folder. It belongs to the thread of the program's windows.
class SingleInstance {
 public:
  // `folder` is the program's folder, ending in a backslash.
  explicit SingleInstance(const std::string& folder);

  // Whether another program already serves the folder.
  bool isSecond() const { return second_; }
  // Brings that program's window, or the dialog or message that it waits with, to the front.
  // False when it has none.
  bool showFirst() const;

 private:
  struct DestroySign {
    void operator()(HWND window) const { DestroyWindow(window); }
  };

  std::wstring name_;  // of the sign
  framework::UniqueHandle lock_;
  // A window that is never seen and from the beginning on leads a second start to the thread of the others.
  std::unique_ptr<std::remove_pointer_t<HWND>, DestroySign> sign_;
  bool second_ = false;
};

}  // namespace app
