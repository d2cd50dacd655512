#include "store/folder_state.h"

#include "store/store_names.h"

namespace store {

namespace {

std::string joined(std::string_view group, std::string_view folder) {
  std::string path(group);
  path += '\\';
  path += folder;
  return path;
}

}  // namespace

FolderState& folderState() {
  static FolderState state;
  return state;
}

void resetFolderState() {
  folderState() = FolderState{};
}

void joinFolderPaths(FolderState& state, const FolderTexts& texts) {
  state.folderPaths[position(Folder::MInbox)] = joined(texts.mobile, texts.mobileInbox);
  state.folderPaths[position(Folder::MOutbox)] = joined(texts.mobile, texts.mobileOutbox);
  state.folderPaths[position(Folder::PInbox)] = joined(texts.pc, texts.pcInbox);
  state.folderPaths[position(Folder::PSent)] = joined(texts.pc, texts.pcSent);
  state.folderPaths[position(Folder::PDraft)] = joined(texts.pc, texts.pcDraft);
}

void setStorePaths(FolderState& state, std::string_view moduleDirectory) {
  for (const StoreName& name : storeNames) {
    std::string& path = state.storePaths[position(name.folder)];
    path = moduleDirectory;
    path += name.file;
  }
}

std::optional<Folder> folderOfItem(const FolderState& state, TreeItem item) {
  if (item == nullptr) return std::nullopt;
  for (const Folder folder : allFolders) {
    if (state.items[position(folder)] == item) return folder;
  }
  return std::nullopt;
}

std::optional<Folder> folderInPath(const FolderState& state, std::string_view path) {
  for (const Folder folder : allFolders) {
    const std::string& folderPath = state.folderPaths[position(folder)];
    // A path that has not been joined yet would be found in every text.
    if (!folderPath.empty() && path.find(folderPath) != std::string_view::npos) return folder;
  }
  return std::nullopt;
}

std::optional<Folder> selectedFolder(const FolderState& state) {
  return state.windows98Mode ? folderInPath(state, state.selectedPath)
                             : folderOfItem(state, state.selectedItem);
}

bool isGroup(const FolderState& state, TreeItem item) {
  return item != nullptr && (item == state.mobileGroup || item == state.pcGroup);
}

}  // namespace store
