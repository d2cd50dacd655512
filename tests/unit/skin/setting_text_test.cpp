#include "skin/setting_text.h"

#include <gtest/gtest.h>

namespace {

using skin::findSetting;

TEST(FindSetting, ReadsTheFirstMatchInItsSection) {
  const std::string text =
      "; comment\r\nimage = outside\r\n[Button]\r\n;image = off\r\n  Image =  face.png  \r\nimage=second\r\n"
      "[Font]\nfacename=\"Courier New\"\nfontsize=\n[ Spaced ]\nkey=a=b\n[Button]\nlate=found\n[open\nx=1";
  struct Case {
    const char* section;
    const char* key;
    std::optional<std::string> value;
  };
  for (const Case& c :
       {Case{"button", "IMAGE", "face.png"}, Case{"Font", "facename", "Courier New"},
        Case{"Font", "fontsize", ""}, Case{"Spaced", "key", "a=b"}, Case{"Button", "late", "found"},
        Case{"Font", "image", std::nullopt}, Case{"Missing", "image", std::nullopt},
        Case{"", "image", std::nullopt}, Case{"open", "x", "1"}})
    EXPECT_EQ(findSetting(text, c.section, c.key), c.value) << c.section << '/' << c.key;
  EXPECT_EQ(findSetting(std::string(1 << 20, '['), "a", "b"), std::nullopt);
}

TEST(ParseRect, TakesFourIntegersOnly) {
  EXPECT_EQ(skin::parseRect("10,20,110,45"), (std::array{10, 20, 110, 45}));
  EXPECT_EQ(skin::parseRect(" -1 , 0,\t7 ,8 "), (std::array{-1, 0, 7, 8}));
  for (const char* broken : {"", "1,2,3", "1,2,3,4,5", "1,2,3,x", "1,,3,4", "1,2,3,99999999999", "1;2;3;4"})
    EXPECT_EQ(skin::parseRect(broken), std::nullopt) << broken;
}

}  // namespace
