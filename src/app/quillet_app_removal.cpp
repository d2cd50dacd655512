// Making room on the handset.
#include <algorithm>

#include "app/quillet_app.h"
#include "framework/input_lock.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/reports.h"
#include "resources/resource_ids.h"

namespace app {

using framework::formatText;
using framework::loadString;

bool CQuilletApp::canRemove() const {
  const auto folder = frame()->list().shownFolder();
  return link_.canRemove() && folder && !store::isOnPc(*folder) && frame()->list().selectedCount() > 0;
}

bool CQuilletApp::consentsToLose(const std::vector<store::SmsRecord>& messages) {
  // A copy that has gone from its file meanwhile is none.
  for (const store::FolderRow& row : store::folderRows)
    if (store::isOnPc(row.folder)) reload(row.folder);
  const store::Folders& folders = frame()->tree().folders();
  const auto lost = std::ranges::count_if(
      messages, [&](const store::SmsRecord& message) { return !folders.isKept(message); });
  if (lost == 0) return true;
  const std::string question =
      formatText(loadString(IDS_REMOVE_QUESTION), {std::to_string(lost), std::to_string(messages.size())});
  return list::showMessage(question, MB_OKCANCEL | MB_DEFBUTTON2 | MB_ICONWARNING) == IDOK;
}

void CQuilletApp::onRemove() {
  const store::Folder folder = *frame()->list().shownFolder();
  const store::FolderTable& table = frame()->tree().folders()[folder];
  std::vector<store::SmsRecord> messages;
  for (const std::size_t slot : frame()->list().selectedSlots()) messages.push_back(table[slot]);
  const std::string count = std::to_string(messages.size());
  if (!consentsToLose(messages)) return;

  const framework::CWaitCursor wait;
  std::string problem;
  std::vector<store::SmsRecord> agreed;  // the handset says that they are gone, or go with others
  for (std::size_t i = 0; i < messages.size(); ++i) {
    showStatus(formatText(loadString(IDS_REMOVING), {std::to_string(i + 1), count}));
    const framework::CInputLock lock;
    if (link_.remove(messages[i]))
      agreed.push_back(messages[i]);
    else if (problem.empty())
      problem = link_.problem();
  }
  frame()->list().empty();
  reload(folder);
  frame()->tree().showSelected();

  // It is believed where the message is not listed any more; of what was not read nobody knows.
  const bool known = !frame()->tree().isIncomplete(folder);
  const auto isListed = [&](const store::SmsRecord& message) {
    return std::ranges::find(table.records(), message) != table.records().end();
  };
  const auto gone = agreed.size() - static_cast<std::size_t>(std::ranges::count_if(agreed, isListed));
  std::string result = formatText(loadString(IDS_REMOVED), {known ? std::to_string(gone) : "?", count});
  if (known && gone < messages.size()) {
    if (problem.empty()) problem = loadString(agreed.size() < messages.size() ? IDS_REFUSED : IDS_WHOLE_ONLY);
    result += " " + formatText(loadString(IDS_NOT_REMOVED), {problem});
  }
  frame()->tree().showResult(result);
}

}  // namespace app
