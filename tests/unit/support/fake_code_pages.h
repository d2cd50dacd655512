#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace support {

// One byte for each of the first 256 characters.
class Latin1Page : public text::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override;
  std::string decode(std::string_view bytes) const override;
};

// ASCII, and two bytes for each of some Korean syllables. The first is 0x81 to 0x9F; the second is 0x30 or
// above and so may look like '=' or '['. U+AC0D is "\x81=".
class DoubleBytePage : public text::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override;
  std::string decode(std::string_view bytes) const override;
};

}  // namespace support
