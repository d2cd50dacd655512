#pragma once

#include <string>
#include <string_view>

#include "text/code_page.h"

// Where UTF-8 meets Windows' UTF-16 and the system code page.
namespace text {

// Malformed input becomes U+FFFD; never fails.
std::wstring toWide(std::string_view utf8);
std::string toUtf8(std::wstring_view wide);

class SystemCodePage : public CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override;
  std::string decode(std::string_view bytes) const override;
  bool isLeadByte(char byte) const override;
};

}  // namespace text
