#pragma once

#include <windows.h>

#include <string>

#include "framework/handles.h"

namespace app {

// One running program for each folder of stores: two would write over each other's changes. Whoever runs
// holds a file of the folder open to itself, so that it does not matter who starts the second one, or by
// which name of the folder.
class SingleInstance {
 public:
  // `folder` is the program's folder, ending in a backslash.
  explicit SingleInstance(const std::string& folder);

  // Whether another program already serves the folder.
  bool isSecond() const { return second_; }
  // Brings that program's window, or the dialog that it shows, to the front.
  void showFirst() const;
  // Marks the window as the one that serves the folder.
  void markWindow(HWND window) const;

 private:
  std::wstring property_;  // the mark
  framework::UniqueHandle lock_;
  bool second_ = false;
};

}  // namespace app
