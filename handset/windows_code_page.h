#pragma once

#include <windows.h>

#include "handset/code_page.h"

namespace handset {

// The system's ANSI code page.
class WindowsCodePage : public CodePage {
 public:
  std::string encode(std::u16string_view character) const override;
  std::u16string decode(std::string_view bytes) const override;

 private:
  UINT page_ = GetACP();
};

}  // namespace handset
