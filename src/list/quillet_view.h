#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "framework/list_view.h"
#include "list/folder_pane.h"
#include "store/folders.h"

namespace list {

// The right pane: the messages of the selected folder, and the commands on the selection. A virtual list: it
// holds the order of its rows as slots of the shown table and answers from the table what Windows asks for.
// In a PC folder row i is slot i. Owned by the frame's splitter.
class CQuilletView : public framework::CListView {
 public:
  // The owner of the folders; both outlive the view's window.
  void connect(store::Folders& folders, FolderPane& pane) {
    folders_ = &folders;
    pane_ = &pane;
  }
  // What opens a message for reading; given the slot of the message's record.
  void setOpenHandler(std::function<void(int slot)> open) { open_ = std::move(open); }

  // The rows become the folder's records in slot order, none of them selected.
  void show(store::Folder folder);
  // No rows, and no folder. For whoever is about to change a table other than by a command of the list.
  void empty();

  // The folder that is both selected and shown.
  std::optional<store::Folder> shownFolder() const;
  // The slots of the shown table, row by row.
  std::span<const std::size_t> order() const { return order_; }
  // -1 when no row has the focus.
  int focusedRow() const { return ListView_GetNextItem(handle(), -1, LVNI_FOCUSED); }
  // This row alone is selected, has the focus and is brought into view.
  void selectOnly(int row);
  // Whether one message, of a folder that is shown, is selected.
  bool canOpen() const { return selectedCount() == 1 && shownFolder(); }
  // The slots of the selected rows' records, the last row's first.
  std::vector<std::size_t> selectedSlots() const;
  // The records in those slots of the shown PC folder, highest slot first, are gone from its table.
  void removeRows(const std::vector<std::size_t>& slots);

  // Ends a drag of rows without a drop; for whoever changes what the list shows.
  void cancelDrag() { endDrag(); }

  void setPhoneHeading(std::string_view heading);
  void setTimeColumnShown(bool shown);

  void onInitialUpdate() override;
  bool preTranslateMessage(MSG& message) override;

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const framework::MessageMap* messageMap() const override;
  const framework::CommandMap* commandMap() const override;

 private:
  void removeRow(std::size_t slot);
  // What the cell shows, UTF-8; empty for a row that is not there.
  std::string cellText(int row, int column) const;
  std::string slotText(std::size_t slot, int column) const;
  LRESULT onGetDispInfo(NMLVDISPINFOW& asked);
  LRESULT onFindItem(NMLVFINDITEMW& sought);
  void onPaint();

  void createTip();
  void hideTip();
  void onTip(NMTTDISPINFOW& asked);

  void onOpenSelected();
  void onCopy();
  void onContextMenu(WPARAM window, LPARAM at);
  void onSave();
  void onDelete();
  void onDeleteAll();
  void onSelectAll();
  bool canSelectAll() const;
  bool canSave() const;
  bool canDelete() const;
  bool canDeleteAll() const;
  LRESULT onColumnClick(NMLISTVIEW& click);
  LRESULT onOpen(NMHDR& header);
  void layOutColumns(int paneWidth);
  void onHeadingChanged(NMHEADERW& change);
  void onSized(int width, int height);

  LRESULT onBeginDrag(NMLISTVIEW& drag);
  void onMouseMove(UINT keys, POINT point);
  void onLButtonUp(UINT keys, POINT point);
  void onKeyDown(UINT key);
  void onCaptureChanged(WPARAM, LPARAM taker);
  void endDrag();

  // The folder that is both selected and shown, if it is one of the PC.
  std::optional<store::Folder> shownPcFolder() const;
  // Row i now shows the message that was in slot former[i] of the shown table.
  void selectAgain(const std::vector<bool>& selectedSlots, std::size_t focusedSlot,
                   const std::vector<std::size_t>& former);
  void showDeleted(std::size_t count) const;
  void showDeleting(std::size_t number, std::size_t count) const;
  // In the status bar, what a command has come to; names what has been put aside meanwhile.
  void showResult(UINT pattern, std::initializer_list<std::string_view> values) const;

  store::Folders* folders_ = nullptr;
  FolderPane* pane_ = nullptr;
  std::function<void(int slot)> open_;
  std::optional<store::Folder> shown_;
  std::vector<std::size_t> order_;  // of the rows: the slots of the shown table
  bool painting_ = false;
  HWND tip_ = nullptr;          // of the row under the pointer; goes with the frame
  int tipRow_ = -1;             // -1 = none
  std::wstring tipText_;        // what the tip has been told to show
  int paneWidth_ = 0;           // the whole pane's, at the last size event that laid out the columns
  bool folderColumns_ = false;  // the columns have widths of their own since then
};

}  // namespace list
