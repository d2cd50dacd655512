#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "framework/tree_view.h"
#include "list/drop_target.h"
#include "list/folder_records.h"
#include "list/quillet_view.h"
#include "phonelink/phone_link.h"
#include "skin/image.h"
#include "store/code_page.h"
#include "store/file_system.h"
#include "store/folder_state.h"
#include "store/folder_table.h"
#include "store/store_file.h"

namespace tree {

// What the tree works with; all of it outlives the tree.
struct LeftViewServices {
  phonelink::PhoneLink& link;
  store::FileSystem& files;
  const store::CodePage& codePage;
  std::string moduleDirectory;  // ending in a backslash
  // A store could not be read, or holds more than its records.
  std::function<void(const store::StoreFile&, const store::ReadResult&)> reportUnread;
  // How a file was changed; `failure` is the text for the case that it was not.
  std::function<void(const store::WriteResult&, UINT failure)> reportWrite;
  std::function<void(const std::string&)> showStatus;
};

// The left pane: the folders with their counts. Owns the five folder tables, fills them from the handset and
// the stores, and decides what the list shows. Owned by the frame's splitter.
class CLeftView : public framework::CTreeView, private list::FolderRecords, private list::DropTarget {
 public:
  CLeftView(LeftViewServices services, list::CQuilletView& list);

  // Finds the seven items by their places in the tree and remembers them in the folder state.
  void findItems();

  // Reads a folder from its source into its table and puts the count into its label. The item must be a
  // folder's, the path must hold a folder's path; otherwise nothing happens. Always 1.
  int refreshCount(HTREEITEM item);
  int refreshCount(std::string_view path);
  // The same for a folder that is known.
  void reload(store::Folder folder);

  // Files one message in a PC folder's store; the table shows it after the next reload.
  store::WriteResult file(store::Folder folder, const store::SmsRecord& message, store::LineBreaks breaks) {
    return storeFile(folder).append(message, breaks);
  }

  // Empties the table. The folder's store is not rewritten before it has been loaded again.
  void freeTable(store::Folder folder);
  const store::FolderTables& tables() const { return tables_; }
  // Fills the list, which is empty, with the folder's records.
  void showInList(store::Folder folder);

  // The texts of the item and its ancestors, outermost first: "PC\Draft(3)".
  std::string itemPath(HTREEITEM item) const;

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const framework::MessageMap* messageMap() const override;

 private:
  std::span<const store::SmsRecord> records(store::Folder folder) const override {
    return tables_[folder].records();
  }
  bool replaceRecords(store::Folder folder, std::vector<store::SmsRecord> records) override;
  bool takeBack(store::Folder folder, std::vector<store::SmsRecord> records) override;
  bool removeRecord(store::Folder folder, std::size_t slot) override;
  bool saveText(const std::string& path, std::span<const store::SmsRecord> records) override;
  void showStatus(const std::string& text) override { services_.showStatus(text); }

  bool isAt(POINT screen) const override { return WindowFromPoint(screen) == handle(); }
  void dragOver(POINT screen) override;
  void dragLeft() override;
  void drop(POINT screen) override;
  // Tells how a folder's file was changed, and renews the label if it was.
  bool follow(store::Folder folder, const store::WriteResult& written, UINT failure);
  // Files the selected rows in the folder that they were dropped on.
  void transfer();

  LRESULT onBeginDrag(NMTREEVIEWW& begin);
  void onMouseMove(UINT keys, POINT point);
  void onLButtonUp(UINT keys, POINT point);
  HTREEITEM itemAt(POINT screen) const;
  void highlight(HTREEITEM item);

  bool onCreated(const CREATESTRUCTW& c);
  void onDestroyed();
  LRESULT onSelectionChanging(NMTREEVIEWW& change);
  LRESULT onClick(NMHDR& header);

  void loadImages();
  void setCount(store::Folder folder);
  void setColumnsFor(HTREEITEM item);
  store::StoreFile& storeFile(store::Folder folder);

  LeftViewServices services_;
  list::CQuilletView& list_;
  store::FolderTables tables_;
  std::array<store::StoreFile, 3> stores_;  // PInbox, PSent, PDraft
  std::optional<skin::GdiplusSession> gdiplus_;
  framework::UniqueImageList images_;
  bool clickSelect_ = false;  // a folder has been picked with the mouse
};

}  // namespace tree
