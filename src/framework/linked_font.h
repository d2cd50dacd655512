#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace framework {

// The face that lacks the fewest characters of the text: that of the font, or one of those that the system
// links to it, the earlier the better. For controls that do not look into linked fonts by themselves.
std::wstring faceFor(HFONT font, std::wstring_view text);

}  // namespace framework
