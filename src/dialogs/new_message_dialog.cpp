#include "dialogs/new_message_dialog.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "dialogs/address_book_dialog.h"
#include "dialogs/compose_state.h"
#include "dialogs/recipients.h"
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

NewMessageDialog::NewMessageDialog(ComposeServices services)
    : CSkinDialog(IDD_NEW_MESSAGE), services_(std::move(services)) {}

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
  placeControls("New MMS", places);
  constexpr skin::ControlText texts[] = {
      {IDC_RECEIVER_LABEL, IDS_RECEIVER}, {IDC_CONTACT, IDS_CONTACT},
      {IDC_CONTENT_LABEL, IDS_CONTENT},   {IDC_SEND, IDS_SEND},
      {IDC_MESSAGE_CANCEL, IDS_CANCEL},   {skin::theDialog, IDS_NEW_MESSAGE},
  };
  setTexts(texts);
  countContent();
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
    services_.showStatus(formatText(loadString(IDS_CUT), {std::to_string(text.size() - count.cut->size())}));
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

void NewMessageDialog::showProgress(Outgoing::Step step, std::size_t index, std::size_t total,
                                    const std::string& number) const try {
  const UINT pattern = step == Outgoing::Step::sending ? IDS_SENDING
                       : step == Outgoing::Step::sent  ? IDS_SENT_TO
                                                       : IDS_NOT_SENT_TO;
  services_.showStatus(
      formatText(loadString(pattern), {number, std::to_string(index + 1), std::to_string(total)}));
} catch (const std::bad_alloc&) {
  // Nobody misses it who still gets the message sent.
}

void NewMessageDialog::onSend() {
  const framework::CWaitCursor wait;
  if (!result_.unfiled.empty()) {
    // Everything has been sent that could be; only the filing is to be tried again.
    const std::size_t before = result_.unfiled.size();
    const store::WriteResult problem = fileAgain(result_.unfiled, services_.folders);
    services_.showStatus(loadString(IDS_READY));
    finishSending(problem, result_.unfiled.size() < before);
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
  const Outgoing outgoing{services_.link, services_.folders,
                          [] { return store::timeStamp(framework::localTime()); },
                          [this](auto... progress) { showProgress(progress...); }};
  {
    const framework::CInputLock lock;
    result_ = sendToAll(splitRecipients(receivers), text, needsUcs2_, outgoing);
  }
  finishSending(result_.problem, result_.filed > 0);
}

void NewMessageDialog::finishSending(const store::WriteResult& problem, bool anyFiled) {
  if (anyFiled) services_.reloadFiled();
  holdForFiling(!result_.unfiled.empty());
  if (!result_.unfiled.empty()) {
    services_.showStatus(formatText(loadString(IDS_NOT_FILED_YET), {std::to_string(result_.unfiled.size())}));
    showNotFiled(problem);
    return;
  }
  const bool stays = result_.sent == 0 && result_.filed == 0 && !anyFiled;
  try {
    showMessage(formatText(
        loadString(IDS_SENT_COUNT),
        {std::to_string(result_.sent), std::to_string(result_.total), loadString(IDS_MESSAGES_SENT)}));
  } catch (const std::bad_alloc&) {
    if (!stays) endDialog(IDOK);  // a dialog that stays could send again
    throw;
  }
  if (!stays) endDialog(IDOK);
}

void NewMessageDialog::showNotFiled(const store::WriteResult& problem) const {
  const bool sent = std::ranges::any_of(
      result_.unfiled, [](const Filing& filing) { return filing.folder == store::Folder::PSent; });
  showMessage(list::describe(problem, sent ? IDS_SENT_NOT_FILED : IDS_CANNOT_WRITE));
}

// What is waiting to be filed has been sent as it stands: it can be looked at and copied, not changed.
void NewMessageDialog::holdForFiling(bool hold) {
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
        result_.unfiled.empty() ? saveDraft(text) : fileAgain(result_.unfiled, services_.folders);
    services_.reloadFiled();
    if (!problem.ok()) {
      showNotFiled(problem);
      return;
    }
  }
  endDialog(IDCANCEL);
}

store::WriteResult NewMessageDialog::saveDraft(const std::string& text) const {
  store::SmsRecord draft;
  draft.Content = text;
  draft.Phone = composeState().recipients;
  draft.Time = store::timeStamp(framework::localTime());
  return services_.folders.append(store::Folder::PDraft, draft);
}

int NewMessageDialog::showMessage(const std::string& text) const {
  return MessageBoxW(handle(), framework::toWide(text).c_str(),
                     framework::toWide(loadString(IDS_TITLE)).c_str(), MB_OK);
}

}  // namespace dialogs
