#include "handset/windows_code_page.h"

namespace handset {
namespace {

// In these two every character has its bytes, and the system takes no flags for them.
constexpr UINT gb18030 = 54936;
constexpr bool holdsEverything(UINT page) {
  return page == CP_UTF8 || page == gb18030;
}

}  // namespace

std::string WindowsCodePage::encode(std::u16string_view character) const {
  // The same in every page that a system can have, and nearly all there is.
  if (character.size() == 1 && character[0] < 0x80) return std::string(1, static_cast<char>(character[0]));
  // Without this flag a character that the page lacks may turn into another one that looks alike.
  const DWORD flags = holdsEverything(page_) ? 0 : WC_NO_BEST_FIT_CHARS;
  BOOL lacking = FALSE;
  char bytes[8];
  const int length = WideCharToMultiByte(page_, flags, reinterpret_cast<const wchar_t*>(character.data()),
                                         static_cast<int>(character.size()), bytes, sizeof bytes, nullptr,
                                         holdsEverything(page_) ? nullptr : &lacking);
  if (length <= 0 || lacking) return {};
  return {bytes, static_cast<std::size_t>(length)};
}

std::u16string WindowsCodePage::decode(std::string_view bytes) const {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  // No character of any code page takes more UTF-16 code units than bytes.
  std::u16string units(bytes.size(), u'\0');
  const int length =
      MultiByteToWideChar(page_, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(units.data()), size);
  units.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return units;
}

}  // namespace handset
