#include "app/manual.h"

#include <objbase.h>
#include <shellapi.h>

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

bool openManual(HWND owner, const std::string& moduleDirectory) {
  if (!isManualThere(moduleDirectory)) return false;
  const framework::CWaitCursor wait;
  // What a system opens pages with may be an object that needs this.
  const HRESULT prepared = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  ShellExecuteW(owner, L"open", manualIn(moduleDirectory).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  if (SUCCEEDED(prepared)) CoUninitialize();
  return true;
}

}  // namespace app
