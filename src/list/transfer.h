#pragma once

#include <span>
#include <vector>

#include "list/folder_records.h"
#include "store/folder.h"
#include "store/sms_record.h"

namespace list {

// What a transfer of messages makes of the two folders.
struct Transfer {
  std::vector<store::SmsRecord> source;
  std::vector<store::SmsRecord> target;
};

// slots: those of the messages, in the order in which they are appended to the target. The source is left
// without them when they are moved; when they are copied it stays as it is, and is empty here.
Transfer planTransfer(std::span<const store::SmsRecord> source, std::span<const store::SmsRecord> target,
                      std::span<const std::size_t> slots, bool move);

// Moves the messages in those slots of a PC folder to another, copies those of a handset folder. False when
// a file could not be changed: then both folders are as before, or, if nothing at all can be written any
// more, the messages are in both.
bool transferMessages(FolderRecords& folders, store::Folder source, store::Folder target,
                      std::span<const std::size_t> slots);

}  // namespace list
