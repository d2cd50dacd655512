#pragma once

#include "skin/skin_dialog.h"

namespace skin {

// Asks whether a message that was begun is to be kept. Only IDCANCEL is a refusal.
class SaveQuestionDialog : public CSkinDialog {
 public:
  SaveQuestionDialog();

 protected:
  bool onInitDialog() override;

 private:
  CButtonEx ok_;
  CButtonEx cancel_;
};

}  // namespace skin
