#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// How the texts of a list's cells compare when the list is sorted by them. Texts are UTF-8 of any length.
namespace skin {

// What depends on the system, handed in by the window that sorts.
struct CellRules {
  // A date and time as a count of days; nothing when the text is none. Absent: no text is a date.
  std::function<std::optional<double>(const std::string& text)> date;
  // Bytes that lie in the order of the texts themselves. Absent: the UTF-8 bytes.
  std::function<std::string(const std::string& text)> orderedBytes;
};

// The value of a text that is a hexadecimal number from end to end: leading spaces, a "+" and "0x" are read
// along, a "-" is not, since the number has no sign. Beyond 64 bits it stays at their greatest value.
std::optional<std::uint64_t> readHexadecimal(std::string_view text);

// The value of a decimal floating-point number, with leading spaces, sign and exponent, and of one that ends
// in a single "%". Beyond the range of double it is infinite or zero.
std::optional<double> readDecimal(const std::string& text);

// A text together with all that it can be compared as; made once for each row of a sort.
class CellValue {
 public:
  // `rules` must outlive the value.
  CellValue(std::string text, const CellRules& rules);

  const std::string& text() const { return text_; }
  const std::optional<std::uint64_t>& hexadecimal() const { return hexadecimal_; }
  const std::optional<double>& decimal() const { return decimal_; }
  const std::optional<double>& date() const;
  const std::string& orderedBytes() const;

 private:
  std::string text_;
  std::optional<std::uint64_t> hexadecimal_;
  std::optional<double> decimal_;
  // Asking the system takes long, and columns of numbers never need it: read when first asked for.
  mutable std::optional<std::optional<double>> date_;
  mutable std::optional<std::string> orderedBytes_;
  const CellRules* rules_;
};

// Less than zero, zero or greater, by the first way in which both texts can be read: hexadecimal numbers,
// decimal numbers, dates, texts. Over texts of different kinds this is no ordering: A < B and B < C do not
// make A < C.
int compareCells(const CellValue& a, const CellValue& b);

}  // namespace skin
