#pragma once

#include <string>

#include "dialogs/compose_services.h"
#include "dialogs/message_counter.h"
#include "dialogs/outgoing.h"
#include "skin/message_entry.h"
#include "skin/number_entry.h"
#include "skin/skin_dialog.h"

namespace dialogs {

// Composes one text and sends it to one or several numbers. What has been typed stays on the screen until it
// is in a file or the person has said that it is not wanted.
class NewMessageDialog : public skin::CSkinDialog {
 public:
  explicit NewMessageDialog(ComposeServices services);

 protected:
  bool onInitDialog() override;
  void onOk() override { onSend(); }
  void onCancel() override;
  const framework::MessageMap* messageMap() const override;

 private:
  // Shows how much of a message the text takes up; false when some of it had to be cut off.
  bool countContent();
  std::string content() const;
  void onReceiversChanged();
  void onSend();
  void onContact();

  void showProgress(Outgoing::Step step, std::size_t index, std::size_t total,
                    const std::string& number) const;
  // Ends the dialog when everything is filed, else tells why not and keeps it open, as it does when nothing
  // could be sent to.
  void finishSending(const store::WriteResult& problem, bool anyFiled);
  void showNotFiled(const store::WriteResult& problem) const;
  void holdForFiling(bool hold);
  // Uses the recipients that composeState() holds.
  store::WriteResult saveDraft(const std::string& text) const;
  int showMessage(const std::string& text) const;

  ComposeServices services_;
  skin::CNumberEntry receivers_;
  skin::CMessageEntry content_;
  skin::CButtonEx send_;
  skin::CButtonEx cancel_;
  skin::CButtonEx contact_;
  bool needsUcs2_ = false;
  std::wstring whole_;     // the content when it last fitted
  OutgoingResult result_;  // of the last sending; its unfiled messages are filed by the next Send or Cancel
};

}  // namespace dialogs
