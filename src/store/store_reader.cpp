#include "store/store_reader.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <utility>

#include "store/leading_number.h"
#include "store/store_format.h"
#include "text/plain.h"
#include "text/unicode.h"

namespace store {
namespace {

constexpr std::size_t none = std::string_view::npos;

// Forward from one match to the next: there are few, and the search for each is the fastest there is.
std::size_t findLast(std::string_view text, char c) {
  std::size_t last = none;
  for (std::size_t next = text.find(c); next != none; next = text.find(c, next + 1)) last = next;
  return last;
}

bool isNumber(std::string_view value) {
  std::int32_t number = 0;
  const char* const end = value.data() + value.size();
  const std::from_chars_result read = std::from_chars(value.data(), end, number);
  return read.ec == std::errc() && read.ptr == end;
}

class Reader {
 public:
  Reader(std::string_view section, const text::CodePage& codePage, FolderTable& table)
      : section_(section), codePage_(codePage), table_(table) {}

  StoreShape read(std::string_view bytes) {
    if (bytes.starts_with(text::byteOrderMark)) {
      shape_.isUtf8 = true;
      bytes.remove_prefix(text::byteOrderMark.size());
    }
    shape_.empty = bytes.empty();
    while (!bytes.empty()) {
      const std::size_t end = bytes.find('\n');
      std::string_view line = bytes.substr(0, end);
      if (end == none) shape_.aligned = false;
      while (line.ends_with('\r')) line.remove_suffix(1);
      takeLine(line);
      bytes.remove_prefix(end == none ? bytes.size() : end + 1);
    }
    if (place_ == Place::before && !shape_.empty) shape_.aligned = false;
    if (field_ != 0) completeLastRecord();
    return shape_;
  }

 private:
  enum class Place { before, inside, behind };

  void takeLine(std::string_view line) {
    if (line.find('\0') != none) shape_.lossless = false;
    if (line.starts_with('[')) {
      takeHeader(line);
    } else if (text::trimmed(line).empty()) {
      return;
    } else if (place_ != Place::inside || line.starts_with(';')) {
      shape_.lossless = false;
    } else {
      takeField(readable(line));
    }
  }

  void takeHeader(std::string_view line) {
    const std::size_t close = line.find(']');
    const bool own = place_ == Place::before && close != none &&
                     text::equalInAnyCase(text::trimmed(line.substr(1, close - 1)), section_);
    if (own) {
      place_ = Place::inside;
      if (!text::trimmed(line.substr(close + 1)).empty()) shape_.lossless = false;
      return;
    }
    if (place_ == Place::inside) place_ = Place::behind;
    shape_.lossless = false;
    if (place_ == Place::behind) shape_.aligned = false;
  }

  // The line in UTF-8. Decoded before it is taken apart: in a double-byte character, '=' may be the second
  // byte.
  std::string_view readable(std::string_view line) {
    if (text::isAscii(line)) return line;
    decoded_ = shape_.isUtf8 ? text::repairedUtf8(line) : codePage_.decode(line);
    const bool exact = shape_.isUtf8 ? decoded_ == line : codePage_.encode(decoded_) == line;
    if (!exact) shape_.lossless = false;
    return decoded_;
  }

  void takeField(std::string_view line) {
    const std::size_t equals = findLast(line, '=');
    const std::string_view key = line.substr(0, equals == none ? 0 : equals);
    std::string_view value = line.substr(equals == none ? 0 : equals + 1);
    if (value.starts_with(' ')) value.remove_prefix(1);
    if (value.ends_with(' ')) value.remove_suffix(1);
    // What stands left of the last '=' may be a part of a text. A CR would become a space.
    if (!text::equalInAnyCase(text::trimmed(key), lineKeys[field_]) || value.find('\r') != none)
      shape_.lossless = false;
    if (field_ == 0) table_.append();
    SmsRecord& record = table_[table_.size() - 1];
    switch (field_) {
      case 0:
        record.Content = value;
        break;
      case 1:
        record.Phone = value;
        break;
      case 2:
        record.Time = value;
        break;
      default:
        // A message that is filed anew has none.
        if (const auto number = text::trimmed(value); !number.empty() && !isNumber(number))
          shape_.lossless = false;
        record.Index = leadingNumber(value);
    }
    field_ = (field_ + 1) % lineKeys.size();
  }

  void completeLastRecord() {
    shape_.aligned = false;
    SmsRecord& record = table_[table_.size() - 1];
    if (field_ == 1) record.Phone = record.Content;
    if (field_ <= 2) record.Time = record.Phone;
    record.Index = leadingNumber(record.Time);
  }

  std::string_view section_;
  const text::CodePage& codePage_;
  FolderTable& table_;
  StoreShape shape_;
  Place place_ = Place::before;
  std::size_t field_ = 0;  // the one that the next line fills, by its place in lineKeys
  std::string decoded_;
};

}  // namespace

StoreShape readStore(std::string_view bytes, std::string_view section, const text::CodePage& codePage,
                     FolderTable& table) {
  return Reader(section, codePage, table).read(bytes);
}

SmsRecord readBack(const SmsRecord& message, LineBreaks breaks, const text::CodePage& codePage) {
  std::string text = std::string(text::byteOrderMark) + headerLine("STORE");
  appendGroup(text, message, breaks, IndexLine::number);
  FolderTable table;
  readStore(text, "STORE", codePage, table);
  return std::move(table[0]);
}

}  // namespace store
