#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

#include "store/folder.h"
#include "store/folders.h"
#include "store/sms_record.h"

// Finding a message in all folders.
namespace list {

// Where a search begins: at a row of a folder whose rows may stand in another order than its slots.
struct SearchStart {
  store::Folder folder = store::Folder::MInbox;
  std::span<const std::size_t> order;  // the slots of the folder's records, row by row
  int row = -1;                        // -1 = before the first row, or behind the last one when going back
};

struct SearchHit {
  store::Folder folder;
  std::size_t row;
};

// The next message that `matches` behind the start, or the one before it, through the folders in their order
// and round to the start, whose own row comes last. In other folders row i is slot i.
std::optional<SearchHit> search(const store::Folders& folders, const SearchStart& start, bool backwards,
                                const std::function<bool(const store::SmsRecord&)>& matches);

}  // namespace list
