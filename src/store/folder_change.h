#pragma once

#include <cstddef>
#include <vector>

#include "store/folder_table.h"
#include "store/sms_record.h"
#include "store/store_file.h"
#include "store/write_result.h"

namespace store {

// Changes of a PC folder: its file first, which its table then follows. When the file could not be changed,
// or an exception came in between, both are as before.
WriteResult replaceRecords(StoreFile& file, FolderTable& table, std::vector<SmsRecord> records);
// The slot must be below the table's size.
WriteResult eraseRecord(StoreFile& file, FolderTable& table, std::size_t slot);

}  // namespace store
