#include "skin/system_cell_rules.h"

#include <windows.h>

#include <oleauto.h>

#include "framework/text.h"

namespace skin {
namespace {

std::optional<double> readDate(const std::string& text) {
  // No date is without a digit, and most names are: the system takes its time to find that out.
  if (text.find_first_of("0123456789") == std::string::npos) return std::nullopt;
  std::wstring wide = framework::toWide(text);
  DATE date = 0;
  if (FAILED(VarDateFromStr(wide.data(), LOCALE_USER_DEFAULT, 0, &date))) return std::nullopt;
  return date;
}

// Two bytes for each character: of a double-byte page a lead byte counts more than any single byte.
std::string codePageOrder(const std::string& text) {
  std::string bytes;
  if (!framework::toAnsi(framework::toWide(text), bytes)) return "\xFF\xFF" + text;
  std::string ordered;
  ordered.reserve(2 * bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool lead = IsDBCSLeadByte(static_cast<BYTE>(bytes[i])) && i + 1 < bytes.size();
    ordered += lead ? bytes[i++] : '\0';
    ordered += bytes[i];
  }
  return ordered;
}

}  // namespace

CellRules systemCellRules() {
  return {readDate, codePageOrder};
}

}  // namespace skin
