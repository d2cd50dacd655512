#pragma once

#include <span>
#include <string>

#include "phonelink/phone_link.h"
#include "skin/contact_list.h"
#include "skin/skin_dialog.h"

namespace dialogs {

// Picks numbers from the handset's phonebook, which must be open. On Ok it leaves them in composeState().
class AddressBookDialog : public skin::CSkinDialog {
 public:
  // receivers: the numbers chosen so far, separated by ";".
  AddressBookDialog(phonelink::PhoneLink& link, std::string receivers);

 protected:
  bool onInitDialog() override;
  void onOk() override;
  const framework::MessageMap* messageMap() const override;

 private:
  void setUpColumns();
  void showPhonebook();
  void onAdd();
  void onRemove();
  void onChosenKey(NMLVKEYDOWN& key);
  // The numbers of these rows of the phonebook are chosen; says why one cannot be.
  void choose(std::span<const int> rows);
  void onCancelButton() { onCancel(); }

  phonelink::PhoneLink& link_;
  std::string receivers_;
  skin::CContactList chosen_;
  skin::CContactList phonebook_;
  skin::CButtonEx add_;
  skin::CButtonEx remove_;
  skin::CButtonEx ok_;
  skin::CButtonEx cancel_;
};

}  // namespace dialogs
