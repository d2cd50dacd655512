#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "store/code_page.h"
#include "store/sms_record.h"

// How messages are laid out as text: a header line "[SECTION]", then four lines "key = value" for each
// message, every line closed by a blank and CR LF.
namespace store {

inline constexpr std::array<std::string_view, 4> lineKeys{"Content", "Phone", "Time", "Index"};
// What stands before a value, and behind it.
inline constexpr std::array<std::string_view, 4> lineStarts{"Content = ", "Phone = ", "Time = ", "Index = "};
inline constexpr std::string_view lineEnd = " \r\n";
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// What becomes of line breaks in a message text. In the other texts each becomes a blank.
enum class LineBreaks {
  stored,  // every CR and every LF becomes a blank
  sent     // every CR is dropped, every LF becomes a blank
};

enum class IndexLine { number, empty };

// All texts are UTF-8.
std::string headerLine(std::string_view section);
void appendGroup(std::string& text, const SmsRecord& record, LineBreaks breaks, IndexLine index);
void appendGroups(std::string& text, std::span<const SmsRecord> records);

// The bytes of a file with this text: in the code page if it can hold all of it, else UTF-8 behind the mark.
std::string fileBytes(std::string text, const CodePage& codePage);

// The bytes that stand for more text at the end of an existing file, which is UTF-8 if it is marked. Nothing
// when its code page cannot hold the text.
std::optional<std::string> bytesToAppend(std::string_view text, bool marked, const CodePage& codePage);

struct Transcoded {
  std::string text;   // UTF-8, without a mark
  bool exact = true;  // the code page gives back the same bytes
};
// The text of a file without a mark.
Transcoded transcode(std::string_view bytes, const CodePage& codePage);

}  // namespace store
