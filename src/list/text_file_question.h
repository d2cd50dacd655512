#pragma once

#include <windows.h>

#include <string>

namespace list {

// Asks with the system's dialog for a text file to save in. The full path, UTF-8; empty when the person
// thinks better of it.
std::string askForTextFile(HWND owner);

}  // namespace list
