#include "skin/cell_comparison.h"

#include <cstdlib>
#include <limits>
#include <utility>

namespace skin {
namespace {

constexpr std::string_view digits = "0123456789";

std::string_view withoutLeadingSpaces(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\n\v\f\r");
  return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

int hexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Takes the characters of `set` off the front of the text; how many there were.
std::size_t takeAll(std::string_view& text, std::string_view set) {
  std::size_t count = text.find_first_not_of(set);
  if (count == std::string_view::npos) count = text.size();
  text.remove_prefix(count);
  return count;
}

bool takeOne(std::string_view& text, std::string_view set) {
  if (text.empty() || set.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

// An invalid value is less than everything, also than itself.
template <class Value>
int compareValues(Value a, Value b) {
  if (a == b) return 0;
  return a > b ? 1 : -1;
}

}  // namespace

std::optional<std::uint64_t> readHexadecimal(std::string_view text) {
  text = withoutLeadingSpaces(text);
  takeOne(text, "+");
  if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) text.remove_prefix(2);
  if (text.empty()) return std::nullopt;
  constexpr std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t value = 0;
  for (const char c : text) {
    const int digit = hexadecimalDigit(c);
    if (digit < 0) return std::nullopt;
    value = value > greatest / 16 ? greatest : value * 16 + static_cast<std::uint64_t>(digit);
  }
  return value;
}

std::optional<double> readDecimal(const std::string& text) {
  // The form is checked here: the library's own reading also takes words such as "nan", which are names.
  std::string_view rest = withoutLeadingSpaces(text);
  takeOne(rest, "+-");
  std::size_t count = takeAll(rest, digits);
  if (takeOne(rest, ".")) count += takeAll(rest, digits);
  if (count == 0) return std::nullopt;
  if (takeOne(rest, "eE")) {
    takeOne(rest, "+-");
    if (takeAll(rest, digits) == 0) return std::nullopt;
  }
  takeOne(rest, "%");
  if (!rest.empty()) return std::nullopt;
  return std::strtod(text.c_str(), nullptr);
}

CellValue::CellValue(std::string text, const CellRules& rules)
    : text_(std::move(text)),
      hexadecimal_(readHexadecimal(text_)),
      decimal_(readDecimal(text_)),
      rules_(&rules) {}

const std::optional<double>& CellValue::date() const {
  if (!date_) date_ = rules_->date ? rules_->date(text_) : std::nullopt;
  return *date_;
}

const std::string& CellValue::orderedBytes() const {
  if (!rules_->orderedBytes) return text_;
  if (!orderedBytes_) orderedBytes_ = rules_->orderedBytes(text_);
  return *orderedBytes_;
}

int compareCells(const CellValue& a, const CellValue& b) {
  if (a.hexadecimal() && b.hexadecimal()) return compareValues(*a.hexadecimal(), *b.hexadecimal());
  if (a.decimal() && b.decimal()) return compareValues(*a.decimal(), *b.decimal());
  if (a.date() && b.date()) return compareValues(*a.date(), *b.date());
  return a.orderedBytes().compare(b.orderedBytes());
}

}  // namespace skin
