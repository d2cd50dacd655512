#pragma once

#include <array>
#include <cstddef>

namespace store {

// The five folders, in the fixed order in which tables, tree items, path texts and store files are kept.
enum class Folder { MInbox, MOutbox, PInbox, PSent, PDraft };

inline constexpr std::array allFolders{Folder::MInbox, Folder::MOutbox, Folder::PInbox, Folder::PSent,
                                       Folder::PDraft};
inline constexpr std::size_t folderCount = allFolders.size();

constexpr std::size_t position(Folder folder) {
  return static_cast<std::size_t>(folder);
}

constexpr bool isOnHandset(Folder folder) {
  return folder == Folder::MInbox || folder == Folder::MOutbox;
}
constexpr bool isOnPc(Folder folder) {
  return !isOnHandset(folder);
}

}  // namespace store
