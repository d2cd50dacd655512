#pragma once

#include "framework/dialog.h"

namespace app {

// Name, version and what the program is.
class AboutDialog : public framework::CDialog {
 public:
  AboutDialog();

 protected:
  bool onInitDialog() override;
};

}  // namespace app
