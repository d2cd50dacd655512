#include "dialogs/new_message_dialog.h"

#include <algorithm>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "dialogs/address_book_dialog.h"
#include "dialogs/compose_state.h"
#include "dialogs/recipients.h"
#include "dialogs/sending_reports.h"
#include "framework/input_lock.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/reports.h"
#include "resources/resource_ids.h"
#include "skin/save_question_dialog.h"
#include "store/time_stamp.h"
#include "text/unicode.h"

namespace dialogs {
namespace {

using framework::formatText;
using framework::loadString;

constexpr WPARAM receiversLimit = 125;

constexpr skin::ControlPlace places[] = {
    {"OkRect", IDC_SEND},
    {"CancelRect", IDC_MESSAGE_CANCEL},
    {"ContactRect", IDC_CONTACT},
    {"SMSRect", IDC_MESSAGE_CONTENT},
    {"PhoneRect", IDC_RECEIVERS},
    {"ContentRect", IDC_CONTENT_LABEL},
    {"ReceiverRect", IDC_RECEIVER_LABEL},
    {"CountRect", IDC_COUNTER},
    {"NumbersRect", IDC_RECEIVER_COUNT},
    {"DlgRect", skin::theDialog},
};

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::u16string unitsOf(std::wstring_view text) {
  return {text.begin(), text.end()};
}

}  // namespace

NewMessageDialog::NewMessageDialog(ComposeServices services, ComposeStart start)
    : CSkinDialog(IDD_NEW_MESSAGE), services_(std::move(services)), start_(std::move(start)) {}

const framework::MessageMap* NewMessageDialog::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onControl<&NewMessageDialog::countContent>(EN_CHANGE, IDC_MESSAGE_CONTENT),
      framework::onControl<&NewMessageDialog::onReceiversChanged>(EN_CHANGE, IDC_RECEIVERS),
      framework::onControl<&NewMessageDialog::onContact>(BN_CLICKED, IDC_CONTACT),
      framework::onControl<&NewMessageDialog::onSend>(BN_CLICKED, IDC_SEND),
      framework::onControl<&NewMessageDialog::onCancel>(BN_CLICKED, IDC_MESSAGE_CANCEL),
  };
  static const framework::MessageMap map{entries, CSkinDialog::messageMap()};
  return &map;
}

bool NewMessageDialog::onInitDialog() {
  CSkinDialog::onInitDialog();
  receivers_.subclass(handle(), IDC_RECEIVERS);
  receivers_.send(EM_SETLIMITTEXT, receiversLimit);
  content_.subclass(handle(), IDC_MESSAGE_CONTENT);
  content_.send(EM_SETLIMITTEXT, plainLimit);

  skinButtons({{send_, IDC_SEND}, {cancel_, IDC_MESSAGE_CANCEL}, {contact_, IDC_CONTACT}});
  constexpr skin::ControlText texts[] = {
      {IDC_RECEIVER_LABEL, IDS_RECEIVER}, {IDC_CONTACT, IDS_CONTACT},
      {IDC_CONTENT_LABEL, IDS_CONTENT},   {IDC_SEND, IDS_SEND},
      {IDC_MESSAGE_CANCEL, IDS_CANCEL},   {skin::theDialog, IDS_NEW_MESSAGE},
  };
  setTexts(texts);
  placeControls("New MMS", places);
  return !fillFields();
}

bool NewMessageDialog::fillFields() {
  receivers_.setText(start_.receivers);
  const std::u16string units = text::withWholeLineEnds(text::utf16FromUtf8(start_.text));
  const std::wstring text(units.begin(), units.end());
  SetWindowTextW(content_.handle(), text.c_str());
  countContent();
  // What of a draft has no place here would be nowhere if the draft went.
  if (framework::windowWideText(content_.handle()) != text) start_.draft.reset();
  content_.send(EM_EMPTYUNDOBUFFER);
  cutText_ = IDS_CUT;
  if (start_.receivers.empty()) return false;
  const int end = GetWindowTextLengthW(content_.handle());
  content_.send(EM_SETSEL, static_cast<WPARAM>(end), end);
  SetFocus(content_.handle());
  return true;
}

bool NewMessageDialog::countContent() {
  const std::wstring text = framework::windowWideText(content_.handle());
  const MessageCount count = countMessage(unitsOf(text));
  if (count.cut) {
    DWORD caret = 0;
    content_.send(EM_GETSEL, 0, reinterpret_cast<LPARAM>(&caret));
    const std::wstring left(count.cut->begin(), count.cut->end());
    const std::wstring former = whole_;  // the box tells at once what it holds then
    content_.replaceText(former.c_str(), left.c_str(), std::min(caret, static_cast<DWORD>(left.size())));
    MessageBeep(MB_ICONWARNING);
    services_.showStatus(formatText(loadString(cutText_), {std::to_string(text.size() - count.cut->size())}));
  } else if (text::withoutHalves(unitsOf(text)).size() == text.size()) {
    whole_ = text;
  }
  needsUcs2_ = count.needsUcs2;
  if (!needsUcs2_) content_.send(EM_SETLIMITTEXT, plainLimit);
  setItemText(IDC_COUNTER, counterText(count));
  return !count.cut;
}

std::string NewMessageDialog::content() const {
  return text::utf8FromUtf16(text::withoutHalves(unitsOf(framework::windowWideText(content_.handle()))));
}

