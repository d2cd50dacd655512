#include "app/manual.h"

#include <objbase.h>
#include <shellapi.h>

#include "framework/module.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"

namespace app {
namespace {

std::wstring manualIn(const std::string& moduleDirectory) {
  return framework::toWide(moduleDirectory + "manual.html");
}

}  // namespace

bool isManualThere(const std::string& moduleDirectory) {
  return GetFileAttributesW(manualIn(moduleDirectory).c_str()) != INVALID_FILE_ATTRIBUTES;
}

DWORD openManual(HWND owner, const std::string& moduleDirectory) {
  if (!isManualThere(moduleDirectory)) return ERROR_FILE_NOT_FOUND;
  const framework::CWaitCursor wait;
  // What a system opens pages with may be an object that needs this, from then on.
  const auto prepare = framework::lateFunction<decltype(CoInitializeEx)>("ole32.dll", "CoInitializeEx");
  const auto open = framework::lateFunction<decltype(ShellExecuteExW)>("shell32.dll", "ShellExecuteExW");
  if (!prepare || !open) return GetLastError();
  prepare(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  SHELLEXECUTEINFOW page{};
  page.cbSize = sizeof page;
  page.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  page.hwnd = owner;
  const std::wstring file = manualIn(moduleDirectory);
  page.lpFile = file.c_str();
  page.nShow = SW_SHOWNORMAL;
  return open(&page) ? ERROR_SUCCESS : GetLastError();
}

}  // namespace app
