#include "store/time_stamp.h"

#include <gtest/gtest.h>

namespace {

TEST(TimeStampTest, HandsetTimesAreShownReadably) {
  const struct {
    const char* time;
    const char* shown;
  } cases[] = {
      {"05030412304500", "2005-03-04 12:30:45"},
      {"abcdefghijklmn", "20ab-cd-ef gh:ij:kl"},
      {"              ", "20  -  -     :  :  "},
      {"0503041230450", "0503041230450"},
      {"050304123045000", "050304123045000"},
      {"", ""},
      {"2005/01/02  09:05:07", "2005/01/02  09:05:07"},
      // Characters count, not bytes: 14 of them in 17 bytes, then 13 in 14 bytes.
      {"\xC3\xA9"
       "5030412\xEC\xA7\x80"
       "04500",
       "20\xC3\xA9"
       "5-03-04 12:\xEC\xA7\x80"
       "0:45"},
      {"\xC3\xA9"
       "503041230450",
       "\xC3\xA9"
       "503041230450"},
  };
  for (const auto& c : cases) EXPECT_EQ(store::displayTime(c.time), c.shown) << c.time;
}

TEST(TimeStampTest, StampsHaveTwoBlanksAndLeadingZeros) {
  std::tm time{};
  time.tm_year = 105;
  time.tm_mday = 2;
  time.tm_hour = 9;
  time.tm_min = 5;
  time.tm_sec = 7;
  EXPECT_EQ(store::timeStamp(time), "2005/01/02  09:05:07");
}

}  // namespace
