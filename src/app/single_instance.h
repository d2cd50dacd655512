#pragma once

#include <windows.h>

#include <string>

#include "framework/handles.h"

namespace app {

// One running program for each folder of stores: two would write over each other's changes.
class SingleInstance {
 public:
  // `folder` is the program's folder, in any spelling of its letters.
  explicit SingleInstance(const std::string& folder);

  // Whether another program already serves the folder.
  bool isSecond() const { return second_; }
  // Brings that program's window, or the dialog that it shows, to the front.
  void showFirst() const;
  // Marks the window as the one that serves the folder.
  void markWindow(HWND window) const;

 private:
  std::wstring name_;
  framework::UniqueHandle mutex_;
  bool second_ = false;
};

}  // namespace app
