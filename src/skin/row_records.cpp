#include "skin/row_records.h"

#include <algorithm>
#include <utility>

namespace skin {

RowRecord& RowRecords::add(std::intptr_t value) {
  auto record = std::make_unique<RowRecord>();
  record->value = value;
  record->colors.resize(columnCount_);
  record->slot = records_.size();
  return *records_.emplace_back(std::move(record));
}

void RowRecords::remove(RowRecord& record) {
  // The last record takes the place of the one that goes, so that a long list is emptied in linear time.
  const std::size_t slot = record.slot;
  records_.back()->slot = slot;
  std::swap(records_[slot], records_.back());
  records_.pop_back();
}

void RowRecords::insertColumn(std::size_t position) {
  position = std::min(position, columnCount_++);
  for (const auto& record : records_)
    record->colors.emplace(record->colors.begin() + static_cast<std::ptrdiff_t>(position));
}

void RowRecords::deleteColumn(std::size_t position) {
  if (position >= columnCount_) return;
  --columnCount_;
  for (const auto& record : records_)
    record->colors.erase(record->colors.begin() + static_cast<std::ptrdiff_t>(position));
}

}  // namespace skin