// The field shows only a few of many numbers.
void NewMessageDialog::onReceiversChanged() {
  const auto count = std::ranges::count_if(splitRecipients(receivers_.text()), hasDigit);
  setItemText(IDC_RECEIVER_COUNT,
              count > 0 ? formatText(loadString(IDS_RECEIVER_COUNT), {std::to_string(count)}) : "");
}

void NewMessageDialog::onSend() {
  const framework::CWaitCursor wait;
  Sending& last = services_.lastSend;
  if (held_) {
    // Everything has been sent that could be; only the filing is to be tried again.
    finishSending(fileAgain(last, services_.folders));
    return;
  }
  // A program that sets the text may not have told so; what is cut must be seen before it is sent.
  if (!countContent()) return;
  const std::string text = content();
  if (!services_.reconnect()) return;
  if (text.empty()) {
    showMessage(loadString(IDS_EMPTY_MESSAGE));
    return;
  }
  const std::string receivers = receivers_.text();
  if (receivers.empty()) {
    showMessage(loadString(IDS_NO_RECEIVER));
    return;
  }
  std::optional<store::SmsRecord> replaced = start_.draft;  // nothing may fail once it is sent
  store::WriteResult problem;
  {
    const framework::CInputLock lock;
    problem = sendToAll(splitRecipients(receivers), text, needsUcs2_, outgoingWith(services_), last);
  }
  if (last.filed() + last.unfiled() > 0) last.replaced = std::move(replaced);
  finishSending(problem);
}

void NewMessageDialog::finishSending(const store::WriteResult& problem) {
  const Sending& last = services_.lastSend;
  const std::size_t unfiled = last.unfiled();
  const bool anyFiled = last.filed() > 0;
  holdForFiling(unfiled > 0);
  if (unfiled > 0) {
    if (anyFiled) services_.reloadFiled();
    services_.showStatus(formatText(loadString(IDS_NOT_FILED_YET), {std::to_string(unfiled)}));
    showNotFiled(problem);
    return;
  }
  const bool stays = last.sent() == 0 && !anyFiled;
  try {
    // What reading the folders again has to say comes behind it.
    if (const std::string notSent = notSentText(last); !notSent.empty()) services_.showStatus(notSent);
    if (anyFiled) services_.reloadFiled();
    if (!stays) takeOutDraft();
    showMessage(formatText(loadString(IDS_SENT_COUNT),
                           {std::to_string(last.sent()), std::to_string(last.deliveries.size()),
                            loadString(IDS_MESSAGES_SENT)}));
  } catch (const std::bad_alloc&) {
    if (!stays) endDialog(IDOK);  // a dialog that stays could send again
    throw;
  }
  if (!stays) endDialog(IDOK);
}

// Comes after everything that takes the draft's place is in its file and the tables are as their files.
void NewMessageDialog::takeOutDraft() {
  if (!start_.draft) return;
  const store::WriteResult erased = services_.folders.erase(store::Folder::PDraft, *start_.draft);
  if (erased.ok() && services_.lastSend.replaced == start_.draft) services_.lastSend.replaced.reset();
  services_.reloadFiled();
  // That a folder could not be read has been told.
  if (!erased.ok() && erased.outcome != store::WriteResult::Outcome::notRead)
    showMessage(list::describe(erased, IDS_CANNOT_CHANGE));
}

void NewMessageDialog::showNotFiled(const store::WriteResult& problem) const {
  const bool sent = held_ && services_.lastSend.sentUnfiled() > 0;
  showMessage(list::describe(problem, sent ? IDS_SENT_NOT_FILED : IDS_CANNOT_WRITE));
}

// What is waiting to be filed has been sent as it stands: it can be looked at and copied, not changed.
void NewMessageDialog::holdForFiling(bool hold) {
  held_ = hold;
  receivers_.send(EM_SETREADONLY, hold);
  content_.send(EM_SETREADONLY, hold);
  contact_.EnableWindow(hold ? 0 : 1);
}

void NewMessageDialog::onContact() {
  bool connected = false;
  {
    const framework::CWaitCursor wait;
    connected = services_.reconnect();
  }
  if (!connected) return;
  AddressBookDialog book(services_.link, receivers_.text());
  if (book.doModal(handle()) == IDOK) receivers_.setText(composeState().recipients);
}

void NewMessageDialog::onCancel() {
  const std::string text = content();
  composeState().recipients = receivers_.text();
  if (text.empty()) {
    endDialog(IDCANCEL);
    return;
  }
  skin::SaveQuestionDialog question;
  if (question.doModal(handle()) != IDCANCEL) {
    const store::WriteResult problem =
        held_ ? fileAgain(services_.lastSend, services_.folders) : saveDraft(text);
    services_.reloadFiled();
    if (!problem.ok()) {
      showNotFiled(problem);
      return;
    }
    takeOutDraft();
  }
  endDialog(IDCANCEL);
}

store::WriteResult NewMessageDialog::saveDraft(const std::string& text) const {
  return services_.folders.append(store::Folder::PDraft, {.Content = text,
                                                          .Time = store::timeStamp(framework::localTime()),
                                                          .Phone = composeState().recipients});
}

int NewMessageDialog::showMessage(const std::string& text) const {
  return MessageBoxW(handle(), framework::toWide(text).c_str(),
                     framework::toWide(loadString(IDS_TITLE)).c_str(), MB_OK);
}

}  // namespace dialogs
