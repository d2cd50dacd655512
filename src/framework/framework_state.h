#pragma once

#include <windows.h>

#include <unordered_map>

namespace framework {

class CWinApp;
class CWnd;

// What the framework keeps for the whole process.
struct FrameworkState {
  CWinApp* app = nullptr;
  HMODULE resourceModule = nullptr;         // the resource library; null = the program's own resources alone
  std::unordered_map<HWND, CWnd*> objects;  // the attached ones, by their windows
  int inputLocks = 0;                       // how many CInputLock there are
  CWnd* awaitingWindow = nullptr;  // what the next created window belongs to; set by CreationScope only
};

inline FrameworkState& frameworkState() {
  static FrameworkState state;
  return state;
}

}  // namespace framework
