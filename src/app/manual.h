#pragma once

#include <windows.h>

#include <string>

namespace app {

// The manual lies beside the program as a page for the browser, or is missing. The folder ends in a
// backslash.
bool isManualThere(const std::string& moduleDirectory);
// Why the system did not open it, as GetLastError numbers it; 0 when it did.
DWORD openManual(HWND owner, const std::string& moduleDirectory);

}  // namespace app
