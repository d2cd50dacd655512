#pragma once

#include <span>

#include "dialogs/reader_position.h"
#include "skin/skin_dialog.h"
#include "store/sms_record.h"

namespace dialogs {

// Shows one message of a folder and steps through the others. It only reads. The records must outlive it.
class ReaderDialog : public skin::CSkinDialog {
 public:
  // position: the slot of the message shown first.
  ReaderDialog(std::span<const store::SmsRecord> records, int position);

 protected:
  bool onInitDialog() override;
  const framework::MessageMap* messageMap() const override;

 private:
  void onPhoneChosen();
  void onPrevious();
  void onNext();
  void showRecord();
  void updateButtons();
  void takeUpSelection();
  LRESULT combo(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

  std::span<const store::SmsRecord> records_;
  ReaderPosition position_;
  skin::CButtonEx previous_;
  skin::CButtonEx next_;
};

}  // namespace dialogs
