#pragma once

#include "store/code_page.h"

namespace app {

// The system's ANSI code page.
class WindowsCodePage : public store::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override;
  std::string decode(std::string_view bytes) const override;
};

}  // namespace app
