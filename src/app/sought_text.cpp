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
      lowered_(text_),
      folded_(folded(text_)),
      matchCase_(matchCase),
      ascii_(text::isAscii(text_)) {
  std::ranges::transform(lowered_, lowered_.begin(), text::lowered);
}

bool SoughtText::isIn(const store::SmsRecord& message) const {
  if (text_.empty()) return false;
  return isIn(message.Content) || isIn(message.Phone) || isIn(store::displayTime(message.Time));
}

bool SoughtText::isIn(const std::string& field) const {
  if (matchCase_) return field.find(text_) != field.npos;
  // Most texts are of this kind, and it takes a tenth of the time.
  if (ascii_ && text::isAscii(field)) return !std::ranges::search(field, lowered_, {}, text::lowered).empty();
  return folded(field).find(folded_) != std::wstring::npos;
}

}  // namespace app
