#pragma once

#include <windows.h>

namespace framework {

class CWinApp;
class CWnd;

// What the framework keeps for the whole process.
struct FrameworkState {
  CWinApp* app = nullptr;
  HMODULE resourceModule = nullptr;  // the resource library; null = the program's own resources alone
  CWnd* awaitingWindow = nullptr;    // what the next created window belongs to; set by CreationScope only
};

inline FrameworkState& frameworkState() {
  static FrameworkState state;
  return state;
}

}  // namespace framework
