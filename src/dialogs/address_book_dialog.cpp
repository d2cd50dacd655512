#include "dialogs/address_book_dialog.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/compose_state.h"
#include "dialogs/recipients.h"
#include "framework/input_lock.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "resources/resource_ids.h"

namespace dialogs {
namespace {

using framework::formatText;
using framework::loadString;

constexpr int nameColumn = 0;
constexpr int numberColumn = 1;

constexpr skin::ControlPlace places[] = {
    {"AddRect", IDC_ADD_CONTACT},
    {"RmvRect", IDC_REMOVE_CONTACT},
    {"OkRect", IDC_ADDRESS_OK},
    {"CancelRect", IDC_ADDRESS_CANCEL},
};

}  // namespace

AddressBookDialog::AddressBookDialog(phonelink::PhoneLink& link, std::string receivers)
    : CSkinDialog(IDD_ADDRESS_BOOK), link_(link), receivers_(std::move(receivers)) {}

const framework::MessageMap* AddressBookDialog::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onNotify<&AddressBookDialog::onChosenKey, NMLVKEYDOWN>(LVN_KEYDOWN, IDC_CHOSEN),
      framework::onControl<&AddressBookDialog::onAdd>(BN_CLICKED, IDC_ADD_CONTACT),
      framework::onControl<&AddressBookDialog::onRemove>(BN_CLICKED, IDC_REMOVE_CONTACT),
      framework::onControl<&AddressBookDialog::onOk>(BN_CLICKED, IDC_ADDRESS_OK),
      framework::onControl<&AddressBookDialog::onCancelButton>(BN_CLICKED, IDC_ADDRESS_CANCEL),
  };
  static const framework::MessageMap map{entries, CSkinDialog::messageMap()};
  return &map;
}

bool AddressBookDialog::onInitDialog() {
  CSkinDialog::onInitDialog();
  phonebook_.subclass(handle(), IDC_PHONEBOOK);
  chosen_.subclass(handle(), IDC_CHOSEN);
  phonebook_.setPickHandler([this](int row) { choose(std::span(&row, 1)); });
  setUpColumns();
  skinButtons({{add_, IDC_ADD_CONTACT},
               {remove_, IDC_REMOVE_CONTACT},
               {ok_, IDC_ADDRESS_OK},
               {cancel_, IDC_ADDRESS_CANCEL}});
  constexpr skin::ControlText texts[] = {
      {IDC_ADD_CONTACT, IDS_ADD_CONTACT}, {IDC_REMOVE_CONTACT, IDS_REMOVE_CONTACT},
      {IDC_ADDRESS_OK, IDS_OK},           {IDC_ADDRESS_CANCEL, IDS_CANCEL},
      {skin::theDialog, IDS_CONTACTS},    {IDC_PHONEBOOK, IDS_CONTACTS},
      {IDC_CHOSEN, IDS_CHOSEN_NUMBERS},
  };
  setTexts(texts);
  placeControls("Address Dlg", places);
  showPhonebook();
  phonebook_.addExtendedStyle(LVS_EX_FULLROWSELECT);
  chosen_.addExtendedStyle(LVS_EX_FULLROWSELECT);
  for (const std::string& number : splitRecipients(receivers_))
    chosen_.insertItem(chosen_.itemCount(), number);
  return true;
}

void AddressBookDialog::setUpColumns() {
  const auto width = [this](int pixels) { return framework::scaledPixels(handle(), pixels); };
  phonebook_.insertColumn(nameColumn, loadString(IDS_NAME), LVCFMT_LEFT, width(100));
  phonebook_.insertColumn(numberColumn, loadString(IDS_PHONE), LVCFMT_LEFT, width(200));
  // What is inserted as the first column of a list is never centred; what becomes the first one may be.
  chosen_.insertColumn(0, "", LVCFMT_LEFT, 0);
  chosen_.insertColumn(1, loadString(IDS_PHONE), LVCFMT_CENTER, width(300), 0);
  chosen_.deleteColumn(0);
}

void AddressBookDialog::showPhonebook() {
  const framework::CWaitCursor wait;
  std::vector<phonelink::Contact> contacts;
  {
    const framework::CInputLock lock;
    contacts = link_.contacts();
  }
  const framework::CRedrawLock lock(phonebook_);
  for (const phonelink::Contact& contact : contacts) {
    const int row = phonebook_.insertItem(phonebook_.itemCount(), contact.name);
    phonebook_.setItemText(row, numberColumn, contact.number);
  }
}

void AddressBookDialog::onAdd() {
  std::vector<int> rows;
  for (int row = -1; (row = phonebook_.nextSelected(row)) >= 0;) rows.push_back(row);
  // From the bottom up, as messages are filed, too.
  std::ranges::reverse(rows);
  choose(rows);
}

void AddressBookDialog::choose(std::span<const int> rows) {
  std::vector<std::string> numbers;
  std::string refused;
  for (const int row : rows) {
    std::string number = phonebook_.itemText(row, numberColumn);
    if (isSingleNumber(number))
      numbers.push_back(std::move(number));
    else
      refused = formatText(loadString(IDS_NUMBER_REFUSED), {number});
  }
  chosen_.appendMissing(numbers);
  setItemText(IDC_ADDRESS_NOTE, refused);
  if (!refused.empty()) MessageBeep(MB_ICONWARNING);
}

void AddressBookDialog::onRemove() {
  chosen_.deleteItems(skin::CCustomListCtrl::selected);
}

void AddressBookDialog::onChosenKey(NMLVKEYDOWN& key) {
  if (key.wVKey == VK_DELETE) onRemove();
}

void AddressBookDialog::onOk() {
  ComposeState& state = composeState();
  state.chosen.clear();
  std::vector<std::string> numbers;
  for (int row = 0; row < chosen_.itemCount(); ++row) {
    numbers.push_back(chosen_.itemText(row, 0));
    state.chosen.push_back({"", numbers.back()});
  }
  state.recipients = joinRecipients(numbers);
  endDialog(IDOK);
}

}  // namespace dialogs
