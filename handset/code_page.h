#pragma once

#include <string>
#include <string_view>

namespace handset {

// The code page in which narrow texts cross the boundary. Owned by the library.
class CodePage {
 public:
  virtual ~CodePage() = default;

  // The bytes of one character, given as its one or two UTF-16 code units; empty when the page lacks it.
  virtual std::string encode(std::u16string_view character) const = 0;
  // Bytes of the page as UTF-16; what the page does not define becomes U+FFFD or what the system makes of it.
  virtual std::u16string decode(std::string_view bytes) const = 0;
};

}  // namespace handset
