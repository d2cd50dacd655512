#include "framework/status_bar.h"

#include <algorithm>

#include "framework/resources.h"
#include "framework/text.h"

namespace framework {
namespace {

constexpr int indicatorPadding = 16;

}  // namespace

bool CStatusBar::createBar(HWND frame, UINT id, std::span<const Indicator> indicators) {
  for (const Indicator& indicator : indicators)
    parts_.push_back({indicator, toWide(loadString(indicator.textId)), false});
  return createChild(nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP, {}, frame, id);
}

void CStatusBar::setMessage(std::string_view text) {
  send(SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(toWide(text).c_str()));
  // The thread may be about to wait for the handset: what the bar says must be seen before that.
  UpdateWindow(handle());
}

void CStatusBar::updateIndicators() {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    Part& part = parts_[i];
    const bool lit = (GetKeyState(part.indicator.virtualKey) & 1) != 0;
    if (lit == part.lit) continue;
    part.lit = lit;
    send(SB_SETTEXTW, i + 1, reinterpret_cast<LPARAM>(lit ? part.text.c_str() : L""));
  }
}

int CStatusBar::dock() {
  send(WM_SIZE);
  layOutParts();
  RECT rect{};
  GetWindowRect(handle(), &rect);
  return static_cast<int>(rect.bottom - rect.top);
}

void CStatusBar::layOutParts() {
  std::vector<int> rightEdges(parts_.size() + 1);
  int right = static_cast<int>(clientRect().right) - GetSystemMetrics(SM_CXVSCROLL);
  for (std::size_t i = parts_.size(); i > 0; --i) {
    rightEdges[i] = right;
    right -= textSize(handle(), parts_[i - 1].text).cx + indicatorPadding;
  }
  rightEdges[0] = std::max(right, 0);
  send(SB_SETPARTS, rightEdges.size(), reinterpret_cast<LPARAM>(rightEdges.data()));
}

}  // namespace framework
