#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace skin {

// Colours are 0x00BBGGRR; an absent one is the system's for windows.
struct CellColors {
  std::optional<std::uint32_t> text;
  std::optional<std::uint32_t> background;
};

// What a list keeps of a row beside its texts. A row's item data points to its record.
struct RowRecord {
  std::intptr_t value = 0;         // the caller's own
  std::vector<CellColors> colors;  // one for each column
  std::size_t rank = 0;            // the row's new place, during a sort
  std::size_t slot = 0;            // where RowRecords holds the record
};

// Owns the records of a list's rows and keeps their colours in step with its columns. Records do not move.
class RowRecords {
 public:
  RowRecord& add(std::intptr_t value);
  void remove(RowRecord& record);
  void clear() { records_.clear(); }
  std::size_t size() const { return records_.size(); }

  // A column comes to `position`, or goes from there, in every row's colours.
  void insertColumn(std::size_t position);
  void deleteColumn(std::size_t position);
  // The number of columns of a list that already has some; its rows come later.
  void setColumnCount(std::size_t count) { columnCount_ = count; }

 private:
  std::vector<std::unique_ptr<RowRecord>> records_;
  std::size_t columnCount_ = 0;
};

}  // namespace skin
