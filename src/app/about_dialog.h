#pragma once

#include "skin/skin_dialog.h"

namespace app {

// Name, version and what the program is.
class AboutDialog : public skin::CSkinDialog {
 public:
  AboutDialog();

 protected:
  bool onInitDialog() override;

 private:
  skin::CButtonEx ok_;
};

}  // namespace app
