#include "skin/contact_list.h"

namespace skin {
namespace {

constexpr int numberColumn = 1;
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
  if (const int row = nextSelected(-1); row >= 0 && picked_)
    picked_->appendIfMissing(itemText(row, numberColumn));
  return 0;
}

}  // namespace skin
