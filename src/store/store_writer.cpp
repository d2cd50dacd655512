#include "store/store_writer.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

#include "store/store_format.h"
#include "store/utf8.h"

namespace store {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 18;
constexpr std::size_t soon = 8;  // messages from now

constexpr std::size_t aroundValues = [] {
  std::size_t length = 0;
  for (const std::string_view start : lineStarts) length += start.size() + lineEnd.size();
  return length;
}();

constexpr std::size_t longestNumber = std::numeric_limits<std::int32_t>::digits10 + 2;  // with its sign

std::size_t roomForGroup(const SmsRecord& record) {
  return record.Content.size() + record.Phone.size() + record.Time.size() + longestNumber + aroundValues;
}

void put(char*& to, std::string_view piece) {
  std::memcpy(to, piece.data(), piece.size());
  to += piece.size();
}

// False unless the value is plain text.
template <std::size_t field>
bool putLine(char*& to, std::string_view value) {
  put(to, lineStarts[field]);
  const bool plain = copyIfPlain(value, to);
  to += value.size();
  put(to, lineEnd);
  return plain;
}

// The texts of a large table lie far apart in memory: the processor is told which ones come soon.
void fetch(const SmsRecord& record) {
  constexpr std::size_t cacheLine = 64;
  for (std::size_t at = 0; at < record.Content.size(); at += cacheLine)
    __builtin_prefetch(record.Content.data() + at);
  __builtin_prefetch(record.Time.data());
}

}  // namespace

StoreWriter::StoreWriter(std::string_view section, const CodePage& codePage)
    : header_(headerLine(section)),
      codePage_(codePage),
      block_(std::make_unique_for_overwrite<char[]>(blockSize)) {}

FileStatus StoreWriter::write(File& file, std::span<const SmsRecord> records,
                              std::span<const SmsRecord> further) {
  marked_ = false;
  if (writeAll(file, records, further) || !status_.ok()) return status_;
  // From the start again.
  marked_ = true;
  if (digest().size > 0) status_ = file.truncate(0);
  if (status_.ok()) writeAll(file, records, further);
  return status_;
}

bool StoreWriter::writeAll(File& file, std::span<const SmsRecord> records,
                           std::span<const SmsRecord> further) {
  status_ = {};
  digester_ = {};
  used_ = 0;
  ascii_ = true;
  if ((marked_ && !writeText(file, utf8Mark)) || !writeText(file, header_)) return false;
  for (const auto part : {records, further}) {
    for (std::size_t slot = 0; slot < part.size(); ++slot) {
      if (slot + soon < part.size()) fetch(part[slot + soon]);
      if (!writeGroup(file, part[slot])) return false;
    }
  }
  return writeBlock(file);
}

// Nearly all messages are plain text: their groups are a few pieces of known lengths, copied one behind the
// other.
bool StoreWriter::writeGroup(File& file, const SmsRecord& record) {
  if (layOut(record)) return true;
  group_.clear();
  appendGroup(group_, record, LineBreaks::stored, IndexLine::number);
  return writeText(file, group_);
}

bool StoreWriter::writeText(File& file, std::string_view text) {
  const bool ascii = isAscii(text);
  if (text.size() > blockSize - used_ && !writeBlock(file)) return false;
  if (text.size() > blockSize) return writeOut(file, text, ascii);
  text.copy(block_.get() + used_, text.size());
  used_ += text.size();
  ascii_ = ascii_ && ascii;
  return true;
}

bool StoreWriter::layOut(const SmsRecord& record) {
  if (roomForGroup(record) > blockSize - used_) return false;
  char* to = block_.get() + used_;
  if (!putLine<0>(to, record.Content) || !putLine<1>(to, record.Phone) || !putLine<2>(to, record.Time))
    return false;
  put(to, lineStarts[3]);
  to = std::to_chars(to, to + longestNumber, record.Index).ptr;
  put(to, lineEnd);
  used_ = static_cast<std::size_t>(to - block_.get());
  return true;
}

bool StoreWriter::writeBlock(File& file) {
  const std::string_view text(block_.get(), used_);
  const bool ascii = ascii_;
  used_ = 0;
  ascii_ = true;
  return text.empty() || writeOut(file, text, ascii);
}

bool StoreWriter::writeOut(File& file, std::string_view text, bool ascii) {
  std::optional<std::string> encoded;
  if (!ascii && !marked_) {
    encoded = codePage_.encode(text);
    if (!encoded) return false;
    text = *encoded;
  }
  digester_.take(text);
  status_ = file.write(text);
  return status_.ok();
}

}  // namespace store
