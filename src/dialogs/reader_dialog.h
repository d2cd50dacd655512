#pragma once

#include <span>

#include "dialogs/reader_position.h"
#include "resources/resource_ids.h"
#include "skin/skin_dialog.h"
#include "store/sms_record.h"

namespace dialogs {

// Shows one message of a folder and steps through the others. It only reads. The records must outlive it.
// It ends with ID_REPLY, ID_FORWARD or ID_EDIT_AS_NEW when that is to be done with the message shown.
class ReaderDialog : public skin::CSkinDialog {
 public:
  // position: the slot of the message shown first.
  ReaderDialog(std::span<const store::SmsRecord> records, int position);

  // The slot of the message shown.
  int position() const { return position_.position(); }

 protected:
  bool onInitDialog() override;
  const framework::MessageMap* messageMap() const override;

 private:
  void onPhoneChosen();
  void onReply() { endDialog(ID_REPLY); }
  void onForward() { endDialog(ID_FORWARD); }
  void onEditAsNew() { endDialog(ID_EDIT_AS_NEW); }
  void onPrevious();
  void onNext();
  void showRecord();
  void updateButtons();
  void takeUpSelection();
  LRESULT combo(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

  std::span<const store::SmsRecord> records_;
  ReaderPosition position_;
  skin::CButtonEx reply_;
  skin::CButtonEx forward_;
  skin::CButtonEx editAsNew_;
  skin::CButtonEx previous_;
  skin::CButtonEx next_;
};

}  // namespace dialogs
