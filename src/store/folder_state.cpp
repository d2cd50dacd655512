#include "store/folder_state.h"

#include <algorithm>

namespace store {

FolderState& folderState() {
  static FolderState state;
  return state;
}

void resetFolderState() {
  folderState() = FolderState{};
}

void joinFolderPaths(FolderState& state, const std::function<std::string(unsigned)>& textOf) {
  for (const FolderRow& row : folderRows)
    state.folderPaths[position(row.folder)] =
        textOf(groupRows[position(row.group)].text) + "\\" + textOf(row.text);
}

std::optional<Folder> folderOfItem(const FolderState& state, TreeItem item) {
  const auto found = std::ranges::find(state.items, item);
  if (item == nullptr || found == state.items.end()) return std::nullopt;
  return folderRows[static_cast<std::size_t>(found - state.items.begin())].folder;
}

std::optional<Folder> folderInPath(const FolderState& state, std::string_view path) {
  for (const FolderRow& row : folderRows) {
    const std::string& folderPath = state.folderPaths[position(row.folder)];
    // A path that has not been joined yet would be found in every text.
    if (!folderPath.empty() && path.find(folderPath) != std::string_view::npos) return row.folder;
  }
  return std::nullopt;
}

std::optional<Folder> selectedFolder(const FolderState& state) {
  return state.windows98Mode ? folderInPath(state, state.selectedPath)
                             : folderOfItem(state, state.selectedItem);
}

bool isGroup(const FolderState& state, TreeItem item) {
  return item != nullptr && std::ranges::find(state.groups, item) != state.groups.end();
}

}  // namespace store
