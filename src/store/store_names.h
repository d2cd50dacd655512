#pragma once

#include <array>
#include <string_view>

#include "store/folder.h"

namespace store {

// Where a PC folder is kept on disk: a file beside the program with one section.
struct StoreName {
  Folder folder;
  std::string_view file;
  std::string_view section;
};

inline constexpr std::array storeNames{
    StoreName{Folder::PInbox, "pcInbox.dat", "PCINBOX"},
    StoreName{Folder::PSent, "pcSent.dat", "PCSENT"},
    StoreName{Folder::PDraft, "pcDraft.dat", "PCDRAFT"},
};

// Only for PC folders.
constexpr const StoreName& storeName(Folder folder) {
  return storeNames[position(folder) - position(Folder::PInbox)];
}

}  // namespace store
