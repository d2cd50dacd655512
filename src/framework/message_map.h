#pragma once

#include <windows.h>
#include <windowsx.h>

#include <commctrl.h>

#include <span>
#include <type_traits>

// Message maps: constexpr tables from a message to a typed handler. Only the adapters below unpack WPARAM
// and LPARAM. A handler that wants the default treatment as well calls CWnd::defaultProcessing().
namespace framework {

class CWnd;

// A notification of a control, handed back to the control's own class before its parent's.
inline constexpr UINT reflectedNotify = WM_APP + 0x100;

inline constexpr UINT anyCode = ~0U;

struct MessageEntry {
  UINT message = 0;
  UINT code = 0;  // notification code, for WM_NOTIFY and WM_COMMAND; anyCode = whichever
  UINT id = 0;    // control id; 0 = any
  LRESULT (*handle)(CWnd& window, WPARAM wParam, LPARAM lParam) = nullptr;
};

// A class's table and that of its base, which is asked next.
struct MessageMap {
  std::span<const MessageEntry> entries;
  const MessageMap* base = nullptr;
};

namespace detail {
template <class Method>
struct MethodTraits;
template <class Class, class Result, class... Arguments>
struct MethodTraits<Result (Class::*)(Arguments...)> {
  using Owner = Class;
  using Returned = Result;
};
template <class Class, class Result, class... Arguments>
struct MethodTraits<Result (Class::*)(Arguments...) const> {
  using Owner = const Class;
  using Returned = Result;
};

// Calls `Method` on the window as its own class; a handler that returns nothing answers 0.
template <auto Method, class... Arguments>
LRESULT call(CWnd& window, Arguments&&... arguments) {
  using Traits = MethodTraits<decltype(Method)>;
  auto& target = static_cast<typename Traits::Owner&>(window);
  if constexpr (std::is_void_v<typename Traits::Returned>) {
    (target.*Method)(static_cast<Arguments&&>(arguments)...);
    return 0;
  } else {
    return static_cast<LRESULT>((target.*Method)(static_cast<Arguments&&>(arguments)...));
  }
}

inline POINT pointOf(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}
}  // namespace detail

// void f() or LRESULT f(), for messages whose parameters do not matter.
template <auto Method>
constexpr MessageEntry onPlain(UINT message) {
  return {message, anyCode, 0, [](CWnd& w, WPARAM, LPARAM) { return detail::call<Method>(w); }};
}
// LRESULT f(WPARAM, LPARAM), for the program's own messages.
template <auto Method>
constexpr MessageEntry onRaw(UINT message) {
  return {message, anyCode, 0, [](CWnd& w, WPARAM a, LPARAM b) { return detail::call<Method>(w, a, b); }};
}
// bool f(const CREATESTRUCTW&); false stops the creation.
template <auto Method>
constexpr MessageEntry onCreate() {
  return {WM_CREATE, 0, 0, [](CWnd& w, WPARAM, LPARAM l) -> LRESULT {
            return detail::call<Method>(w, *reinterpret_cast<const CREATESTRUCTW*>(l)) ? 0 : -1;
          }};
}
// void f(int width, int height). Being minimised is no size to lay anything out for.
template <auto Method>
constexpr MessageEntry onSize() {
  return {WM_SIZE, anyCode, 0, [](CWnd& w, WPARAM kind, LPARAM l) -> LRESULT {
            if (kind == SIZE_MINIMIZED) return 0;
            return detail::call<Method>(w, int{GET_X_LPARAM(l)}, int{GET_Y_LPARAM(l)});
          }};
}
// void f(UINT keys, POINT client), for WM_MOUSEMOVE and the button messages.
template <auto Method>
constexpr MessageEntry onMouse(UINT message) {
  return {message, 0, 0, [](CWnd& w, WPARAM keys, LPARAM l) {
            return detail::call<Method>(w, static_cast<UINT>(keys), detail::pointOf(l));
          }};
}
// void f(UINT key), for WM_KEYDOWN and WM_CHAR.
template <auto Method>
constexpr MessageEntry onKey(UINT message) {
  return {message, 0, 0,
          [](CWnd& w, WPARAM key, LPARAM) { return detail::call<Method>(w, static_cast<UINT>(key)); }};
}
// LRESULT f(const MSG* message): what the control wants of the dialog's keys, DLGC_… bits; `message` is the
// key in question, null when none is.
template <auto Method>
constexpr MessageEntry onDialogCode() {
  return {WM_GETDLGCODE, 0, 0,
          [](CWnd& w, WPARAM, LPARAM l) { return detail::call<Method>(w, reinterpret_cast<const MSG*>(l)); }};
}
// void f(MINMAXINFO&)
template <auto Method>
constexpr MessageEntry onMinMaxInfo() {
  return {WM_GETMINMAXINFO, 0, 0, [](CWnd& w, WPARAM, LPARAM l) {
            return detail::call<Method>(w, *reinterpret_cast<MINMAXINFO*>(l));
          }};
}
// HBRUSH f(HDC target, HWND control), for the WM_CTLCOLOR messages.
template <auto Method>
constexpr MessageEntry onControlColour(UINT message) {
  return {message, anyCode, 0, [](CWnd& w, WPARAM dc, LPARAM control) {
            return reinterpret_cast<LRESULT>(
                (static_cast<typename detail::MethodTraits<decltype(Method)>::Owner&>(w).*Method)(
                    reinterpret_cast<HDC>(dc), reinterpret_cast<HWND>(control)));
          }};
}
// A notification that the control handles itself: LRESULT or void f(Notification&).
template <auto Method, class Notification = NMHDR>
constexpr MessageEntry onReflected(UINT code) {
  return {reflectedNotify, code, 0, [](CWnd& w, WPARAM, LPARAM l) {
            return detail::call<Method>(w, *reinterpret_cast<Notification*>(l));
          }};
}
// A notification from a child: LRESULT or void f(Notification&).
template <auto Method, class Notification = NMHDR>
constexpr MessageEntry onNotify(UINT code, UINT id = 0) {
  return {WM_NOTIFY, code, id, [](CWnd& w, WPARAM, LPARAM l) {
            return detail::call<Method>(w, *reinterpret_cast<Notification*>(l));
          }};
}
// A control's WM_COMMAND: void f().
template <auto Method>
constexpr MessageEntry onControl(UINT code, UINT id) {
  return {WM_COMMAND, code, id, [](CWnd& w, WPARAM, LPARAM) { return detail::call<Method>(w); }};
}

}  // namespace framework
