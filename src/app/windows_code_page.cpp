#include "app/windows_code_page.h"

#include "framework/text.h"
#include "store/utf8.h"

namespace app {

std::optional<std::string> WindowsCodePage::encode(std::string_view utf8) const {
  if (store::isAscii(utf8)) return std::string(utf8);
  const std::wstring wide = framework::toWide(utf8);
  std::string bytes;
  // Malformed UTF-8 has already lost something on the way to UTF-16.
  if (framework::toUtf8(wide) != utf8 || !framework::toAnsi(wide, bytes)) return std::nullopt;
  return bytes;
}

std::string WindowsCodePage::decode(std::string_view bytes) const {
  // ASCII is the same in every page that a system can have.
  return store::isAscii(bytes) ? std::string(bytes) : framework::toUtf8(framework::fromAnsi(bytes));
}

}  // namespace app
