#include "handset/system_clock.h"

#include <windows.h>

#include <algorithm>

namespace handset {

std::int64_t SystemClock::milliseconds() {
  return static_cast<std::int64_t>(GetTickCount64());
}

void SystemClock::sleep(int milliseconds) {
  Sleep(static_cast<DWORD>(std::max(milliseconds, 0)));
}

}  // namespace handset
