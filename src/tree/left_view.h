#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "framework/tree_view.h"
#include "list/folder_pane.h"
#include "list/quillet_view.h"
#include "phonelink/phone_link.h"
#include "skin/image.h"
#include "store/file_system.h"
#include "store/folder_state.h"
#include "store/folders.h"
#include "text/code_page.h"

namespace tree {

// What the tree works with; all of it outlives the tree.
struct LeftViewServices {
  phonelink::PhoneLink& link;
  store::FileSystem& files;
  const text::CodePage& codePage;
  std::string moduleDirectory;  // ending in a backslash
  std::function<void(const std::string&)> showStatus;
};

// The left pane: the folders with their counts. Owns the folders, fills their tables and decides what
// the list shows. Owned by the frame's splitter.
class CLeftView : public framework::CTreeView, private list::FolderPane {
 public:
  CLeftView(LeftViewServices services, list::CQuilletView& list);

  // Finds the seven items by their places in the tree and remembers them in the folder state.
  void findItems();

  // Reads a folder from its source into its table and puts the count into its label. The item must be a
  // folder's, the path must hold a folder's path; otherwise nothing happens. Always 1.
  int refreshCount(HTREEITEM item);
  int refreshCount(std::string_view path);
  // The same for PSent and PDraft, and shows the selected one anew. Tells what fails, and throws nothing.
  void reloadFiled();

  store::Folders& folders() { return folders_; }
  // Whether a PC folder's file could not be read, so that nobody knows how many messages it holds.
  bool isUnreadable(store::Folder folder) const { return unreadable_[store::position(folder)]; }
  // Whether the last reading of a handset folder failed before its end.
  bool isIncomplete(store::Folder folder) const { return incomplete_[store::position(folder)]; }
  // The list shows the selected folder's messages.
  void showSelected();
  // Selects the folder, and the list shows it.
  void showFolder(store::Folder folder);
  // Says what a command has come to, behind what reading and writing have left to say meanwhile.
  void showResult(const std::string& text) { showStatus(takeNotes() + text); }

  // How wide the pane must be for the texts of all folders with a count of four digits behind them.
  int wantedWidth() const;
  // The texts of the item and its ancestors, outermost first: "PC\Draft(3)".
  std::string itemPath(HTREEITEM item) const;

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const framework::MessageMap* messageMap() const override;
  const framework::CommandMap* commandMap() const override;

 private:
  bool isAt(POINT screen) const override { return WindowFromPoint(screen) == handle(); }
  void dragOver(POINT screen) override;
  void dragLeft() override;
  void drop(POINT screen) override;
  void showCount(store::Folder folder) override;
  void showStatus(const std::string& text) override { services_.showStatus(text); }
  // Files the selected rows of the shown folder in another.
  void transfer(store::Folder target);
  template <store::Folder target>
  void moveTo() {
    transfer(target);
  }
  template <store::Folder target>
  bool canMoveTo() const {
    return list_.selectedCount() > 0 && list_.shownFolder() && list_.shownFolder() != target;
  }
  void onUndo();
  bool canUndo() const { return folders_.canUndo(); }
  LRESULT onRightClick(NMHDR& header);
  void onContextMenu();
  void showMenu(POINT at);

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
  void reload(store::Folder folder);
  std::string takeNotes();
  void setColumnsFor(HTREEITEM item);

  LeftViewServices services_;
  list::CQuilletView& list_;
  store::Folders folders_;
  std::array<bool, store::folderCount> unreadable_{}, incomplete_{};  // by position(folder)
  std::string notes_;                                                 // what reading has left to say
  std::optional<skin::GdiplusSession> gdiplus_;
  framework::UniqueImageList images_;
  bool clickSelect_ = false;  // a folder has been picked with the mouse
};

}  // namespace tree
