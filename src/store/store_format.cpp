#include "store/store_format.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "store/utf8.h"

namespace store {

namespace {

constexpr std::size_t aroundValues = [] {
  std::size_t length = 0;
  for (const std::string_view start : lineStarts) length += start.size() + lineEnd.size();
  return length;
}();

constexpr std::size_t longestNumber = std::numeric_limits<std::int32_t>::digits10 + 2;  // with its sign

std::size_t roomForGroup(const SmsRecord& record) {
  return record.Content.size() + record.Phone.size() + record.Time.size() + longestNumber + aroundValues;
}

// Most texts have no break and are taken over at once.
void appendUnbroken(std::string& text, std::string_view value, LineBreaks breaks) {
  if (isPlainText(value)) {
    text += value;
    return;
  }
  // A NUL would end the line for other readers of the file.
  constexpr std::array<char, 3> lineBreaks{'\r', '\n', '\0'};
  for (const char c : value) {
    if (std::ranges::find(lineBreaks, c) == lineBreaks.end()) {
      text += c;
    } else if (c != '\r' || breaks == LineBreaks::stored) {
      text += ' ';
    }
  }
}

// Groups of plain text are laid out here and handed on many at a time: each is a few pieces of known lengths.
class PlainGroups {
 public:
  explicit PlainGroups(std::string& text) : text_(text) {}

  // False when the group needs the care of appendGroup.
  bool append(const SmsRecord& record) {
    const std::size_t length = roomForGroup(record);
    if (length > block_.size()) return false;
    if (length > block_.size() - used_) handOn();
    char* to = block_.data() + used_;
    if (!line<0>(to, record.Content) || !line<1>(to, record.Phone) || !line<2>(to, record.Time)) return false;
    put(to, lineStarts[3]);
    to = std::to_chars(to, block_.data() + block_.size(), record.Index).ptr;
    put(to, lineEnd);
    used_ = static_cast<std::size_t>(to - block_.data());
    return true;
  }

  void handOn() {
    text_.append(block_.data(), used_);
    used_ = 0;
  }

 private:
  static void put(char*& to, std::string_view piece) {
    std::memcpy(to, piece.data(), piece.size());
    to += piece.size();
  }

  template <std::size_t field>
  static bool line(char*& to, std::string_view value) {
    put(to, lineStarts[field]);
    const bool plain = copyIfPlain(value, to);
    to += value.size();
    put(to, lineEnd);
    return plain;  // else the group is laid out anew
  }

  std::string& text_;
  std::array<char, 4096> block_;
  std::size_t used_ = 0;
};

void appendLine(std::string& text, std::string_view start, std::string_view value,
                LineBreaks breaks = LineBreaks::stored) {
  text += start;
  appendUnbroken(text, value, breaks);
  text += lineEnd;
}

}  // namespace

std::string headerLine(std::string_view section) {
  std::string line = "[";
  line += section;
  line += ']';
  line += lineEnd;
  return line;
}

void appendGroup(std::string& text, const SmsRecord& record, LineBreaks breaks, IndexLine index) {
  std::array<char, 16> digits{};
  std::size_t digitCount = 0;
  if (index == IndexLine::number) {
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), record.Index).ptr;
    digitCount = static_cast<std::size_t>(end - digits.data());
  }
  appendLine(text, lineStarts[0], record.Content, breaks);
  appendLine(text, lineStarts[1], record.Phone);
  appendLine(text, lineStarts[2], record.Time);
  appendLine(text, lineStarts[3], std::string_view(digits.data(), digitCount));
}

std::size_t roomForGroups(std::span<const SmsRecord> records) {
  std::size_t length = 0;
  for (const SmsRecord& record : records) length += roomForGroup(record);
  return length;
}

bool appendGroups(std::string& text, std::span<const SmsRecord> records) {
  PlainGroups groups(text);
  bool plain = true;
  for (const SmsRecord& record : records) {
    if (groups.append(record)) continue;
    groups.handOn();
    appendGroup(text, record, LineBreaks::stored, IndexLine::number);
    plain = plain && isPlainText(record.Content) && isPlainText(record.Phone) && isPlainText(record.Time);
  }
  groups.handOn();
  return plain;
}

std::string fileBytes(std::string text, const CodePage& codePage) {
  if (isAscii(text)) return text;
  if (std::optional<std::string> encoded = codePage.encode(text)) return *std::move(encoded);
  return text.insert(0, utf8Mark);
}

std::optional<std::string> bytesToAppend(std::string_view text, bool marked, const CodePage& codePage) {
  if (marked || isAscii(text)) return std::string(text);
  return codePage.encode(text);
}

Transcoded transcode(std::string_view bytes, const CodePage& codePage) {
  Transcoded result;
  result.text.reserve(bytes.size());
  // Without the line ends, so that a broken character before one cannot swallow it.
  while (!bytes.empty()) {
    const std::size_t lineEndAt = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const std::string_view line = bytes.substr(0, lineEndAt);
    if (isAscii(line)) {
      result.text += line;
    } else {
      const std::string decoded = codePage.decode(line);
      result.exact = result.exact && codePage.encode(decoded) == line;
      result.text += decoded;
    }
    if (lineEndAt < bytes.size()) result.text += bytes[lineEndAt];
    bytes.remove_prefix(std::min(lineEndAt + 1, bytes.size()));
  }
  return result;
}

}  // namespace store
