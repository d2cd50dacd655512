#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// The settings of the program and its skin. Files are read afresh at every call; texts and paths are UTF-8.
namespace skin {

// Folder of the program file, ending in a backslash.
std::string zl_GetModulePath();

// The value of `key` in `section` of the INI file; false, and `value` untouched, when there is none. The file
// is UTF-8 with a byte-order mark, else in the system code page.
bool zl_GetSettingString(std::string_view section, std::string_view key, const std::string& path,
                         std::string& value);

// The same for a rectangle, "left, top, right, bottom" in pixels.
bool zl_GetSettingRect(std::string_view section, std::string_view key, const std::string& path, RECT& rect);

// The skin's folder and its layout file, within the program's folder.
std::string skinFolder(const std::string& moduleDirectory);
std::string skinFile(const std::string& moduleDirectory);

}  // namespace skin
