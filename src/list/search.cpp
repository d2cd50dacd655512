#include "list/search.h"

namespace list {

std::optional<SearchHit> search(const store::Folders& folders, const SearchStart& start, bool backwards,
                                const std::function<bool(const store::SmsRecord&)>& matches) {
  const std::size_t first = store::position(start.folder);
  // The first folder is gone through twice: from the start on, and at the end up to it.
  for (std::size_t i = 0; i <= store::folderCount; ++i) {
    const std::size_t step = i % store::folderCount;
    const store::Folder folder =
        store::folderRows[(first + (backwards ? store::folderCount - step : step)) % store::folderCount]
            .folder;
    const store::FolderTable& table = folders[folder];
    // Where no folder is shown there are no rows to begin at.
    const bool isStart = step == 0 && !start.order.empty();
    const std::size_t count = isStart ? start.order.size() : table.size();
    for (std::size_t j = 0; j < count; ++j) {
      const std::size_t row = backwards ? count - 1 - j : j;
      const int place = static_cast<int>(row);
      const bool behind = start.row < 0 || (backwards ? place < start.row : place > start.row);
      if (isStart && behind != (i == 0)) continue;
      if (matches(table[isStart ? start.order[row] : row])) return SearchHit{folder, row};
    }
  }
  return std::nullopt;
}

}  // namespace list
