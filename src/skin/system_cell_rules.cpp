#include "skin/system_cell_rules.h"

#include <windows.h>

#include <oleauto.h>

#include "text/system.h"

namespace skin {
namespace {

std::optional<double> readDate(const std::string& text) {
  // No date is without a digit, and most names are: the system takes its time to find that out.
  if (text.find_first_of("0123456789") == std::string::npos) return std::nullopt;
  std::wstring wide = text::toWide(text);
  DATE date = 0;
  if (FAILED(VarDateFromStr(wide.data(), LOCALE_USER_DEFAULT, 0, &date))) return std::nullopt;
  return date;
}

}  // namespace

CellRules systemCellRules() {
  return {readDate, [](const std::string& cell) { return text::orderKey(text::SystemCodePage(), cell); }};
}

}  // namespace skin
