#pragma once

#include <functional>

#include "skin/skin_dialog.h"

namespace app {

// Name, version and what the program is; opens the manual.
class AboutDialog : public skin::CSkinDialog {
 public:
  // Whether there is a manual, and what opens it.
  AboutDialog(bool manualThere, std::function<void()> openManual);

 protected:
  bool onInitDialog() override;
  const framework::MessageMap* messageMap() const override;

 private:
  void onManual() { openManual_(); }

  bool manualThere_;
  std::function<void()> openManual_;
  skin::CButtonEx manual_;
  skin::CButtonEx ok_;
};

}  // namespace app
