#pragma once

#include <windows.h>

#include <string>

// The windows of a program that have its keys and its mouse.
struct InputOwners {
  HWND focus;
  HWND capture;
};

// One control of another program's window as JSON: class, id, rectangle, text, state, and what it holds: the
// items of a tree, the columns and rows of a list, the buttons of a toolbar, the parts of a status bar, the
// choices of a combo box, the limit of an edit box.
std::string controlReport(HWND control, const InputOwners& input);
