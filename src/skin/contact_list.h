#pragma once

#include "skin/custom_list_ctrl.h"

namespace skin {

// The list of contacts to pick numbers from: Ctrl+A selects all of them, a double click puts the first
// selected one's number, its second column, into another list.
class CContactList : public CCustomListCtrl {
 public:
  // The list that takes the numbers, each once; it must outlive this one's window.
  void setPickedList(CCustomListCtrl& picked) { picked_ = &picked; }

 protected:
  const framework::MessageMap* messageMap() const override;

 private:
  LRESULT onChar();
  LRESULT onKeyDown(UINT key);
  LRESULT onDoubleClick(NMHDR&);

  CCustomListCtrl* picked_ = nullptr;
};

}  // namespace skin
