#pragma once

#include <string>

#include "dialogs/compose_services.h"
#include "dialogs/compose_start.h"
#include "dialogs/message_counter.h"
#include "resources/resource_ids.h"
#include "skin/message_entry.h"
#include "skin/number_entry.h"
#include "skin/skin_dialog.h"

namespace dialogs {

// Composes one text and sends it to one or several numbers. What has been typed stays on the screen until it
// is in a file or the person has said that it is not wanted.
class NewMessageDialog : public skin::CSkinDialog {
 public:
  explicit NewMessageDialog(ComposeServices services, ComposeStart start = {});

 protected:
  bool onInitDialog() override;
  void onOk() override { onSend(); }
  void onCancel() override;
  const framework::MessageMap* messageMap() const override;

 private:
  // Puts in what the message starts with; whether it has set the focus.
  bool fillFields();
  // Shows how much of a message the text takes up; false when some of it had to be cut off.
  bool countContent();
  std::string content() const;
  void onReceiversChanged();
  void onSend();
  void onContact();

  // Ends the dialog when everything is filed, else tells why not and keeps it open, as it does when nothing
  // could be sent to.
  void finishSending(const store::WriteResult& problem);
  void showNotFiled(const store::WriteResult& problem) const;
  void holdForFiling(bool hold);
  // The draft that this message takes the place of goes, or a box says why not.
  void takeOutDraft();
  // Uses the recipients that composeState() holds.
  store::WriteResult saveDraft(const std::string& text) const;
  int showMessage(const std::string& text) const;

  ComposeServices services_;
  ComposeStart start_;
  skin::CNumberEntry receivers_;
  skin::CMessageEntry content_;
  skin::CButtonEx send_;
  skin::CButtonEx cancel_;
  skin::CButtonEx contact_;
  bool needsUcs2_ = false;
  std::wstring whole_;           // the content when it last fitted
  UINT cutText_ = IDS_LEFT_OUT;  // says how much was cut off; at first there is nothing to bring back
  bool held_ = false;            // what was sent is not all filed; the next Send or Cancel files it
};

}  // namespace dialogs
