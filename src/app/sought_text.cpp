#include "app/sought_text.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "framework/text.h"
#include "store/time_stamp.h"
#include "text/plain.h"

namespace app {
namespace {

// Small letters without their accents.
std::wstring folded(const std::string& text) {
  const std::wstring wide = framework::toWide(text);
  std::wstring parts(4 * wide.size(), L'\0');  // room for a letter with three accents
  const int length = FoldStringW(MAP_COMPOSITE, wide.data(), static_cast<int>(wide.size()), parts.data(),
                                 static_cast<int>(parts.size()));
  parts = length > 0 ? parts.substr(0, static_cast<std::size_t>(length)) : wide;
  std::erase_if(parts, [](wchar_t unit) { return unit >= 0x300 && unit < 0x370; });
  CharLowerBuffW(parts.data(), static_cast<DWORD>(parts.size()));
  return parts;
}

}  // namespace

SoughtText::SoughtText(std::string text, bool matchCase)
    : text_(std::move(text)),
      folded_(folded(text_)),
      narrowFolded_(framework::toUtf8(folded_)),
      matchCase_(matchCase) {}

bool SoughtText::isIn(const store::SmsRecord& message) const {
  if (folded_.empty()) return false;  // nothing, or nothing but accents
  return isIn(message.Content) || isIn(message.Phone) || isIn(store::displayTime(message.Time));
}

bool SoughtText::isIn(const std::string& field) const {
  if (matchCase_) return field.find(text_) != field.npos;
  // Most texts are of this kind, and it takes a tenth of the time.
  if (text::isAscii(field)) return !std::ranges::search(field, narrowFolded_, {}, text::lowered).empty();
  return folded(field).find(folded_) != std::wstring::npos;
}

}  // namespace app
