#include "store/store_format.h"

#include <algorithm>
#include <cstddef>

#include "text/plain.h"
#include "text/unicode.h"

namespace store {
namespace {

constexpr std::string_view lineEnd = " \r\n";

bool hasControls(std::string_view text) {
  bool found = false;  // without an early end, so that the compiler looks at many at once
  for (const char c : text) found |= static_cast<unsigned char>(c) < ' ';
  return found;
}

void appendLine(std::string& text, std::string_view key, std::string_view value,
                LineBreaks breaks = LineBreaks::stored) {
  text.append(key).append(" = ");
  if (!hasControls(value)) {
    text += value;
  } else {
    for (const char c : value) {
      // A NUL would end the line for other readers of the file.
      const bool broken = c == '\r' || c == '\n' || c == '\0';
      if (!broken)
        text += c;
      else if (c != '\r' || breaks == LineBreaks::stored)
        text += ' ';
    }
  }
  text += lineEnd;
}

}  // namespace

std::string headerLine(std::string_view section) {
  return std::string("[").append(section).append("]").append(lineEnd);
}

void appendGroup(std::string& text, const SmsRecord& record, LineBreaks breaks, IndexLine index) {
  appendLine(text, lineKeys[0], record.Content, breaks);
  appendLine(text, lineKeys[1], record.Phone);
  appendLine(text, lineKeys[2], record.Time);
  appendLine(text, lineKeys[3], index == IndexLine::number ? std::to_string(record.Index) : std::string());
}

std::string layOut(std::string_view section, std::span<const SmsRecord* const> records) {
  std::string text = headerLine(section);
  constexpr std::size_t aroundValues = 64;
  std::size_t size = text.size();
  for (const SmsRecord* record : records)
    size += record->Content.size() + record->Phone.size() + record->Time.size() + aroundValues;
  text.reserve(size);
  for (const SmsRecord* record : records) appendGroup(text, *record, LineBreaks::stored, IndexLine::number);
  return text;
}

std::string fileBytes(std::string text, const text::CodePage& codePage) {
  if (text::isAscii(text)) return text;
  if (std::optional<std::string> encoded = codePage.encode(text)) return *std::move(encoded);
  return text.insert(0, text::byteOrderMark);
}

std::optional<std::string> bytesToAppend(std::string_view text, bool isUtf8, const text::CodePage& codePage) {
  if (isUtf8) return std::string(text);
  return codePage.encode(text);
}

Transcoded transcode(std::string_view bytes, const text::CodePage& codePage) {
  Transcoded result;
  result.text.reserve(bytes.size());
  // Without the line ends, so that a broken character before one cannot swallow it.
  while (!bytes.empty()) {
    const std::size_t lineEndAt = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const std::string_view line = bytes.substr(0, lineEndAt);
    const std::string decoded = codePage.decode(line);
    result.exact = result.exact && codePage.encode(decoded) == line;
    result.text += decoded;
    if (lineEndAt < bytes.size()) result.text += bytes[lineEndAt];
    bytes.remove_prefix(std::min(lineEndAt + 1, bytes.size()));
  }
  return result;
}

}  // namespace store
