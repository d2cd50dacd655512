#include "store/store_format.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include "store/utf8.h"

namespace store {

namespace {

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

void appendGroups(std::string& text, std::span<const SmsRecord> records) {
  for (const SmsRecord& record : records) appendGroup(text, record, LineBreaks::stored, IndexLine::number);
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
