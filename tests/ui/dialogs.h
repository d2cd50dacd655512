#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "framework/list_view.h"
#include "framework/text.h"
#include "framework/wnd.h"
#include "resources/resource_ids.h"

using Texts = std::vector<std::string>;
using Rows = std::vector<int>;
using Picture = std::vector<COLORREF>;
using Step = std::function<void(HWND dialog)>;
using Steps = std::vector<Step>;

inline HWND item(HWND dialog, UINT id) {
  return id ? GetDlgItem(dialog, static_cast<int>(id)) : dialog;
}

// The text of a control, or of the dialog; in brackets when it is disabled or read-only.
inline std::string textOf(HWND dialog, UINT id = 0) {
  const HWND control = item(dialog, id);
  const bool closed =
      !IsWindowEnabled(control) || (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL &&
                                    GetWindowLongW(control, GWL_STYLE) & ES_READONLY);
  return closed ? "(" + framework::windowText(control) + ")" : framework::windowText(control);
}

inline std::string wordsOf(HWND box) {
  std::string words = textOf(box) + ":";
  for (HWND part = nullptr; (part = FindWindowExW(box, part, L"Static", nullptr));) words += textOf(part);
  return words;
}

inline Texts columnOf(HWND list, int column) {
  Texts texts;
  for (int row = 0; row < ListView_GetItemCount(list); ++row)
    texts.push_back(framework::listItemText(list, row, column));
  return texts;
}

inline std::string joined(const Texts& texts, const std::string& between) {
  std::string all;
  for (const std::string& text : texts) all += (&text == &texts[0] ? "" : between) + text;
  return all;
}

// These rows (-1 = all) and no others; the last of them has the focus.
inline void select(HWND list, const Rows& rows) {
  ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
  for (const int row : rows) ListView_SetItemState(list, row, row < 0 ? 2 : 3, LVIS_SELECTED | LVIS_FOCUSED);
}

// What a window shows on the screen, row by row.
inline Picture pictureOf(HWND window) {
  UpdateWindow(window);
  RECT client{};
  GetClientRect(window, &client);
  Picture picture;
  const HDC dc = GetDC(window);
  for (int y = 0; y < client.bottom; ++y)
    for (int x = 0; x < client.right; ++x) picture.push_back(GetPixel(dc, x, y));
  ReleaseDC(window, dc);
  return picture;
}

inline bool contains(const Picture& picture, COLORREF color) {
  return std::ranges::find(picture, color) != picture.end();
}

// Handles what waits as the message loop of a dialog does, within a step: the next one is not due yet.
inline void runMessages(HWND dialog) {
  for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
    if (message.message != WM_TIMER && !IsDialogMessageW(dialog, &message))
      TranslateMessage(&message), DispatchMessageW(&message);
}

// While the keys are held.
inline void holding(std::initializer_list<int> held, const std::function<void()>& doing) {
  BYTE before[256], keys[256] = {};
  GetKeyboardState(before);
  for (const int down : held) keys[down] = 0x80;
  SetKeyboardState(keys);
  doing();
  SetKeyboardState(before);
}

inline Step press(UINT id) {
  return [id](HWND dialog) { SendMessageW(item(dialog, id), BM_CLICK, 0, 0); };
}
inline Step end(INT_PTR result) {
  return [result](HWND dialog) { EndDialog(dialog, result); };
}
// Types over what a field holds, as a paste does.
inline Step type(UINT id, const std::string& text) {
  return [id, wide = framework::toWide(text)](HWND dialog) {
    SendMessageW(item(dialog, id), EM_SETSEL, 0, -1);
    SendMessageW(item(dialog, id), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
  };
}
// What these controls show, joined by "|".
inline Step shows(const std::vector<UINT>& ids, const std::string& expected) {
  return [=](HWND dialog) {
    std::string shown;
    for (const UINT id : ids) shown += (id == ids[0] ? "" : "|") + textOf(dialog, id);
    EXPECT_EQ(shown, expected);
  };
}
// Ends the box on top, which must say this.
inline Step answer(const std::string& words) {
  return [words](HWND box) {
    EXPECT_NE(wordsOf(box).find(words), std::string::npos) << wordsOf(box);
    EndDialog(box, IDOK);
  };
}

// Deals with the dialogs and boxes that come up while it lives: one step after the other, each once
// everything that the step before has posted is handled. What comes or stands after the last step is left to
// `otherwise`; without one it fails the test and is ended.
class Answerer {
 public:
  explicit Answerer(Steps steps, Step otherwise = {})
      : steps_(std::move(steps)), otherwise_(std::move(otherwise)) {
    active_ = this;
  }
  ~Answerer() {
    KillTimer(nullptr, timer_);
    EXPECT_EQ(next_, steps_.size()) << "steps taken in the dialogs";
  }
  Answerer(const Answerer&) = delete;

 private:
  void act() {
    const HWND dialog = shown();
    if (!dialog) return;
    if (next_ < steps_.size()) return steps_[next_++](dialog);
    if (otherwise_) return otherwise_(dialog);
    ADD_FAILURE() << "nobody expects " << wordsOf(dialog);
    EndDialog(dialog, 0);
  }

  // The dialog of this program that a person could answer now.
  static HWND shown() {
    HWND shown = nullptr;
    for (HWND dialog = nullptr; (dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr));) {
      DWORD process = 0;
      GetWindowThreadProcessId(dialog, &process);
      // One that has opened another is disabled, even before the other is seen.
      if (process != GetCurrentProcessId() || !IsWindowVisible(dialog) || !IsWindowEnabled(dialog)) continue;
      EXPECT_EQ(shown, nullptr) << "two dialogs at once can be answered";
      shown = dialog;
    }
    return shown;
  }

  static inline Answerer* active_ = nullptr;
  Steps steps_;
  Step otherwise_;
  std::size_t next_ = 0;
  // A timer's message comes when no other waits.
  UINT_PTR timer_ = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) { active_->act(); });
};
