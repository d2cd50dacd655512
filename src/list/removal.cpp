#include "list/removal.h"

#include <algorithm>

namespace list {

std::vector<std::size_t> removeMessages(FolderRecords& folders, store::Folder folder,
                                        std::vector<std::size_t> slots,
                                        const std::function<void(std::size_t gone)>& next) {
  // The highest first, so that those still to go keep their slots.
  std::ranges::sort(slots, std::greater<>());
  std::size_t gone = 0;
  for (; gone < slots.size() && slots[gone] < folders.records(folder).size(); ++gone) {
    next(gone);
    if (!folders.removeRecord(folder, slots[gone])) break;
  }
  slots.resize(gone);
  return slots;
}

}  // namespace list
