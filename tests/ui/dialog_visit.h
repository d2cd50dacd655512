#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Acts in the modal dialog that is opened while it lives: one step after the other, each once everything that
// the step before has posted is handled. A dialog that still stands after the last step is ended.
class DialogVisit {
 public:
  using Step = std::function<void(HWND dialog)>;
  static constexpr INT_PTR notEnded = 77;  // the result of a dialog that had to be ended here

  explicit DialogVisit(std::vector<Step> steps);
  ~DialogVisit();  // fails the test when a step was not reached
  DialogVisit(const DialogVisit&) = delete;
  DialogVisit& operator=(const DialogVisit&) = delete;

  bool hadToEndOne() const { return hadToEndOne_; }

 private:
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD);
  static LRESULT CALLBACK onSent(int code, WPARAM wParam, LPARAM lParam);
  void act();

  std::vector<Step> steps_;
  std::size_t next_ = 0;
  bool hadToEndOne_ = false;
  UINT_PTR timer_;
  HHOOK hook_;
};

// The dialog of this program that a person could answer now.
HWND shownDialog();
HWND item(HWND dialog, UINT id);
// Types over what a field holds, as a paste does.
void enter(HWND dialog, UINT id, const std::string& text);
// All that a box says.
std::string wordsOf(HWND box);

DialogVisit::Step press(UINT id);
DialogVisit::Step endWith(INT_PTR result);
// Answers the message box on top, which must say this.
DialogVisit::Step answer(const std::string& expected);

// What a window shows on the screen, row by row.
std::vector<COLORREF> pictureOf(HWND window);
