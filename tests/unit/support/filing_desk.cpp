#include "support/filing_desk.h"

#include <algorithm>
#include <utility>

#include "list/removal.h"
#include "list/transfer.h"
#include "store/folder_change.h"
#include "store/store_format.h"

namespace support {

using store::Folder;
using store::SmsRecord;
using store::StoreFile;

namespace {

using Records = std::vector<SmsRecord>;

StoreFile storeIn(const std::string& directory, std::size_t place, store::FileSystem& files,
                  const text::CodePage& codePage) {
  const store::StoreName& name = store::storeNames[place];
  return {files, codePage, directory + std::string(name.file), name.section};
}

SmsRecord written(const char* text) {
  return {.Content = text, .Time = "2026/03/02  11:22:33", .Phone = "+31600000009", .Index = 0};
}

bool remove(FilingDesk& desk) {
  if (desk.records(Folder::PInbox).empty()) return true;
  const std::vector slots(deletedSlots.rbegin(), deletedSlots.rend());
  return list::removeMessages(desk, Folder::PInbox, slots, [](std::size_t) {}).size() == slots.size();
}

bool sort(FilingDesk& desk) {
  const auto former = desk.records(Folder::PInbox);
  Records sorted(former.rbegin(), former.rend());
  for (std::size_t row = 0; row < sorted.size(); ++row) sorted[row].Index = static_cast<int>(row);
  return desk.replaceRecords(Folder::PInbox, std::move(sorted));
}

}  // namespace

FilingDesk::FilingDesk(store::FileSystem& files, const text::CodePage& codePage,
                       const std::string& directory)
    : stores_{storeIn(directory, 0, files, codePage), storeIn(directory, 1, files, codePage),
              storeIn(directory, 2, files, codePage)} {
  isRead_ = std::ranges::all_of(store::storeNames, [this](const auto& name) {
    return storeFile(name.folder).read(tables_[name.folder]).ok();
  });
}

StoreFile& FilingDesk::storeFile(Folder folder) {
  return stores_[store::position(folder) - store::position(Folder::PInbox)];
}

bool FilingDesk::file(Folder folder, const SmsRecord& message, store::LineBreaks breaks) {
  return storeFile(folder).append(message, breaks).ok() && storeFile(folder).read(tables_[folder]).ok();
}

bool FilingDesk::replaceRecords(Folder folder, Records records) {
  return store::replaceRecords(storeFile(folder), tables_[folder], std::move(records)).ok();
}

bool FilingDesk::removeRecord(Folder folder, std::size_t slot) {
  return store::eraseRecord(storeFile(folder), tables_[folder], slot).ok();
}

const std::array<FilingOperation, 7> filingOperations{{
    {"file-sent",
     [](FilingDesk& desk) {
       return desk.file(Folder::PSent, written("sent\r\nnow"), store::LineBreaks::sent);
     }},
    {"file-draft",
     [](FilingDesk& desk) {
       return desk.file(Folder::PDraft, written("begun\r\nnow"), store::LineBreaks::stored);
     }},
    {"file-beyond-code-page",
     [](FilingDesk& desk) {
       return desk.file(Folder::PDraft, written("\xE4\xB8\xAD"), store::LineBreaks::stored);
     }},
    {"sort", sort},
    {"delete", remove},
    {"delete-all", [](FilingDesk& desk) { return desk.replaceRecords(Folder::PInbox, {}); }},
    {"move",
     [](FilingDesk& desk) {
       return list::transferMessages(desk, Folder::PInbox, Folder::PSent,
                                     std::array<std::size_t, 3>{5, 2, 1});
     }},
}};

std::string storeWith(const store::StoreName& name, int messages) {
  std::string bytes = store::headerLine(name.section);
  for (int number = 0; number < messages; ++number) {
    const SmsRecord record{.Content = std::string(name.section) +
                                      (number % 50 == 0 ? " caf\xE9 " : " cafe ") + std::to_string(number),
                           .Time = "2026/03/02  11:22:33",
                           .Phone = "+31600000001",
                           .Index = number};
    store::appendGroup(bytes, record, store::LineBreaks::stored, store::IndexLine::number);
  }
  return bytes;
}

}  // namespace support
