#include "framework/input_lock.h"

#include <algorithm>

#include "framework/framework_state.h"

namespace framework {
namespace {

struct Range {
  UINT first, last;
};
constexpr Range input[] = {{WM_NCLBUTTONDOWN, WM_NCXBUTTONDBLCLK},
                           {WM_KEYFIRST, WM_KEYLAST},
                           {WM_LBUTTONDOWN, WM_MOUSELAST},
                           {WM_COMMAND, WM_SYSCOMMAND},
                           {WM_CLOSE, WM_QUERYENDSESSION}};

}  // namespace

CInputLock::CInputLock() {
  ++frameworkState().inputLocks;
}

CInputLock::~CInputLock() {
  if (frameworkState().inputLocks == 1)
    for (const auto& [first, last] : input)
      for (MSG dropped; PeekMessageW(&dropped, nullptr, first, last, PM_REMOVE);) {
      }
  --frameworkState().inputLocks;
}

bool CInputLock::holdsBack(unsigned message) {
  return frameworkState().inputLocks > 0 && std::ranges::any_of(input, [message](const Range& range) {
           return message >= range.first && message <= range.last;
         });
}

}  // namespace framework
