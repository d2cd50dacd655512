#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// Texts on the clipboard; `owner` is the window that asks.
namespace framework {

// Empty when there is none.
std::wstring clipboardText(HWND owner);
// False when another program keeps the clipboard or memory has run out.
bool copyToClipboard(HWND owner, std::wstring_view text);

}  // namespace framework
