#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "store/sms_record.h"
#include "text/code_page.h"

// How messages are laid out as text: a header line "[SECTION]", then four lines "key = value" for each
// message, every line closed by a space and CR LF.
namespace store {

inline constexpr std::array<std::string_view, 4> lineKeys{"Content", "Phone", "Time", "Index"};

// What becomes of line breaks in a message text. In the other texts each becomes a space.
enum class LineBreaks {
  stored,  // every CR and every LF becomes a space
  sent     // every CR is dropped, every LF becomes a space
};

enum class IndexLine { number, empty };

// All texts are UTF-8.
std::string headerLine(std::string_view section);
void appendGroup(std::string& text, const SmsRecord& record, LineBreaks breaks, IndexLine index);
// The whole text of a store.
std::string layOut(std::string_view section, std::span<const SmsRecord* const> records);

// The bytes of a file with this text: in the code page if it can hold all of it, else UTF-8 behind a
// byte-order mark.
std::string fileBytes(std::string text, const text::CodePage& codePage);

// The bytes that stand for more text at the end of an existing file, which is UTF-8 if it has a byte-order
// mark. Nothing when its code page cannot hold the text.
std::optional<std::string> bytesToAppend(std::string_view text, bool isUtf8, const text::CodePage& codePage);

struct Transcoded {
  std::string text;   // UTF-8, without a byte-order mark
  bool exact = true;  // the code page gives back the same bytes
};
// The text of a file without a byte-order mark.
Transcoded transcode(std::string_view bytes, const text::CodePage& codePage);

}  // namespace store
