#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "framework/cmd_target.h"
#include "framework/message_map.h"

namespace framework {

// A window: attaches an object to a window handle and leads its messages through the class's message map.
// The window belongs to Windows (a child to its parent); the object must outlive it or destroy it.
class CWnd : public CCmdTarget {
 public:
  CWnd() = default;
  ~CWnd() override;

  HWND handle() const { return handle_; }
  static CWnd* fromHandle(HWND window);

  // Creates the window after preCreateWindow has had its say. False when Windows or WM_CREATE refuses.
  bool create(const CREATESTRUCTW& wanted);
  bool createChild(const wchar_t* className, DWORD style, const RECT& place, HWND parent, UINT id);
  void destroy();

  std::string text() const;
  void setText(std::string_view text);
  RECT clientRect() const;
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(handle_, message, wParam, lParam);
  }

  // A look at keyboard input before it is dispatched; true when it was used up here.
  virtual bool preTranslateMessage(MSG& message);

 protected:
  virtual void preCreateWindow(CREATESTRUCTW&) {}
  virtual const MessageMap* messageMap() const { return nullptr; }
  virtual LRESULT windowProc(UINT message, WPARAM wParam, LPARAM lParam);
  // The default treatment of the message now being handled.
  LRESULT defaultProcessing();
  // The same with other parameters.
  LRESULT defaultProcessing(WPARAM wParam, LPARAM lParam);
  // Attaches this object to a window that already exists, as for the controls of a dialog.
  bool attach(HWND window);

  friend class CreationScope;

 private:
  struct Current {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
  };

  static LRESULT CALLBACK attachedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void detach();
  const MessageEntry* findHandler(UINT message, UINT code, UINT id) const;
  // Offers a notification to the control that it comes from.
  bool reflect(WPARAM wParam, LPARAM lParam, LRESULT& result);

  HWND handle_ = nullptr;
  WNDPROC former_ = nullptr;  // the window's own procedure
  Current current_{};
};

// Tells the person that there is not enough memory, and takes none for that.
void reportOutOfMemory();

// The text of any window, in UTF-8, and as the window holds it.
std::string windowText(HWND window);
std::wstring windowWideText(HWND window);
// How large a text is in the window's font: in one line, or in lines of `width` pixels.
SIZE textSize(HWND window, const std::wstring& text, int width = 0);
// A length that is meant for 96 dpi, at the resolution that the window has.
int scaledPixels(HWND window, int pixels);
// A point of the window's client area on the screen.
inline POINT toScreen(HWND window, POINT point) {
  ClientToScreen(window, &point);
  return point;
}

// While it lives, the next window created on this thread is attached to `window` before its first message,
// so that WM_CREATE and WM_INITDIALOG reach the object as well.
class CreationScope {
 public:
  explicit CreationScope(CWnd& window);
  ~CreationScope();
  CreationScope(const CreationScope&) = delete;
  CreationScope& operator=(const CreationScope&) = delete;

 private:
  static LRESULT CALLBACK hookProc(int code, WPARAM wParam, LPARAM lParam);
  HHOOK hook_;
  CWnd* former_;
};

// Keeps a window from drawing itself while it lives; afterwards it is drawn once.
class CRedrawLock {
 public:
  explicit CRedrawLock(const CWnd& window);
  ~CRedrawLock();
  CRedrawLock(const CRedrawLock&) = delete;
  CRedrawLock& operator=(const CRedrawLock&) = delete;

 private:
  HWND window_;
  bool shown_;
};

// Registers a window class of the program's own, once; its default is DefWindowProcW.
const wchar_t* registerWindowClass(const wchar_t* name, HCURSOR cursor, HBRUSH background,
                                   HICON icon = nullptr);

}  // namespace framework
