#pragma once

#include <windows.h>

namespace app {

// Window messages registered by name while the program is loaded, so that other programs can agree on them.
extern const UINT panDownMessage;
extern const UINT panUpMessage;
extern const UINT dropperPositionMessage;

}  // namespace app
