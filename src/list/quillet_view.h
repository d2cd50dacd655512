#pragma once

#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "framework/list_view.h"
#include "list/drop_target.h"
#include "list/folder_records.h"
#include "store/sms_record.h"

namespace list {

// The right pane: the messages of the selected folder, one row a record, and the commands on the selection.
// It only shows; the records belong to the tree. Owned by the frame's splitter.
class CQuilletView : public framework::CListView {
 public:
  // The slots of the selected rows' records, the last row's first.
  std::vector<std::size_t> selectedSlots() const;
  // Takes the rows of these records away; the others keep their places.
  void removeRows(std::span<const std::size_t> slots);

  // Adds a row for every record, in order, behind the rows that there are. A row's item data is the slot of
  // its record.
  void showRecords(std::span<const store::SmsRecord> records);

  // The owner of the folders and the place to drop rows on; both outlive the view's window.
  void connect(FolderRecords& records, DropTarget& dropTarget) {
    records_ = &records;
    dropTarget_ = &dropTarget;
  }

  // Ends a drag of rows without a drop; for whoever changes what the list shows.
  void cancelDrag() { endDrag(); }

  // What opens a message for reading; given the slot of the message's record.
  void setOpenHandler(std::function<void(int slot)> open) { open_ = std::move(open); }

  // Gives the phone column a new heading; the rows' texts in that column go with the old one.
  void setPhoneHeading(std::string_view heading);
  void setTimeColumnShown(bool shown);

  void onInitialUpdate() override;

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const framework::MessageMap* messageMap() const override;
  const framework::CommandMap* commandMap() const override;

 private:
  void onSave();
  void onDelete();
  void onDeleteAll();
  void onSelectAll();
  bool canSelectAll() const { return itemCount() > 0; }
  bool canSave() const { return selectedCount() > 0; }
  bool canDelete() const;
  bool canDeleteAll() const;
  LRESULT onColumnClick(NMLISTVIEW& click);
  LRESULT onOpen(NMHDR& header);
  LRESULT onClick(NMHDR& header);
  void layOutColumns(int paneWidth);
  void onSized(int width, int height);

  LRESULT onBeginDrag(NMLISTVIEW& drag);
  void onMouseMove(UINT keys, POINT point);
  void onLButtonUp(UINT keys, POINT point);
  void onKeyDown(UINT key);
  void onCaptureChanged(WPARAM, LPARAM taker);
  void endDrag();

  // Writes the order of the rows into the PC folder that they show.
  void keepOrder();
  void numberRows();
  // Makes the rows those of the folder's records.
  void showAnew(store::Folder folder);
  void showStatus(UINT pattern, std::initializer_list<std::string_view> values) const;

  FolderRecords* records_ = nullptr;
  DropTarget* dropTarget_ = nullptr;
  std::function<void(int slot)> open_;
  int paneWidth_ = 0;           // the whole pane's, at the last size event that laid out the columns
  bool folderColumns_ = false;  // the columns have widths of their own since then
};

}  // namespace list
