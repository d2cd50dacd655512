#include "dialogs/outcome_dialog.h"

#include <utility>

#include "dialogs/sending_reports.h"
#include "framework/clipboard.h"
#include "framework/input_lock.h"
#include "framework/list_view.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/reports.h"
#include "resources/resource_ids.h"

namespace dialogs {
namespace {

using framework::loadString;

constexpr int numberColumn = 0;
constexpr int outcomeColumn = 1;
constexpr UINT_PTR reportTimer = 1;
constexpr UINT reportPause = 1000;  // milliseconds

void insertColumn(HWND list, int column, UINT heading, int width) {
  std::wstring text = framework::toWide(loadString(heading));
  LVCOLUMNW insert{};
  insert.mask = LVCF_TEXT | LVCF_WIDTH;
  insert.pszText = text.data();
  insert.cx = width;
  ListView_InsertColumn(list, column, &insert);
}

void setCell(HWND list, int row, int column, const std::string& text) {
  std::wstring wide = framework::toWide(text);
  LVITEMW item{};
  item.mask = LVIF_TEXT;
  item.iItem = row;
  item.iSubItem = column;
  item.pszText = wide.data();
  ListView_SetItem(list, &item);
}

}  // namespace

OutcomeDialog::OutcomeDialog(ComposeServices services)
    : CSkinDialog(IDD_OUTCOME), services_(std::move(services)) {}

const framework::MessageMap* OutcomeDialog::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onNotify<&OutcomeDialog::onListKey, NMLVKEYDOWN>(LVN_KEYDOWN, IDC_OUTCOMES),
      framework::onPlain<&OutcomeDialog::takeReports>(WM_TIMER),
      framework::onControl<&OutcomeDialog::onTryAgain>(BN_CLICKED, IDC_TRY_AGAIN),
  };
  static const framework::MessageMap map{entries, CSkinDialog::messageMap()};
  return &map;
}

bool OutcomeDialog::onInitDialog() {
  CSkinDialog::onInitDialog();
  skinButtons({{again_, IDC_TRY_AGAIN}, {close_, IDCANCEL}});
  constexpr skin::ControlText texts[] = {{IDC_OUTCOMES, IDS_LAST_SEND},
                                         {IDC_TRY_AGAIN, IDS_TRY_AGAIN},
                                         {IDCANCEL, IDS_CLOSE},
                                         {skin::theDialog, IDS_LAST_SEND}};
  setTexts(texts);
  const HWND list = item(IDC_OUTCOMES);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
  constexpr int numberWidth = 130;
  insertColumn(list, numberColumn, IDS_PHONE, framework::scaledPixels(handle(), numberWidth));
  insertColumn(list, outcomeColumn, IDS_OUTCOME, 0);
  showRows();
  takeReports();
  SetTimer(handle(), reportTimer, reportPause, nullptr);
  framework::focusSomeRow(list);
  return true;
}

void OutcomeDialog::showRows() {
  const HWND list = item(IDC_OUTCOMES);
  int row = 0;
  for (const Delivery& delivery : services_.lastSend.deliveries) {
    if (delivery.message.Phone.empty()) continue;
    LVITEMW inserted{};
    inserted.iItem = row;
    if (row == ListView_GetItemCount(list)) ListView_InsertItem(list, &inserted);
    setCell(list, row, numberColumn, delivery.message.Phone);
    setCell(list, row, outcomeColumn, outcomeText(delivery));
    ++row;
  }
  ListView_SetColumnWidth(list, outcomeColumn, LVSCW_AUTOSIZE_USEHEADER);
  const bool anyLeft = services_.lastSend.anyLeft();
  // A button that goes off with the keys would keep them.
  if (!anyLeft && GetFocus() == again_.handle()) send(WM_NEXTDLGCTL);
  again_.EnableWindow(anyLeft ? 1 : 0);
}

void OutcomeDialog::onTryAgain() {
  const framework::CWaitCursor wait;
  if (!services_.reconnect()) return;
  Sending& last = services_.lastSend;
  store::WriteResult filed;
  {
    const framework::CInputLock lock;
    filed = sendAgain(last, outgoingWith(services_));
  }
  if (const std::string notSent = notSentText(last); !notSent.empty()) services_.showStatus(notSent);
  // The drafts are taken out of what the file holds now; then the window shows what is left.
  services_.reloadFiled();
  const store::WriteResult taken = takeOutDrafts(last, services_.folders);
  services_.reloadFiled();
  showRows();
  list::report(filed, IDS_SENT_NOT_FILED);
  // That the folder could not be read has been told.
  if (taken.outcome != store::WriteResult::Outcome::notRead) list::report(taken, IDS_CANNOT_CHANGE);
}

// Word of messages on their way comes whenever the handset gets it.
void OutcomeDialog::takeReports() {
  bool any = false;
  {
    const framework::CInputLock lock;
    constexpr int most = 100;  // at once, of a library that never comes to an end
    for (int i = 0; i < most; ++i) {
      const auto delivered = services_.link.delivered();
      if (!delivered) break;
      any = services_.lastSend.takeReport(*delivered) || any;
    }
  }
  if (any) showRows();
}

void OutcomeDialog::onListKey(NMLVKEYDOWN& key) {
  if (key.wVKey == 'C' && GetKeyState(VK_CONTROL) < 0) copyRows();
}

void OutcomeDialog::copyRows() const {
  const HWND list = item(IDC_OUTCOMES);
  const int which = ListView_GetSelectedCount(list) > 0 ? LVNI_SELECTED : LVNI_ALL;
  std::string text;
  for (int row = -1; (row = ListView_GetNextItem(list, row, which)) >= 0;)
    text += framework::listItemText(list, row, numberColumn) + "\t" +
            framework::listItemText(list, row, outcomeColumn) + "\r\n";
  const bool copied = framework::copyToClipboard(handle(), framework::toWide(text));
  if (!copied) services_.showStatus(loadString(IDS_NOT_COPIED));
}

}  // namespace dialogs
