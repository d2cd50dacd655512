#pragma once

#include <windows.h>

#include <string>

namespace app {

// The manual lies beside the program as a page for the browser, or is missing. The folder ends in a
// backslash.
bool isManualThere(const std::string& moduleDirectory);
// False when it is missing. Otherwise the system shows it, or says why it cannot.
bool openManual(HWND owner, const std::string& moduleDirectory);

}  // namespace app
