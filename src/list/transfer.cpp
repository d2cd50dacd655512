#include "list/transfer.h"

#include <utility>

namespace list {

Transfer planTransfer(std::span<const store::SmsRecord> source, std::span<const store::SmsRecord> target,
                      std::span<const std::size_t> slots, bool move) {
  Transfer transfer{{}, {target.begin(), target.end()}};
  std::vector<bool> taken(source.size(), false);
  for (const std::size_t slot : slots) {
    if (slot >= source.size()) continue;
    transfer.target.push_back(source[slot]);
    taken[slot] = true;
  }
  for (std::size_t slot = 0; move && slot < source.size(); ++slot)
    if (!taken[slot]) transfer.source.push_back(source[slot]);
  return transfer;
}

bool transferMessages(FolderRecords& folders, store::Folder source, store::Folder target,
                      std::span<const std::size_t> slots) {
  const bool move = store::isOnPc(source);
  const std::size_t former = folders.records(target).size();
  Transfer planned = planTransfer(folders.records(source), folders.records(target), slots, move);
  // The target first: whatever happens in between, no message is in neither folder.
  if (!folders.replaceRecords(target, std::move(planned.target))) return false;
  if (!move || folders.replaceRecords(source, std::move(planned.source))) return true;
  const auto back = folders.records(target).first(former);
  folders.takeBack(target, {back.begin(), back.end()});
  return false;
}

}  // namespace list
