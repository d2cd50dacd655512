#pragma once

#include "skin/skin_dialog.h"

namespace skin {

// Asks before messages are deleted. Only IDCANCEL is a refusal.
class DeleteConfirmDialog : public CSkinDialog {
 public:
  DeleteConfirmDialog();

  int deleteAll = 0;  // nonzero: the question is about the whole folder

 protected:
  bool onInitDialog() override;

 private:
  CButtonEx ok_;
  CButtonEx cancel_;
};

}  // namespace skin
