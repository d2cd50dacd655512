#include "dialogs/reader_dialog.h"

#include <richedit.h>

#include <string>
#include <string_view>

#include "dialogs/recipients.h"
#include "framework/linked_font.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "store/time_stamp.h"

namespace dialogs {
namespace {

constexpr skin::ControlPlace places[] = {
    {"SPhoneRect", IDC_PHONE_LABEL},
    {"PhoneRect", IDC_READER_PHONE},
    {"STimeRect", IDC_TIME_LABEL},
    {"TimeRect", IDC_READER_TIME},
    {"ContentRect", IDC_CONTENT_LABEL},
    {"SmsRect", IDC_READER_CONTENT},
    {"ReplyRect", IDC_REPLY},
    {"ForwardRect", IDC_FORWARD},
    {"EditRect", IDC_EDIT_AS_NEW},
    {"PrevRect", IDC_PREVIOUS},
    {"NextRect", IDC_NEXT},
    {"DlgRect", skin::theDialog},
};

// Unlike the list, the control draws with one font only, and that of the dialog has few scripts.
void showInFullFont(HWND control, std::wstring_view text) {
  const auto font = reinterpret_cast<HFONT>(SendMessageW(GetParent(control), WM_GETFONT, 0, 0));
  CHARFORMATW format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_FACE | CFM_CHARSET;
  format.bCharSet = DEFAULT_CHARSET;
  lstrcpynW(format.szFaceName, framework::faceFor(font, text).c_str(), LF_FACESIZE);
  SendMessageW(control, EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
}

}  // namespace

ReaderDialog::ReaderDialog(std::span<const store::SmsRecord> records, int position)
    : CSkinDialog(IDD_READER), records_(records), position_(position, static_cast<int>(records.size())) {}

const framework::MessageMap* ReaderDialog::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onControl<&ReaderDialog::onPhoneChosen>(CBN_SELCHANGE, IDC_READER_PHONE),
      framework::onControl<&ReaderDialog::onReply>(BN_CLICKED, IDC_REPLY),
      framework::onControl<&ReaderDialog::onForward>(BN_CLICKED, IDC_FORWARD),
      framework::onControl<&ReaderDialog::onEditAsNew>(BN_CLICKED, IDC_EDIT_AS_NEW),
      framework::onControl<&ReaderDialog::onPrevious>(BN_CLICKED, IDC_PREVIOUS),
      framework::onControl<&ReaderDialog::onNext>(BN_CLICKED, IDC_NEXT),
  };
  static const framework::MessageMap map{entries, CSkinDialog::messageMap()};
  return &map;
}

LRESULT ReaderDialog::combo(UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendMessageW(item(IDC_READER_PHONE), message, wParam, lParam);
}

bool ReaderDialog::onInitDialog() {
  CSkinDialog::onInitDialog();
  reply_.subclass(handle(), IDC_REPLY);
  previous_.subclass(handle(), IDC_PREVIOUS);
  next_.subclass(handle(), IDC_NEXT);

  // A message that looks like markup is shown as it is.
  SendMessageW(item(IDC_READER_CONTENT), EM_SETTEXTMODE, TM_PLAINTEXT, 0);
  combo(CB_RESETCONTENT);
  combo(WM_SETREDRAW, FALSE);
  for (const store::SmsRecord& record : records_)
    combo(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(framework::toWide(record.Phone).c_str()));
  combo(WM_SETREDRAW, TRUE);
  showRecord();
  updateButtons();

  skinButtons({{reply_, IDC_REPLY},
               {forward_, IDC_FORWARD},
               {editAsNew_, IDC_EDIT_AS_NEW},
               {previous_, IDC_PREVIOUS},
               {next_, IDC_NEXT}});
  constexpr skin::ControlText texts[] = {
      {IDC_PHONE_LABEL, IDS_PHONE},       {IDC_TIME_LABEL, IDS_TIME},
      {IDC_CONTENT_LABEL, IDS_CONTENT},   {IDC_REPLY, IDS_REPLY},
      {IDC_FORWARD, IDS_FORWARD},         {IDC_EDIT_AS_NEW, IDS_EDIT_AS_NEW},
      {skin::theDialog, IDS_OPEN_MESSAGE}};
  setTexts(texts);
  placeControls("Open MMS", places);
  return true;
}

// The place in the folder is always taken from the list, so that list and buttons cannot disagree.
void ReaderDialog::takeUpSelection() {
  const int selected = static_cast<int>(combo(CB_GETCURSEL));
  if (selected >= 0) position_.moveTo(selected);
}

void ReaderDialog::onPhoneChosen() {
  position_.choose(static_cast<int>(combo(CB_GETCURSEL)));
  showRecord();
  updateButtons();
}

void ReaderDialog::onPrevious() {
  takeUpSelection();
  position_.stepBack();
  showRecord();
  updateButtons();
}

void ReaderDialog::onNext() {
  takeUpSelection();
  position_.stepForward();
  showRecord();
  updateButtons();
}

void ReaderDialog::showRecord() {
  const auto slot = static_cast<std::size_t>(position_.position());
  if (slot >= records_.size()) return;
  const std::wstring content = framework::toWide(records_[slot].Content);
  SetWindowTextW(item(IDC_READER_CONTENT), content.c_str());
  showInFullFont(item(IDC_READER_CONTENT), content);
  combo(CB_SETCURSEL, slot);
  setItemText(IDC_READER_TIME, store::displayTime(records_[slot].Time));
  reply_.EnableWindow(canBeDialled(records_[slot].Phone) ? 1 : 0);
}

void ReaderDialog::updateButtons() {
  previous_.EnableWindow(position_.previousEnabled() ? 1 : 0);
  next_.EnableWindow(position_.nextEnabled() ? 1 : 0);
}

}  // namespace dialogs
