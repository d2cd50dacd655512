#include "skin/contact_list.h"

namespace skin {
namespace {

constexpr int everyRow = -1;

}  // namespace

const framework::MessageMap* CContactList::messageMap() const {
  using namespace framework;
  using List = CContactList;
  static constexpr MessageEntry entries[] = {
      onPlain<&List::onChar>(WM_CHAR),
      onKey<&List::onKeyDown>(WM_KEYDOWN),
      onReflected<&List::onDoubleClick>(NM_DBLCLK),
  };
  static const MessageMap map{entries, CCustomListCtrl::messageMap()};
  return &map;
}

LRESULT CContactList::onChar() {
  return defaultProcessing();
}

LRESULT CContactList::onKeyDown(UINT key) {
  if (GetKeyState(VK_CONTROL) < 0 && (key == 'A' || key == 'a')) select(everyRow);
  return defaultProcessing();
}

LRESULT CContactList::onDoubleClick(NMHDR&) {
  const int row = nextSelected(-1);
  if (row >= 0 && pick_) pick_(row);
  return 0;
}

}  // namespace skin
