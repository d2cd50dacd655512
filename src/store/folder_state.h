#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "store/folder.h"

// The type behind the platform's tree item handle, so that a TreeItem is a HTREEITEM without its header.
struct _TREEITEM;

namespace store {

using TreeItem = _TREEITEM*;

// Which tree items and paths stand for the folders, and what is selected. One per process, see folderState().
struct FolderState {
  std::array<TreeItem, groupRows.size()> groups{};  // by position(group)
  std::array<TreeItem, folderCount> items{};        // by position(folder)

  TreeItem selectedItem = nullptr;
  TreeItem lastSelectedItem = nullptr;
  std::string selectedPath;  // UTF-8, item texts outermost first: "PC\Draft(3)"

  std::array<std::string, folderCount> folderPaths;  // by position(folder): "PC\Draft"

  // On platform 98 the selected folder is recognised by the text of its path, elsewhere by its item.
  bool windows98Mode = false;
};

// The process-wide state, and back to its initial values.
FolderState& folderState();
void resetFolderState();

// textOf answers the string with that number, in UTF-8.
void joinFolderPaths(FolderState& state, const std::function<std::string(unsigned)>& textOf);

// Nothing for a group, an unknown item and null.
std::optional<Folder> folderOfItem(const FolderState& state, TreeItem item);
// The first folder, in folder order, whose path occurs in `path`.
std::optional<Folder> folderInPath(const FolderState& state, std::string_view path);
// By selectedItem, or by selectedPath in windows98Mode.
std::optional<Folder> selectedFolder(const FolderState& state);
bool isGroup(const FolderState& state, TreeItem item);

}  // namespace store
