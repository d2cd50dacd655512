#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "list/folder_records.h"
#include "store/folder.h"

namespace list {

// Takes the messages in those slots out of a PC folder one by one; each is a change of the file of its own,
// so that whenever it breaks off, the file holds all the messages that are left. `next` is told before each
// how many are gone. Stops at the first that cannot be taken out, and answers the slots of those that were.
std::vector<std::size_t> removeMessages(FolderRecords& folders, store::Folder folder,
                                        std::vector<std::size_t> slots,
                                        const std::function<void(std::size_t gone)>& next);

}  // namespace list
