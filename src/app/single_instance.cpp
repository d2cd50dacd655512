#include "app/single_instance.h"

#include "framework/text.h"

namespace app {
namespace {

constexpr char lockFile[] = "Quillet.lock";
constexpr wchar_t signClass[] = L"Static";

// The same for every name of the folder.
std::wstring signName(const std::string& folder) {
  BY_HANDLE_FILE_INFORMATION place{};
  const HANDLE opened = CreateFileW(framework::toWide(folder).c_str(), 0,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened != INVALID_HANDLE_VALUE) {
    GetFileInformationByHandle(opened, &place);
    CloseHandle(opened);
  }
  std::wstring name = L"Quillet";
  for (const DWORD number : {place.dwVolumeSerialNumber, place.nFileIndexHigh, place.nFileIndexLow})
    name += L"." + std::to_wstring(number);
  return name;
}

// Of all windows of the first program the one that takes input: the frame, or the dialog that has disabled
// it.
BOOL CALLBACK findWaiting(HWND window, LPARAM result) {
  const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
  if ((style & WS_CAPTION) != WS_CAPTION) return TRUE;
  // What a minimised window owns is hidden, too.
  const HWND root = GetAncestor(window, GA_ROOTOWNER);
  const bool minimized = IsIconic(root);
  if ((style & WS_DISABLED) || !(minimized || (style & WS_VISIBLE))) return TRUE;
  // Not waited for: the program may be busy with the handset. A frame that is disabled must not be activated.
  if (minimized) ShowWindowAsync(root, root == window ? SW_RESTORE : SW_SHOWNOACTIVATE);
  *reinterpret_cast<HWND*>(result) = window;
  return FALSE;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& folder) : name_(signName(folder)) {
  // The system takes the file away when its holder ends, however that comes about.
  const HANDLE held = CreateFileW(framework::toWide(folder + lockFile).c_str(), GENERIC_WRITE, 0, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (held != INVALID_HANDLE_VALUE)
    lock_.reset(held);
  else
    second_ = GetLastError() == ERROR_SHARING_VIOLATION;
  if (!second_)
    sign_.reset(
        CreateWindowExW(0, signClass, name_.c_str(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
}

bool SingleInstance::showFirst() const {
  const HWND sign = FindWindowExW(HWND_MESSAGE, nullptr, signClass, name_.c_str());
  if (!sign) return false;
  HWND waiting = nullptr;
  EnumThreadWindows(GetWindowThreadProcessId(sign, nullptr), findWaiting, reinterpret_cast<LPARAM>(&waiting));
  if (waiting) SetForegroundWindow(waiting);
  return waiting != nullptr;
}

}  // namespace app
