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
  const int row = nextSelected(-1);
  if (row < 0 || !picked_) return 0;
  const std::string number = itemText(row, numberColumn);
  // A number with a separator in it would be two.
  if (number.find(';') == std::string::npos) picked_->appendIfMissing(number);
  return 0;
}

}  // namespace skin
