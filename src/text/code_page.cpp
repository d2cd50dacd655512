#include "text/code_page.h"

#include "text/plain.h"

namespace text {

std::string orderKey(const CodePage& codePage, std::string utf8) {
  if (isAscii(utf8)) return utf8;
  const std::optional<std::string> bytes = codePage.encode(utf8);
  if (!bytes) return "\xFF\xFF" + utf8;
  std::string key;
  for (std::size_t i = 0; i < bytes->size(); ++i) {
    const char byte = (*bytes)[i];
    const bool lead = codePage.isLeadByte(byte) && i + 1 < bytes->size();
    // No lead byte is as low as this one, so that it puts a single byte beyond ASCII before all of them.
    if (!lead && static_cast<unsigned char>(byte) >= 0x80) key += '\x80';
    key += byte;
    if (lead) key += (*bytes)[++i];
  }
  return key;
}

}  // namespace text
