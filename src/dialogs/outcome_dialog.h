#pragma once

#include "dialogs/compose_services.h"
#include "skin/skin_dialog.h"

namespace dialogs {

// Lists what became of the last Send, receiver by receiver, and tries again to send what was not sent.
class OutcomeDialog : public skin::CSkinDialog {
 public:
  // The services' last Send is shown.
  explicit OutcomeDialog(ComposeServices services);

 protected:
  bool onInitDialog() override;
  const framework::MessageMap* messageMap() const override;

 private:
  void showRows();
  void onTryAgain();
  void takeReports();
  void onListKey(NMLVKEYDOWN& key);
  // The selected rows, or all when none is selected, as lines "number TAB what became of it".
  void copyRows() const;

  ComposeServices services_;
  skin::CButtonEx again_;
  skin::CButtonEx close_;
};

}  // namespace dialogs
