#include "store/folders.h"

#include <algorithm>
#include <new>
#include <utility>

#include "store/store_reader.h"
#include "store/text_file.h"
#include "store/time_stamp.h"
#include "store/whole_file.h"

namespace store {
namespace {

using Pointers = std::vector<const SmsRecord*>;

Pointers pointersTo(std::span<const SmsRecord> records) {
  Pointers pointers;
  pointers.reserve(records.size());
  for (const SmsRecord& record : records) pointers.push_back(&record);
  return pointers;
}

bool sameTexts(const SmsRecord& left, const SmsRecord& right) {
  return left.Content == right.Content && left.Phone == right.Phone && left.Time == right.Time;
}

LineBreaks breaksIn(Folder folder) {
  return folder == Folder::PSent ? LineBreaks::sent : LineBreaks::stored;
}

}  // namespace

Folders::Folders(FileSystem& files, const text::CodePage& codePage, std::string_view moduleDirectory)
    : files_(files), codePage_(codePage) {
  for (const FolderRow& row : folderRows)
    if (isOnPc(row.folder))
      stores_[position(row.folder)].emplace(files, codePage, std::string(moduleDirectory).append(row.file),
                                            row.section);
}

void Folders::clear(Folder folder) {
  table(folder).clear();
  if (isOnPc(folder)) file(folder).forget();
}

template <class Change>
WriteResult Folders::attempt(Change change) {
  try {
    keptCopies_.reserve(keptCopies_.size() + 1);  // nothing may fail once the change is made
    WriteResult result = change();
    if (!result.keptCopy.empty()) keptCopies_.push_back(std::move(result.keptCopy));
    return result;
  } catch (const std::bad_alloc&) {
    return failure({FileOutcome::failed, notEnoughMemory}, {});
  }
}

ReadResult Folders::reload(Folder folder) {
  clear(folder);
  return file(folder).read(table(folder));
}

WriteResult Folders::append(Folder folder, const SmsRecord& message) {
  forgetUndo(folder);
  return attempt([&] { return file(folder).append(message, breaksIn(folder)); });
}

WriteResult Folders::rewrite(Folder folder, std::span<const SmsRecord* const> records) {
  WriteResult result = file(folder).rewrite(records, (*this)[folder].records());
  const auto former = std::ranges::find(former_, folder, &Former::folder);
  if (result.ok() && former != former_.end()) former->stamp = result.stamp;
  return result;
}

WriteResult Folders::replace(Folder folder, std::vector<SmsRecord> records) {
  return attempt([&] {
    WriteResult result = rewrite(folder, pointersTo(records));
    if (result.ok()) table(folder) = FolderTable(std::move(records));
    return result;
  });
}

WriteResult Folders::erase(Folder folder, std::size_t slot) {
  return attempt([&] {
    Pointers left = pointersTo((*this)[folder].records());
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(slot));
    WriteResult result = rewrite(folder, left);
    if (result.ok()) table(folder).erase(slot);
    return result;
  });
}

WriteResult Folders::move(Folder source, Folder target, std::span<const std::size_t> slots) {
  Pointers before;
  Pointers after;
  Pointers left;
  std::vector<SmsRecord> moved;
  std::vector<bool> gone;
  WriteResult result = attempt([&] {
    const auto from = (*this)[source].records();
    gone.resize(from.size());
    for (const std::size_t slot : slots) {
      if (slot >= from.size()) continue;
      moved.push_back(from[slot]);
      gone[slot] = true;
    }
    left = pointersTo(from);
    std::erase_if(
        left, [&](const SmsRecord* record) { return gone[static_cast<std::size_t>(record - from.data())]; });
    table(target).reserve((*this)[target].size() + moved.size());
    before = pointersTo((*this)[target].records());
    after = before;
    for (const SmsRecord& record : moved) after.push_back(&record);
    // The target first: whatever happens in between, no message is in neither folder.
    return rewrite(target, after);
  });
  if (!result.ok()) return result;

  if (isOnPc(source)) {
    WriteResult taken = attempt([&] { return rewrite(source, left); });
    if (!taken.ok()) {
      result = attempt([&] { return rewrite(target, before); });
      if (result.ok()) return taken;
      result = std::move(taken);
      result.outcome = WriteResult::Outcome::inBoth;
    }
  }
  for (SmsRecord& record : moved) table(target).append(std::move(record));
  if (isOnPc(source) && result.ok()) table(source).erase(gone);
  return result;
}

WriteResult Folders::erase(Folder folder, const SmsRecord& message) {
  forgetUndo(folder);
  return attempt([&] {
    const SmsRecord read = readBack(message, breaksIn(folder), codePage_);
    const auto records = (*this)[folder].records();
    const auto found = std::ranges::find_if(records, [&](const SmsRecord& record) {
      return sameTexts(record, message) || sameTexts(record, read);
    });
    if (found != records.end()) return erase(folder, static_cast<std::size_t>(found - records.begin()));
    // A folder that could not be read may hold it: that is a failure, and as with any rewrite no change.
    return file(folder).isRead() ? WriteResult{} : rewrite(folder, {});
  });
}

bool Folders::isKept(const SmsRecord& message) const {
  return std::ranges::any_of(folderRows, [&](const FolderRow& row) {
    if (!isOnPc(row.folder)) return false;
    SmsRecord read = readBack(message, breaksIn(row.folder), codePage_);
    read.Time = displayTime(message.Time);
    return std::ranges::any_of((*this)[row.folder].records(), [&](const SmsRecord& record) {
      return record.Phone == read.Phone && displayTime(record.Time) == read.Time &&
             (record.Content == read.Content || record.Content == message.Content);
    });
  });
}

void Folders::remember(std::initializer_list<Folder> folders) try {
  former_.clear();
  for (const Folder folder : folders)
    if (isOnPc(folder)) former_.push_back({folder, table(folder)});
} catch (const std::bad_alloc&) {
  former_.clear();  // the change is made all the same
}

void Folders::forgetUndo(Folder folder) {
  if (std::ranges::find(former_, folder, &Former::folder) != former_.end()) former_.clear();
}

bool Folders::canUndo() const {
  return !former_.empty() &&
         std::ranges::all_of(former_, [](const Former& former) { return former.stamp.has_value(); });
}

std::vector<Folder> Folders::undoFolders() const {
  std::vector<Folder> folders;
  if (canUndo())
    for (const Former& former : former_) folders.push_back(former.folder);
  return folders;
}

WriteResult Folders::undo() {
  WriteResult result;
  for (const Former& former : former_)
    if (former.stamp != stampOf(files_, path(former.folder))) result.outcome = WriteResult::Outcome::changed;
  if (!result.ok()) return result;
  bool first = true;
  for (Former& former : former_) {
    result = attempt([&] { return rewrite(former.folder, pointersTo(former.table.records())); });
    if (!result.ok()) {
      if (first) return result;
      result.outcome = WriteResult::Outcome::inBoth;
      break;
    }
    table(former.folder) = std::move(former.table);
    first = false;
  }
  former_.clear();
  return result;
}

WriteResult Folders::saveText(const std::string& path, Folder folder, std::span<const std::size_t> slots) {
  return attempt([&] {
    const auto records = (*this)[folder].records();
    Pointers chosen;
    for (const std::size_t slot : slots)
      if (slot < records.size()) chosen.push_back(&records[slot]);
    return appendText(files_, codePage_, path, chosen);
  });
}

}  // namespace store
