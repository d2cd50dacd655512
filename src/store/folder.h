#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "resources/resource_ids.h"

namespace store {

// The five folders, in the fixed order in which rows, tables, tree items and path texts are kept.
enum class Folder { MInbox, MOutbox, PInbox, PSent, PDraft };

enum class Group { mobile, pc };

// All that one folder differs in from another.
struct FolderRow {
  Folder folder;
  Group group;
  unsigned text;                  // its name, as the number of a string
  std::string_view imageSection;  // of the skin, names its image
  std::string_view file = {};     // beside the program; empty for a folder of the handset
  std::string_view section = {};  // of that file
  bool received = false;          // its messages name their sender, those of the others their receiver
  bool timed = true;              // its messages carry a time worth showing
};

inline constexpr std::array folderRows{
    FolderRow{.folder = Folder::MInbox,
              .group = Group::mobile,
              .text = IDS_MOBILE_INBOX,
              .imageSection = "MInbox",
              .received = true},
    FolderRow{.folder = Folder::MOutbox,
              .group = Group::mobile,
              .text = IDS_MOBILE_OUTBOX,
              .imageSection = "MOutbox",
              .timed = false},
    FolderRow{.folder = Folder::PInbox,
              .group = Group::pc,
              .text = IDS_PC_INBOX,
              .imageSection = "PInbox",
              .file = "pcInbox.dat",
              .section = "PCINBOX",
              .received = true},
    FolderRow{.folder = Folder::PSent,
              .group = Group::pc,
              .text = IDS_PC_SENT,
              .imageSection = "PSent",
              .file = "pcSent.dat",
              .section = "PCSENT"},
    FolderRow{.folder = Folder::PDraft,
              .group = Group::pc,
              .text = IDS_PC_DRAFT,
              .imageSection = "PDraft",
              .file = "pcDraft.dat",
              .section = "PCDRAFT"},
};
inline constexpr std::size_t folderCount = folderRows.size();

// The same for a group; its image stands before those of the folders.
struct GroupRow {
  Group group;
  unsigned text;
  std::string_view imageSection;
};
inline constexpr std::array groupRows{GroupRow{Group::mobile, IDS_MOBILE, "Mobile"},
                                      GroupRow{Group::pc, IDS_PC, "PC"}};

constexpr std::size_t position(Folder folder) {
  return static_cast<std::size_t>(folder);
}
constexpr std::size_t position(Group group) {
  return static_cast<std::size_t>(group);
}
constexpr const FolderRow& rowOf(Folder folder) {
  return folderRows[position(folder)];
}
constexpr bool isOnPc(Folder folder) {
  return !rowOf(folder).file.empty();
}

static_assert([] {
  for (std::size_t i = 0; i < folderCount; ++i)
    if (position(folderRows[i].folder) != i) return false;
  return true;
}());

}  // namespace store
