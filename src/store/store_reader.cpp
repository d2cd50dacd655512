#include "store/store_reader.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <system_error>

#include "store/leading_number.h"
#include "store/store_format.h"
#include "store/utf8.h"

namespace store {

namespace {

constexpr std::size_t none = std::string_view::npos;

// Forward from one match to the next: there are few, and the search for each is the fastest there is.
std::size_t findLast(std::string_view text, char c) {
  std::size_t last = none;
  for (std::size_t next = text.find(c); next != none; next = text.find(c, next + 1)) last = next;
  return last;
}

bool isBlank(std::string_view line) {
  return line.find_first_not_of(std::string_view(" \t\0", 3)) == none;
}

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalInAnyCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, lowered, lowered);
}

// Whether the writer makes this very value of a number.
bool isWrittenNumber(std::string_view value, std::int32_t& number) {
  const char* const end = value.data() + value.size();
  const std::from_chars_result read = std::from_chars(value.data(), end, number);
  const std::string_view digits = value.substr(value.starts_with('-') ? 1 : 0);
  return read.ec == std::errc() && read.ptr == end && (value == "0" || !digits.starts_with('0'));
}

}  // namespace

class StoreReader::Lines {
 public:
  Lines(std::string_view section, const CodePage& codePage, FolderTable& table)
      : section_(section), codePage_(codePage), table_(table) {}

  void take(std::string_view block, std::size_t behind) {
    const std::size_t whole = block.rfind('\n') + 1;
    if (whole == 0) {
      started_ += block;
      return;
    }
    behind_ = behind + block.size() - whole;
    std::string_view lines = block.substr(0, whole);
    if (!started_.empty()) {
      const std::size_t rest = lines.find('\n') + 1;
      started_ += lines.substr(0, rest);
      takeLines(started_);
      lines.remove_prefix(rest);
    }
    takeLines(lines);
    started_ = block.substr(whole);
  }

  StoreShape finish() {
    behind_ = 0;
    takeLines(started_);
    if (place_ == Place::before && !shape_.blank) misalign();
    if (field_ != 0) completeLastRecord();
    return shape_;
  }

 private:
  enum class Place { before, inside, behind };

  // So many messages show how much room the table needs for the others.
  static constexpr std::size_t few = 16;

  void misalign() { shape_.whole = shape_.aligned = false; }

  // Only the last line of all may lack its end.
  void takeLines(std::string_view bytes) {
    if (bytes.empty()) return;
    if (taken_ == 0 && bytes.starts_with(utf8Mark)) {
      shape_.marked = true;
      bytes.remove_prefix(utf8Mark.size());
      taken_ = utf8Mark.size();
    }
    shape_.blank = shape_.blank && bytes.empty();
    while (!bytes.empty()) {
      if (place_ == Place::inside && field_ == 0 && takeWrittenMessage(bytes)) continue;
      const std::size_t end = bytes.find('\n');
      std::string_view line = bytes.substr(0, end);
      if (end == none) misalign();
      if (line.ends_with('\r')) line.remove_suffix(1);
      takeLine(line);
      advance(bytes, end == none ? bytes.size() : end + 1);
    }
  }

  void advance(std::string_view& bytes, std::size_t length) {
    bytes.remove_prefix(length);
    taken_ += length;
  }

  // Nearly all messages are just as the writer makes them, from texts with which nothing can go wrong: those
  // are taken in one go. False when the next one needs the look at every line that takeLine has.
  bool takeWrittenMessage(std::string_view& bytes) {
    std::string_view rest = bytes;
    std::string_view content;
    std::string_view phone;
    std::string_view time;
    std::string_view number;
    if (!takeWrittenLine<0>(rest, content) || !takeWrittenLine<1>(rest, phone) ||
        !takeWrittenLine<2>(rest, time) || !takeWrittenLine<3>(rest, number))
      return false;
    std::int32_t index = 0;
    if (!number.empty() && !isWrittenNumber(number, index)) return false;
    table_.append({std::string(content), std::string(time), std::string(phone), index});
    advance(bytes, bytes.size() - rest.size());
    if (table_.size() == few) table_.reserve(few + few * (bytes.size() + behind_) / taken_);
    return true;
  }

