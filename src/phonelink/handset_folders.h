#pragma once

#include "phonelink/phone_link.h"
#include "store/folder.h"
#include "store/folder_table.h"

namespace phonelink {

// Reads a handset folder: first the messages of the SIM list for that folder, then those of the handset's own
// memory whose status belongs there, each in the library's order. Entries without text or number are messages
// too.
store::FolderTable readHandsetFolder(PhoneLink& link, store::Folder folder);

// Whether a message with that status is shown in that handset folder; some belong to neither.
bool belongsTo(store::Folder folder, std::uint16_t status);

}  // namespace phonelink
