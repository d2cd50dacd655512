#include "skin/cell_comparison.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace std::string_view_literals;
using skin::CellRules;
using skin::CellValue;

// "d" and digits: that day; "d?": a date that has no valid value.
std::optional<double> dayOf(const std::string& text) {
  if (text == "d?") return std::numeric_limits<double>::quiet_NaN();
  if (text.size() < 3 || text[0] != 'd' || text[1] != '.') return std::nullopt;
  return std::stod(text.substr(2));
}

int compare(const std::string& a, const std::string& b, const CellRules& rules) {
  const int order = compareCells(CellValue(a, rules), CellValue(b, rules));
  return order < 0 ? -1 : order > 0;
}

TEST(CompareCells, TakesTheFirstWayInWhichBothCanBeRead) {
  struct Case {
    const char* a;
    const char* b;
    int order;
  };
  const CellRules rules{dayOf, nullptr};
  for (const Case& c : {Case{"9", "10", -1},      Case{"9", "A", -1},
                        Case{"A", "10", -1},      Case{"fee", "bad", 1},
                        Case{"00a", "A", 0},      Case{"0x10", "F", 1},
                        Case{"+886", "887", -1},  Case{"1e1", "11", 1},  // hexadecimal before decimal
                        Case{"5%", "12.5", -1},   Case{"-5", "3", -1},
                        Case{"-5", "-3", -1},     Case{"1.50", "1.5%", 0},
                        Case{"1e3%", "999.5", 1}, Case{".5", "0.25", 1},
                        Case{"5%%", "12.5", 1},  // the texts: '5' after '1'
                        Case{"d.10", "d.9", 1},   Case{"d.9", "d.9.0", 0},
                        Case{"d?", "d.9", -1},    Case{"d.9", "d?", -1},
                        Case{"d?", "d?", -1},     Case{"d.9", "10", 1},  // a date and a number: the texts
                        Case{"Bob", "bob", -1},   Case{"Zoe", "adam", -1},
                        Case{"same", "same", 0},  Case{"", "x", -1},
                        Case{"", "", 0},          Case{"abg", "abc", 1},
                        Case{"nan", "inf", 1},    Case{"zzz", "\xC3\xA9", -1},
                        Case{"12 ", "3", -1}})  // a blank behind it: no whole number
    EXPECT_EQ(compare(c.a, c.b, rules), c.order) << '"' << c.a << "\" \"" << c.b << '"';
  EXPECT_EQ(compare("d.10", "d.9", {}), -1);
  EXPECT_EQ(compare("x1", "x2", {nullptr, [](const std::string& text) { return text == "x1" ? "b" : "a"; }}),
            1);
}

TEST(ReadHexadecimal, ReadsWholeNumbersAndStopsAtTheGreatest) {
  constexpr std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();
  struct Case {
    std::string text;
    std::uint64_t value;
  };
  for (const Case& c :
       {Case{"0", 0}, Case{" \t1f", 0x1F}, Case{"0XaB", 0xAB}, Case{"ffffffffffffffff", greatest},
        Case{"10000000000000000", greatest}, Case{"fffffffffffffff0", greatest - 15},
        Case{std::string(100000, '9'), greatest}, Case{std::string(100000, '0') + "7", 7}})
    EXPECT_EQ(skin::readHexadecimal(c.text), c.value) << c.text.substr(0, 40);
  for (const std::string_view broken :
       {""sv, " "sv, "+"sv, "-1"sv, "0x"sv, "0x0x1"sv, "1 "sv, "1g"sv, "1\0"sv})
    EXPECT_EQ(skin::readHexadecimal(broken), std::nullopt) << broken;
}

TEST(ReadDecimal, ReadsNumbersWithAtMostOnePercentSign) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  struct Case {
    std::string text;
    double value;
  };
  for (const Case& c : {Case{"12.5", 12.5}, Case{" -5%", -5}, Case{"+.5", 0.5}, Case{"5.", 5},
                        Case{"1E+2", 100}, Case{"1e9999999999999999999", infinite}, Case{"-1e999", -infinite},
                        Case{"1e-999", 0}, Case{std::string(100000, '9'), infinite}})
    EXPECT_EQ(skin::readDecimal(c.text), c.value) << c.text.substr(0, 40);
  for (const char* broken :
       {"", "%", ".", "5%%", "5 %", "%5", "1e", "1,5", "0x1p3", "nan", "inf", "--1", "1.2.3"})
    EXPECT_EQ(skin::readDecimal(broken), std::nullopt) << broken;
}

}  // namespace
