// Finding messages.
#include "app/main_frame.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/search.h"
#include "resources/resource_ids.h"
#include "store/folder_state.h"

namespace app {

using framework::formatText;
using framework::loadString;

LRESULT CMainFrame::windowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  std::optional<FindDialog::Question> asked;
  if (!find_.takes(message, lParam, asked)) return CFrameWnd::windowProc(message, wParam, lParam);
  if (asked) {
    sought_ = std::move(asked->text);
    // As a command: it waits for the phone link like any other.
    if (IsWindowEnabled(handle()))
      send(WM_COMMAND, asked->backwards ? ID_FIND_PREVIOUS : ID_FIND_NEXT);
    else
      MessageBeep(MB_ICONWARNING);
  }
  return 0;
}

// Keys in the dialog are its own: Delete takes out a letter there, and no message.
bool CMainFrame::preTranslateMessage(MSG& message) {
  if (find_.handle() && IsDialogMessageW(find_.handle(), &message)) return true;
  return CFrameWnd::preTranslateMessage(message);
}

void CMainFrame::findNext(bool backwards) {
  const framework::CWaitCursor wait;
  list::SearchStart start;
  if (const auto shown = list().shownFolder()) start = {*shown, list().order(), list().focusedRow()};
  const auto hit = list::search(tree().folders(), start, backwards,
                                [this](const store::SmsRecord& message) { return sought_->isIn(message); });
  if (!hit) {
    statusBar().setMessage(formatText(loadString(IDS_NOT_FOUND), {sought_->text()}));
    return;
  }
  tree().showFolder(hit->folder);
  list().selectOnly(static_cast<int>(hit->row));
  statusBar().setMessage(formatText(loadString(IDS_FOUND),
                                    {store::folderState().folderPaths[store::position(hit->folder)],
                                     std::to_string(hit->row + 1), std::to_string(list().order().size())}));
}

}  // namespace app
