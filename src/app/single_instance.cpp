#include "app/single_instance.h"

#include <cstdint>

#include "framework/text.h"

namespace app {
namespace {

// A name for the folder that the system's object names can hold: they may have no backslash.
std::wstring nameFor(const std::string& folder) {
  std::wstring wide = framework::toWide(folder);
  CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (const wchar_t c : wide) hash = (hash ^ c) * 1099511628211ULL;
  std::wstring name = L"Quillet.";
  for (int shift = 60; shift >= 0; shift -= 4) name += L"0123456789abcdef"[(hash >> shift) & 0xF];
  return name;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& folder)
    : name_(nameFor(folder)), mutex_(CreateMutexW(nullptr, FALSE, (L"Local\\" + name_).c_str())) {
  second_ = GetLastError() == ERROR_ALREADY_EXISTS;
}

void SingleInstance::markWindow(HWND window) const {
  SetPropW(window, name_.c_str(), window);
}

void SingleInstance::showFirst() const {
  EnumWindows(
      [](HWND window, LPARAM name) -> BOOL {
        if (!GetPropW(window, reinterpret_cast<const wchar_t*>(name))) return TRUE;
        if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
        SetForegroundWindow(GetLastActivePopup(window));
        return FALSE;
      },
      reinterpret_cast<LPARAM>(name_.c_str()));
}

}  // namespace app
