#include "foreign_window.h"

#include <algorithm>

LRESULT ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 3000, &answer))
    throw std::runtime_error("the window does not answer");
  return static_cast<LRESULT>(answer);
}

std::wstring classOf(HWND window) {
  wchar_t name[256];
  return {name, static_cast<std::size_t>(GetClassNameW(window, name, 256))};
}

std::wstring textOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  const LRESULT length = ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

RECT onScreen(HWND window, RECT clientRectangle) {
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&clientRectangle), 2);
  return clientRectangle;
}

ForeignMemory::ForeignMemory(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
  if (!process_) throw std::runtime_error("cannot open the program's process");
  base_ = static_cast<std::byte*>(VirtualAllocEx(process_, nullptr, textOffset + textUnits * sizeof(wchar_t),
                                                 MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
  if (!base_) {
    CloseHandle(process_);
    throw std::runtime_error("cannot get memory in the program's process");
  }
}

ForeignMemory::~ForeignMemory() {
  VirtualFreeEx(process_, base_, 0, MEM_RELEASE);
  CloseHandle(process_);
}

std::wstring ForeignMemory::text() const {
  std::wstring text(textUnits, L'\0');
  read(textAddress(), text.data(), text.size() * sizeof(wchar_t));
  text.resize(std::min(text.find(L'\0'), text.size()));
  return text;
}

void ForeignMemory::clearText() {
  const wchar_t end = L'\0';
  if (!WriteProcessMemory(process_, textAddress(), &end, sizeof(end), nullptr))
    throw std::runtime_error("cannot write to the program's memory");
}

void ForeignMemory::read(const void* from, void* to, std::size_t size) const {
  if (!ReadProcessMemory(process_, from, to, size, nullptr))
    throw std::runtime_error("cannot read the program's memory");
}
