#include "app/registered_messages.h"

namespace app {

const UINT panDownMessage = RegisterWindowMessageW(L"ZEL_PHOTOWND2_PANDOWN");
const UINT panUpMessage = RegisterWindowMessageW(L"ZEL_PHOTOWND2_PANUP");
const UINT dropperPositionMessage = RegisterWindowMessageW(L"ZEL_PHOTOWND2_DROPPERPOS");

}  // namespace app
