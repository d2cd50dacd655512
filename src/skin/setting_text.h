#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

// The INI syntax of port.ini and skin.ini: "[section]" lines, "key = value" lines, ";" comments. Section and
// key in any letter case, the first match counts, spaces around key and value and one pair of quotes around
// the value are taken off. Hostile text gives no more than a missing key.
namespace skin {

std::optional<std::string> findSetting(std::string_view text, std::string_view section, std::string_view key);

// left, top, right, bottom from four comma-separated integers; nothing for any other form.
std::optional<std::array<int, 4>> parseRect(std::string_view value);

}  // namespace skin
