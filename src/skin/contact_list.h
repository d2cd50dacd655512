#pragma once

#include <functional>
#include <utility>

#include "skin/custom_list_ctrl.h"

namespace skin {

// A list of contacts or of their numbers: Ctrl+A selects all of them, a double click picks the first selected
// one.
class CContactList : public CCustomListCtrl {
 public:
  // What is done with the row that a double click picks; without it nothing is.
  void setPickHandler(std::function<void(int row)> pick) { pick_ = std::move(pick); }

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  LRESULT onChar();
  LRESULT onKeyDown(UINT key);
  LRESULT onDoubleClick(NMHDR&);

  std::function<void(int row)> pick_;
};

}  // namespace skin
