#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace text {

// The system's ANSI code page. ASCII characters are the same bytes in it and in UTF-8.
class CodePage {
 public:
  CodePage() = default;
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;
  virtual ~CodePage() = default;

  // Nothing when some character has no exact equivalent in the page, or the UTF-8 is malformed.
  virtual std::optional<std::string> encode(std::string_view utf8) const = 0;
  // Valid UTF-8 for any bytes; what the page does not define becomes some replacement.
  virtual std::string decode(std::string_view bytes) const = 0;
  // Whether the byte begins a character of two bytes.
  virtual bool isLeadByte(char byte) const = 0;
};

// A key whose bytes lie in the order of the page's characters: every character of one byte stands before
// those of two. Texts that the page cannot hold come after all others.
std::string orderKey(const CodePage& codePage, std::string utf8);

}  // namespace text