  // One look at a value: it ends where plain text ends, and that must be the line's end.
  template <std::size_t field>
  static bool takeWrittenLine(std::string_view& bytes, std::string_view& value) {
    constexpr std::string_view start = lineStarts[field];
    if (!bytes.starts_with(start)) return false;
    const std::size_t length = plainLength(bytes.substr(start.size()), '=');
    if (length == 0) return false;
    const std::string_view end = bytes.substr(start.size() + length - 1);
    if (!end.starts_with(lineEnd)) return false;
    value = bytes.substr(start.size(), length - 1);
    bytes = end.substr(lineEnd.size());
    return true;
  }

  void takeLine(std::string_view line) {
    if (line.find('\0') != none) shape_.whole = false;
    if (line.starts_with('[') && place_ == Place::before && isOwnHeader(line)) {
      place_ = Place::inside;
    } else if (line.starts_with('[')) {
      if (place_ == Place::inside) place_ = Place::behind;
      misalign();
    } else if (isBlank(line)) {
      return;
    } else if (place_ != Place::inside) {
      misalign();
    } else if (line.starts_with(';')) {
      shape_.whole = false;
    } else {
      takeField(readable(line));
    }
  }

  bool isOwnHeader(std::string_view line) {
    const std::size_t close = line.find(']');
    if (close == none || !equalInAnyCase(line.substr(1, close - 1), section_)) return false;
    if (!isBlank(line.substr(close + 1))) shape_.whole = false;
    return true;
  }

  // The line in UTF-8. Decoded before it is taken apart: in a double-byte character, '=' may be the second
  // byte.
  std::string_view readable(std::string_view line) {
    if (isAscii(line)) return line;
    if (!shape_.marked) {
      decoded_ = codePage_.decode(line);
      if (codePage_.encode(decoded_) != line) shape_.whole = false;
      return decoded_;
    }
    if (isValidUtf8(line)) return line;
    shape_.whole = false;
    decoded_ = repairedUtf8(line);
    return decoded_;
  }

  void takeField(std::string_view line) {
    const std::size_t equals = findLast(line, '=');
    const std::string_view key = line.substr(0, equals == none ? 0 : equals);
    std::string_view value = line.substr(equals == none ? 0 : equals + 1);
    const bool spaced = value.size() >= 2 && value.front() == ' ' && value.back() == ' ';
    if (value.starts_with(' ')) value.remove_prefix(1);
    if (value.ends_with(' ')) value.remove_suffix(1);
    const std::string_view ownKey = lineKeys[field_];
    if (!spaced || key.size() != ownKey.size() + 1 || !key.starts_with(ownKey) || !key.ends_with(' ') ||
        value.find('\r') != none) {
      shape_.whole = false;
    }
    store(value);
  }

  void store(std::string_view value) {
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
        // A message that has none got an empty one.
        if (!value.empty() && !isWrittenNumber(value, record.Index)) shape_.whole = false;
        record.Index = leadingNumber(value);
    }
    field_ = (field_ + 1) % lineKeys.size();
  }

  void completeLastRecord() {
    misalign();
    SmsRecord& record = table_[table_.size() - 1];
    if (field_ == 1) record.Phone = record.Content;
    if (field_ <= 2) record.Time = record.Phone;
    record.Index = leadingNumber(record.Time);
  }

  std::string_view section_;
  const CodePage& codePage_;
  FolderTable& table_;
  StoreShape shape_;
  std::string started_;     // a line whose end has not come yet
  std::size_t taken_ = 0;   // bytes
  std::size_t behind_ = 0;  // about how many bytes follow the lines that are being taken
  Place place_ = Place::before;
  std::size_t field_ = 0;  // the one that the next line fills, by its place in lineKeys
  std::string decoded_;
};

StoreReader::StoreReader(std::string_view section, const CodePage& codePage, FolderTable& table)
    : lines_(std::make_unique<Lines>(section, codePage, table)) {}

StoreReader::~StoreReader() = default;

void StoreReader::take(std::string_view block, std::size_t behind) {
  lines_->take(block, behind);
}

StoreShape StoreReader::finish() {
  return lines_->finish();
}

StoreShape readStore(std::string_view bytes, std::string_view section, const CodePage& codePage,
                     FolderTable& table) {
  StoreReader reader(section, codePage, table);
  reader.take(bytes, 0);
  return reader.finish();
}

}  // namespace store
