#include "app/single_instance.h"

#include <cstdint>

#include "framework/text.h"

namespace app {
namespace {

constexpr char lockFile[] = "Quillet.lock";

// The mark of a window that serves the folder.
std::wstring propertyFor(const std::string& folder) {
  std::wstring wide = framework::toWide(folder);
  CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (const wchar_t c : wide) hash = (hash ^ c) * 1099511628211ULL;
  std::wstring name = L"Quillet.";
  for (int shift = 60; shift >= 0; shift -= 4) name += L"0123456789abcdef"[(hash >> shift) & 0xF];
  return name;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& folder) : property_(propertyFor(folder)) {
  // The system takes the file away when its holder ends, however that comes about.
  const HANDLE held = CreateFileW(framework::toWide(folder + lockFile).c_str(), GENERIC_WRITE, 0, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (held != INVALID_HANDLE_VALUE)
    lock_.reset(held);
  else
    second_ = GetLastError() == ERROR_SHARING_VIOLATION;
}

void SingleInstance::markWindow(HWND window) const {
  SetPropW(window, property_.c_str(), window);
}

void SingleInstance::showFirst() const {
  EnumWindows(
      [](HWND window, LPARAM name) -> BOOL {
        if (!GetPropW(window, reinterpret_cast<const wchar_t*>(name))) return TRUE;
        // Not waited for: the first program may be busy with the handset.
        if (IsIconic(window)) ShowWindowAsync(window, SW_RESTORE);
        SetForegroundWindow(GetLastActivePopup(window));
        return FALSE;
      },
      reinterpret_cast<LPARAM>(property_.c_str()));
}

}  // namespace app
