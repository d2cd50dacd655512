// The commands on the rows: sort, delete, save, select all.
#include <algorithm>

#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/list_sorter.h"
#include "list/quillet_view.h"
#include "list/removal.h"
#include "list/text_file_question.h"
#include "resources/resource_ids.h"
#include "skin/delete_confirm_dialog.h"
#include "store/folder_state.h"
#include "store/time_stamp.h"

namespace list {
namespace {

using framework::loadString;

// Milliseconds. Showing how far it is takes as long as deleting a message.
constexpr ULONGLONG progressPause = 50;

bool consents(HWND owner, bool all) {
  skin::DeleteConfirmDialog question;
  question.deleteAll = all ? 1 : 0;
  const INT_PTR answer = question.doModal(owner);
  // Only Cancel refuses, but a question that nobody has seen has not been answered.
  return answer > 0 && answer != IDCANCEL;
}

std::optional<store::Folder> selectedPcFolder() {
  const auto folder = store::selectedFolder(store::folderState());
  return folder && store::isOnPc(*folder) ? folder : std::nullopt;
}

}  // namespace

std::vector<std::size_t> CQuilletView::selectedSlots() const {
  std::vector<std::size_t> slots(static_cast<std::size_t>(selectedCount()));
  // Filled from its end, so that the rows come from the last to the first.
  auto place = slots.rbegin();
  for (int row = -1; place != slots.rend() && (row = nextSelected(row)) >= 0; ++place)
    *place = static_cast<std::size_t>(itemData(row));
  return slots;
}

LRESULT CQuilletView::onColumnClick(NMLISTVIEW& click) {
  if (itemCount() == 0) return 0;
  const framework::CWaitCursor wait;
  try {
    {
      const framework::CRedrawLock lock(*this);
      ListSorter(*this, click.iSubItem, kindOfColumn(click.iSubItem)).sort();
    }
    keepOrder();
  } catch (...) {
    // The next deletion numbers the rows: left in an order of their own they would stand for other messages.
    if (const auto folder = selectedPcFolder(); folder && records_) showAnew(*folder);
    throw;
  }
  return 0;
}

void CQuilletView::keepOrder() {
  const auto folder = selectedPcFolder();
  if (!folder || !records_) return;
  const auto former = records_->records(*folder);
  std::vector<store::SmsRecord> sorted;
  sorted.reserve(former.size());
  for (int row = 0; row < itemCount(); ++row) {
    const auto slot = static_cast<std::size_t>(itemData(row));
    if (slot >= former.size()) return;
    sorted.push_back(former[slot]);
    // What the row shows is what is kept: a handset's time in its readable form.
    sorted.back().Time = store::displayTime(sorted.back().Time);
    sorted.back().Index = row;
  }
  if (sorted.size() != former.size()) return;
  if (records_->replaceRecords(*folder, std::move(sorted))) {
    numberRows();
    return;
  }
  showAnew(*folder);
}

void CQuilletView::showAnew(store::Folder folder) {
  deleteAllItems();
  showRecords(records_->records(folder));
}

void CQuilletView::numberRows() {
  const framework::CRedrawLock lock(*this);
  for (int row = 0; row < itemCount(); ++row) setItemData(row, row);
}

void CQuilletView::removeRows(std::span<const std::size_t> slots) {
  const framework::CRedrawLock lock(*this);
  std::vector<bool> gone(static_cast<std::size_t>(itemCount()), false);
  for (const std::size_t slot : slots)
    if (slot < gone.size()) gone[slot] = true;
  for (int row = itemCount() - 1; row >= 0; --row) {
    const auto slot = static_cast<std::size_t>(itemData(row));
    if (slot < gone.size() && gone[slot]) deleteItem(row);
  }
  numberRows();
}

void CQuilletView::onDelete() {
  if (!consents(GetAncestor(handle(), GA_ROOT), false)) return;
  const auto folder = selectedPcFolder();
  const std::vector<std::size_t> slots = selectedSlots();
  if (slots.empty() || !folder || !records_) return;
  const framework::CWaitCursor wait;
  const int firstRow = nextSelected(-1);
  std::vector<std::size_t> deleted;
  ULONGLONG shownAt = 0;
  try {
    deleted = removeMessages(*records_, *folder, slots, [&](std::size_t gone) {
      const ULONGLONG now = GetTickCount64();
      if (now - shownAt < progressPause) return;
      shownAt = now;
      showStatus(IDS_DELETING, {std::to_string(gone + 1), std::to_string(slots.size())});
    });
  } catch (...) {
    showAnew(*folder);  // no row may stand for another message than it shows
    throw;
  }
  removeRows(deleted);
  const int focused = std::min(firstRow, itemCount() - 1);
  if (focused >= 0) ListView_SetItemState(handle(), focused, LVIS_FOCUSED, LVIS_FOCUSED);
  showStatus(IDS_DELETED, {std::to_string(deleted.size())});
}

void CQuilletView::onDeleteAll() {
  const int count = itemCount();
  if (count == 0 || !consents(GetAncestor(handle(), GA_ROOT), true)) return;
  const framework::CWaitCursor wait;
  const auto folder = selectedPcFolder();
  if (folder && records_ && !records_->replaceRecords(*folder, {})) return;
  deleteAllItems();
  showStatus(IDS_DELETED, {std::to_string(count)});
}

void CQuilletView::onSave() {
  const auto folder = store::selectedFolder(store::folderState());
  const std::vector<std::size_t> slots = selectedSlots();
  if (slots.empty() || !folder || !records_) return;
  const std::string path = askForTextFile(GetAncestor(handle(), GA_ROOT));
  if (path.empty()) return;
  const auto records = records_->records(*folder);
  std::vector<store::SmsRecord> chosen;
  for (const std::size_t slot : slots)
    if (slot < records.size()) chosen.push_back(records[slot]);
  if (records_->saveText(path, chosen)) showStatus(IDS_SAVED, {std::to_string(chosen.size()), path});
}

void CQuilletView::onSelectAll() {
  ListView_SetItemState(handle(), -1, LVIS_SELECTED, LVIS_SELECTED);
}

void CQuilletView::showStatus(UINT pattern, std::initializer_list<std::string_view> values) const {
  if (records_) records_->showStatus(framework::formatText(loadString(pattern), values));
}

}  // namespace list
