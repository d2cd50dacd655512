#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "store/sms_record.h"

namespace store {

// The records of one folder in load order, in slots from 0 on. Owns its records. Appending, erasing and
// clearing end the validity of references and spans handed out earlier.
class FolderTable {
 public:
  FolderTable() = default;
  explicit FolderTable(std::vector<SmsRecord> records) : records_(std::move(records)) {}

  void reserve(std::size_t count) { records_.reserve(count); }
  // A new record behind the last one: empty texts, Index -1.
  SmsRecord& append() { return records_.emplace_back(); }
  SmsRecord& append(SmsRecord record) { return records_.emplace_back(std::move(record)); }

  // Slots must be below size().
  SmsRecord& operator[](std::size_t slot) { return records_[slot]; }
  const SmsRecord& operator[](std::size_t slot) const { return records_[slot]; }
  // Closes the gap; the records behind keep their Index.
  void erase(std::size_t slot) { records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(slot)); }
  // The same for every slot that is true in `gone`, which is as long as the table.
  void erase(const std::vector<bool>& gone) {
    std::size_t slot = 0;
    std::erase_if(records_, [&](const SmsRecord&) { return gone[slot++]; });
  }

  void clear() { records_.clear(); }
  std::size_t size() const { return records_.size(); }
  bool empty() const { return records_.empty(); }
  std::span<SmsRecord> records() { return records_; }
  std::span<const SmsRecord> records() const { return records_; }

 private:
  std::vector<SmsRecord> records_;
};

}  // namespace store
