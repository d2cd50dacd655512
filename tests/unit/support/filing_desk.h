#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "list/folder_records.h"
#include "store/folder_table.h"
#include "store/store_file.h"
#include "store/store_names.h"

namespace support {

// The PC folders with their files, changed by the rules of the program, without its windows. Every file has
// been read when it is made.
class FilingDesk : public list::FolderRecords {
 public:
  // The directory ends in a separator.
  FilingDesk(store::FileSystem& files, const text::CodePage& codePage, const std::string& directory);

  bool isRead() const { return isRead_; }
  // Files a message behind the others and reads the folder again.
  bool file(store::Folder folder, const store::SmsRecord& message, store::LineBreaks breaks);

  std::span<const store::SmsRecord> records(store::Folder folder) const override {
    return tables_[folder].records();
  }
  bool replaceRecords(store::Folder folder, std::vector<store::SmsRecord> records) override;
  bool takeBack(store::Folder folder, std::vector<store::SmsRecord> records) override {
    return replaceRecords(folder, std::move(records));
  }
  bool removeRecord(store::Folder folder, std::size_t slot) override;
  bool saveText(const std::string&, std::span<const store::SmsRecord>) override { return false; }
  void showStatus(const std::string&) override {}

 private:
  store::StoreFile& storeFile(store::Folder folder);

  store::FolderTables tables_;
  std::array<store::StoreFile, 3> stores_;
  bool isRead_ = false;
};

// One change of the stores as a person makes it. It needs no messages, but uses those that there are.
struct FilingOperation {
  std::string_view name;
  bool (*run)(FilingDesk&);
};
extern const std::array<FilingOperation, 7> filingOperations;

// What the one named "delete" takes out of the inbox, in this order; nothing of an empty one.
inline constexpr std::array<std::size_t, 3> deletedSlots{7, 4, 1};

// The bytes of a store with that many messages, in Latin-1.
std::string storeWith(const store::StoreName& name, int messages);

}  // namespace support
