// The commands on the rows: open, sort, delete, save, select all.
#include <algorithm>
#include <new>

#include "framework/input_lock.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/list_sorter.h"
#include "list/list_state.h"
#include "list/quillet_view.h"
#include "list/reports.h"
#include "list/sort_keys.h"
#include "list/text_file_question.h"
#include "resources/resource_ids.h"
#include "skin/delete_confirm_dialog.h"
#include "store/folder_state.h"
#include "store/time_stamp.h"
#include "text/plain.h"
#include "text/system.h"

namespace list {
namespace {

using framework::loadString;

// Milliseconds. Showing how far it is takes as long as deleting a message.
constexpr ULONGLONG progressPause = 50;

std::string lowered(std::string text) {
  if (text::isAscii(text)) {
    std::ranges::transform(text, text.begin(), text::lowered);
    return text;
  }
  std::wstring wide = framework::toWide(text);
  CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return framework::toUtf8(wide);
}

bool consents(HWND owner, bool all) {
  skin::DeleteConfirmDialog question;
  question.deleteAll = all ? 1 : 0;
  const INT_PTR answer = question.doModal(owner);
  // Only Cancel refuses, but a question that nobody has seen has not been answered.
  return answer > 0 && answer != IDCANCEL;
}

// Whether Escape has been pressed. It and other keys that came meanwhile are dropped, as while the phone link
// works.
bool escapePressed() {
  bool pressed = false;
  for (MSG key; PeekMessageW(&key, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE);)
    pressed = pressed || key.wParam == VK_ESCAPE;
  return pressed;
}

}  // namespace

const framework::CommandMap* CQuilletView::commandMap() const {
  static constexpr framework::CommandEntry entries[] = {
      framework::command<&CQuilletView::onOpenSelected, &CQuilletView::canOpen>(ID_OPEN_MESSAGE),
      framework::command<&CQuilletView::onCopy, &CQuilletView::canSave>(ID_COPY),
      framework::command<&CQuilletView::onSave, &CQuilletView::canSave>(ID_SAVE),
      framework::command<&CQuilletView::onDelete, &CQuilletView::canDelete>(ID_DELETE),
      framework::command<&CQuilletView::onDeleteAll, &CQuilletView::canDeleteAll>(ID_DELETE_ALL),
      framework::command<&CQuilletView::onSelectAll, &CQuilletView::canSelectAll>(ID_SELECT_ALL),
  };
  static const framework::CommandMap map{entries, CListView::commandMap()};
  return &map;
}

bool CQuilletView::canSave() const {
  return selectedCount() > 0;
}

bool CQuilletView::canDelete() const {
  return selectedCount() > 0 && shownPcFolder();
}

bool CQuilletView::canDeleteAll() const {
  return itemCount() > 0 && shownPcFolder();
}

bool CQuilletView::canSelectAll() const {
  return itemCount() > 0;
}

std::optional<store::Folder> CQuilletView::shownFolder() const {
  return shown_ && shown_ == store::selectedFolder(store::folderState()) ? shown_ : std::nullopt;
}

// Messages are deleted and kept in order on the PC only: what the handset holds is left to the handset.
std::optional<store::Folder> CQuilletView::shownPcFolder() const {
  const auto folder = shownFolder();
  return folder && store::isOnPc(*folder) ? folder : std::nullopt;
}

std::vector<std::size_t> CQuilletView::selectedSlots() const {
  std::vector<std::size_t> slots;
  for (int row = -1; (row = nextSelected(row)) >= 0;) slots.push_back(order_[static_cast<std::size_t>(row)]);
  std::ranges::reverse(slots);
  return slots;
}

LRESULT CQuilletView::onOpen(NMHDR&) {
  onOpenSelected();
  return 0;
}

void CQuilletView::onOpenSelected() {
  const int row = nextSelected(-1);
  if (row >= 0 && open_) open_(static_cast<int>(order_[static_cast<std::size_t>(row)]));
}

void CQuilletView::selectOnly(int row) {
  endDrag();  // or other rows would be dropped than were picked up
  ListView_SetItemState(handle(), -1, 0, LVIS_SELECTED);
  ListView_SetItemState(handle(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(handle(), row, FALSE);
}

LRESULT CQuilletView::onColumnClick(NMLISTVIEW& click) {
  if (!shown_ || order_.empty()) return 0;
  const framework::CWaitCursor wait;
  const text::SystemCodePage codePage;
  std::vector<std::size_t> sorted =
      ListSorter(listState().SortKind, kindOfColumn(click.iSubItem))
          .sorted(
              order_, [&](std::size_t slot) { return slotText(slot, click.iSubItem); },
              [&](std::string text) { return text::orderKey(codePage, lowered(std::move(text))); });

  std::vector<bool> selected(order_.size());
  for (const std::size_t slot : selectedSlots()) selected[slot] = true;
  const int focusedRow = ListView_GetNextItem(handle(), -1, LVNI_FOCUSED);
  const std::size_t focused = focusedRow < 0 ? order_.size() : order_[static_cast<std::size_t>(focusedRow)];

  if (!shownPcFolder()) {
    order_.swap(sorted);
    selectAgain(selected, focused, order_);
    return 0;
  }
  std::vector<store::SmsRecord> records;
  records.reserve(sorted.size());
  for (const std::size_t slot : sorted) {
    records.push_back((*folders_)[*shown_][slot]);
    // What the row shows is what is kept: a handset's time in its readable form.
    records.back().Time = store::displayTime(records.back().Time);
    records.back().Index = static_cast<std::int32_t>(records.size() - 1);
  }
  folders_->remember({*shown_});
  if (!report(folders_->replace(*shown_, std::move(records)), IDS_CANNOT_CHANGE)) return 0;
  selectAgain(selected, focused, sorted);
  if (const std::string kept = keptCopies(*folders_); !kept.empty()) pane_->showStatus(kept);
  return 0;
}

void CQuilletView::selectAgain(const std::vector<bool>& selectedSlots, std::size_t focusedSlot,
                               const std::vector<std::size_t>& former) {
  const framework::CRedrawLock lock(*this);
  const bool some = selectedCount() > 0 && selectedCount() < itemCount();
  if (some) ListView_SetItemState(handle(), -1, 0, LVIS_SELECTED);
  for (std::size_t row = 0; row < former.size(); ++row) {
    const UINT state = (some && selectedSlots[former[row]] ? LVIS_SELECTED : 0U) |
                       (former[row] == focusedSlot ? LVIS_FOCUSED : 0U);
    if (state) ListView_SetItemState(handle(), static_cast<int>(row), state, state);
  }
}

void CQuilletView::onDelete() {
  if (!consents(GetAncestor(handle(), GA_ROOT), false)) return;
  const auto folder = shownPcFolder();
  const std::vector<std::size_t> slots = selectedSlots();  // the highest first: those still to go keep theirs
  if (slots.empty() || !folder) return;
  const framework::CWaitCursor wait;
  const int firstRow = nextSelected(-1);
  folders_->remember({*folder});
  std::size_t gone = 0;
  store::WriteResult result;
  {
    const framework::CInputLock inputLock;  // looking for Escape lets messages in
    const framework::CRedrawLock redrawLock(*this);
    ULONGLONG shownAt = 0;
    // Each is a change of the file of its own, so that whenever it breaks off, the file holds all that are
    // left.
    for (; gone < slots.size() && !escapePressed(); ++gone) {
      if (const ULONGLONG now = GetTickCount64(); now - shownAt >= progressPause) {
        shownAt = now;
        showDeleting(gone + 1, slots.size());
      }
      result = folders_->erase(*folder, slots[gone]);
      if (!result.ok()) break;
      removeRow(slots[gone]);
    }
  }
  pane_->showCount(*folder);
  report(result, IDS_CANNOT_CHANGE);
  const int focused = std::min(firstRow, itemCount() - 1);
  if (focused >= 0) ListView_SetItemState(handle(), focused, LVIS_FOCUSED, LVIS_FOCUSED);
  showDeleted(gone);
}

void CQuilletView::onDeleteAll() {
  const int count = itemCount();
  if (count == 0 || !consents(GetAncestor(handle(), GA_ROOT), true)) return;
  const framework::CWaitCursor wait;
  if (const auto folder = shownPcFolder()) {
    folders_->remember({*folder});
    if (!report(folders_->replace(*folder, {}), IDS_CANNOT_CHANGE)) return;
    pane_->showCount(*folder);
  }
  empty();
  showDeleted(static_cast<std::size_t>(count));
}

void CQuilletView::onSave() {
  const std::vector<std::size_t> slots = selectedSlots();
  const auto folder = shownFolder();
  if (slots.empty() || !folder) return;
  const std::string path = askForTextFile(GetAncestor(handle(), GA_ROOT));
  if (path.empty()) return;
  const bool existed = GetFileAttributesW(framework::toWide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
  if (report(folders_->saveText(path, *folder, slots), IDS_CANNOT_SAVE))
    showResult(existed ? IDS_ADDED : IDS_SAVED, {std::to_string(slots.size()), path});
}

// With drawing on, selecting very many rows takes seconds.
void CQuilletView::onSelectAll() {
  const framework::CRedrawLock lock(*this);
  ListView_SetItemState(handle(), -1, LVIS_SELECTED, LVIS_SELECTED);
}

// Without memory for the text the deleting goes on, and its end is told.
void CQuilletView::showDeleting(std::size_t number, std::size_t count) const try {
  pane_->showStatus(
      framework::formatText(loadString(IDS_DELETING), {std::to_string(number), std::to_string(count)}));
} catch (const std::bad_alloc&) {
}

void CQuilletView::showDeleted(std::size_t count) const {
  const std::string deleted = framework::formatText(loadString(IDS_DELETED), {std::to_string(count)});
  pane_->showStatus(keptCopies(*folders_) + deleted +
                    (folders_->canUndo() ? " " + loadString(IDS_UNDO_HINT) : ""));
}

void CQuilletView::showResult(UINT pattern, std::initializer_list<std::string_view> values) const {
  pane_->showStatus(keptCopies(*folders_) + framework::formatText(loadString(pattern), values));
}

}  // namespace list
