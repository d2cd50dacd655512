#pragma once

#include <string>

#include "app/manual.h"
#include "skin/skin_dialog.h"

namespace app {

// Name, version and what the program is; opens the manual.
class AboutDialog : public skin::CSkinDialog {
 public:
  // The program's folder, ending in a backslash.
  explicit AboutDialog(std::string moduleDirectory);

 protected:
  bool onInitDialog() override;
  const framework::MessageMap* messageMap() const override;

 private:
  void onManual() { openManual(handle(), moduleDirectory_); }

  std::string moduleDirectory_;
  skin::CButtonEx manual_;
  skin::CButtonEx ok_;
};

}  // namespace app
