// The tip over a row: the whole message, who, and the whole time, however narrow the columns are. The tip is
// the view's own, since the list control's is for the first column only, and not in every system.
#include <utility>

#include "framework/text.h"
#include "list/columns.h"
#include "list/list_state.h"
#include "list/quillet_view.h"

namespace list {
namespace {

constexpr LPARAM tipWidth = 400;   // pixels; longer lines are broken
constexpr LPARAM tipTime = 30000;  // milliseconds, for reading it
constexpr std::size_t tipLength = 2000;

bool isInput(UINT message) {
  return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_KEYFIRST && message <= WM_KEYLAST);
}

}  // namespace

void CQuilletView::createTip() {
  ListView_SetToolTips(handle(), nullptr);  // it would ask for the same texts, and show them twice
  tip_ = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX, 0, 0, 0, 0, handle(), nullptr,
                         GetModuleHandleW(nullptr), nullptr);
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_TRANSPARENT;
  tool.hwnd = handle();
  tool.uId = reinterpret_cast<UINT_PTR>(handle());
  tool.lpszText = LPSTR_TEXTCALLBACKW;
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, tipWidth);
  SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_AUTOPOP, tipTime);
}

// The tip goes when the pointer leaves its row, and with every key and button.
bool CQuilletView::preTranslateMessage(MSG& message) {
  if (message.hwnd == handle() && isInput(message.message)) {
    LVHITTESTINFO hit{};
    hit.pt = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    const bool hovers = message.message == WM_MOUSEMOVE && !listState().drag.dragging;
    const int row = hovers ? ListView_SubItemHitTest(handle(), &hit) : -1;
    if (std::exchange(tipRow_, row) != row) SendMessageW(tip_, TTM_POP, 0, 0);
    if (row >= 0) SendMessageW(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
  }
  return CListView::preTranslateMessage(message);
}

// What it has been about may be another message now.
void CQuilletView::hideTip() {
  tipRow_ = -1;
  SendMessageW(tip_, TTM_POP, 0, 0);
}

void CQuilletView::onTip(NMTTDISPINFOW& asked) {
  std::string text;
  for (const int column : {contentColumn, phoneColumn, timeColumn}) {
    const std::string part = cellText(tipRow_, column);
    text += (text.empty() || part.empty() ? "" : "\r\n") + part;
  }
  tipText_ = framework::toWide(text).substr(0, tipLength);
  asked.lpszText = tipText_.data();
}

}  // namespace list
