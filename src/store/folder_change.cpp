#include "store/folder_change.h"

#include <utility>

namespace store {

WriteResult replaceRecords(StoreFile& file, FolderTable& table, std::vector<SmsRecord> records) {
  WriteResult written = file.rewrite(records);
  if (written.ok()) table = FolderTable(std::move(records));
  return written;
}

WriteResult eraseRecord(StoreFile& file, FolderTable& table, std::size_t slot) {
  const auto records = std::as_const(table).records();
  WriteResult written = file.rewrite(records.first(slot), records.subspan(slot + 1));
  if (written.ok()) table.erase(slot);
  return written;
}

}  // namespace store
