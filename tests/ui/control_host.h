#pragma once

#include <utility>
#include <vector>

#include "framework/wnd.h"
#include "skin/custom_list_ctrl.h"

// A window for controls under test; keeps what a list tells its parent.
class ControlHost : public framework::CWnd {
 public:
  using Pairs = std::vector<std::pair<int, int>>;

  ControlHost();
  ~ControlHost() override;

  // A plain control of the system's, as a dialog resource would make it.
  HWND addControl(const wchar_t* className, DWORD style, UINT id);
  RECT whole() const { return clientRect(); }

  Pairs sorted;   // column, ascending
  Pairs changed;  // row, column

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  LRESULT onSorted(WPARAM column, LPARAM ascending);
  LRESULT onChanged(WPARAM row, LPARAM column);
};

// Handles all waiting messages as the message loop of a dialog does.
void runMessages(HWND dialog = nullptr);
// A key with Ctrl, Shift or Alt held, as the keyboard sends it: with the character that it makes.
void pressKey(HWND window, UINT key, std::initializer_list<int> held = {}, HWND dialog = nullptr);
void typeText(HWND window, std::string_view text);
// All texts of a list's column.
std::vector<std::string> columnOf(const skin::CCustomListCtrl& list, int column);
// Presses and releases a mouse button at the middle of a cell's text.
void clickCell(const skin::CCustomListCtrl& list, int row, int column, UINT down = WM_LBUTTONDOWN);
