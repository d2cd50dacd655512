#include "store/leading_number.h"

#include <gtest/gtest.h>

namespace {

TEST(LeadingNumber, ReadsAsAtoiWithinTheRangeOfInt) {
  struct Case {
    const char* text;
    int number;
  };
  for (const Case& c :
       {Case{"12", 12}, Case{"  +7 apples", 7}, Case{"-3", -3}, Case{"words", 0}, Case{"", 0}, Case{"- 4", 0},
        Case{"2147483647", 2147483647}, Case{"99999999999999999999", 2147483647},
        Case{"-2147483648", -2147483647 - 1}, Case{"-99999999999999999999", -2147483647 - 1}})
    EXPECT_EQ(store::leadingNumber(c.text), c.number) << c.text;
}

}  // namespace
