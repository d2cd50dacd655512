#pragma once

#include <string>

#include "framework/handles.h"

namespace app {

// The library with the texts: zelSMS.dll beside the program, or else, below the folder Languages, that of the
// first of the person's languages that there is one for. Null when the program's own texts are to be shown.
// `moduleDirectory` ends in a backslash.
framework::UniqueModule loadTexts(const std::string& moduleDirectory);

}  // namespace app
