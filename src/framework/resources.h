#pragma once

#include <windows.h>

#include <string>

// Where texts, dialogs and images come from: the resource library when one is set, behind it the program
// itself. A resource library may hold strings only.
namespace framework {

// The resource library's module; null = the program's own resources alone.
void setResourceModule(HMODULE module);

// The text of that number in UTF-8; empty when neither module has it.
std::string loadString(UINT id);

// The module that holds the resource: the resource library if it has it, else the program.
HMODULE moduleWithResource(const wchar_t* type, UINT id);

}  // namespace framework
