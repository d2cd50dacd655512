#pragma once

#include <windows.h>

#include <cstddef>
#include <stdexcept>
#include <string>

// The window's answer to a message; std::runtime_error when it hangs or is gone.
LRESULT ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

std::wstring classOf(HWND window);
std::wstring textOf(HWND window);

// A rectangle of the window's client area in screen coordinates.
RECT onScreen(HWND window, RECT clientRectangle);

// A piece of memory in the process of another program's control, for messages that carry pointers. It holds
// one structure at its start and one text behind it. std::runtime_error when the process does not let us.
class ForeignMemory {
 public:
  explicit ForeignMemory(HWND window);
  ~ForeignMemory();
  ForeignMemory(const ForeignMemory&) = delete;
  ForeignMemory& operator=(const ForeignMemory&) = delete;

  static constexpr int textUnits = 8192;
  LPARAM address() const { return reinterpret_cast<LPARAM>(base_); }
  wchar_t* textAddress() const { return reinterpret_cast<wchar_t*>(base_ + textOffset); }

  template <typename Structure>
  void put(const Structure& structure) {
    static_assert(sizeof(Structure) <= textOffset);
    if (!WriteProcessMemory(process_, base_, &structure, sizeof(structure), nullptr))
      throw std::runtime_error("cannot write to the program's memory");
  }
  template <typename Structure>
  Structure get() const {
    Structure structure{};
    read(base_, &structure, sizeof(structure));
    return structure;
  }
  // The text at textAddress(), up to its NUL.
  std::wstring text() const;
  void clearText();

 private:
  static constexpr std::size_t textOffset = 512;
  void read(const void* from, void* to, std::size_t size) const;

  HANDLE process_;
  std::byte* base_;
};
