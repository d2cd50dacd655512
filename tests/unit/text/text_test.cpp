#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/fake_code_pages.h"
#include "text/plain.h"
#include "text/unicode.h"

namespace {

TEST(Text, PlainQuestions) {
  EXPECT_EQ(text::trimmed(" \t a b\r\n\f\v"), "a b");
  EXPECT_EQ(text::trimmed(" \n "), "");
  EXPECT_TRUE(text::equalInAnyCase("PORTaz", "portAZ"));
  EXPECT_FALSE(text::equalInAnyCase("port", "ports"));
  EXPECT_FALSE(text::equalInAnyCase("[@`", "{`@"));
  EXPECT_TRUE(text::isAscii("a\x7F"));
  EXPECT_FALSE(text::isAscii("a\x80"));
}

TEST(Text, MalformedBytesBecomeReplacementCharactersOneByOne) {
  const std::pair<std::string, std::u16string> cases[] = {
      {"", u""},
      {"aé€😀", u"aé€😀"},
      {"\xC1\xBF\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},                      // overlong
      {"\xED\xA0\x80\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},  // none at all
      {"\xF0\x8F\xBF\xBF\xF5", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xC3(\x80\xE2\x82", u"\uFFFD(\uFFFD\uFFFD\uFFFD"},  // cut
      {"\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
       u"\u0080\u07FF\u0800\uD7FF\uE000\U00010000\U0010FFFF"}};
  for (const auto& [bytes, units] : cases) {
    EXPECT_EQ(text::utf16FromUtf8(bytes), units);
    EXPECT_EQ(text::repairedUtf8(bytes), text::utf8FromUtf16(units));
    EXPECT_EQ(text::isValidUtf8(bytes), text::utf8FromUtf16(units) == bytes);
  }
  const std::u16string halves{u'a', 0xDC00, 0xD800, u'b', 0xD800};
  EXPECT_EQ(text::utf8FromUtf16(halves), "a��b�");
}

TEST(Text, OrderIsThatOfThePagesCharacters) {
  const support::DoubleBytePage page;
  // ASCII, other single bytes, double bytes, and last what the page lacks; "ﾟ" is a higher byte than any
  // lead.
  const std::vector<std::string> ordered{"", "a", "ab", "aﾟ", "a갍", "b", "｡", "ﾟ", "가", "갍", "é", "😀"};
  std::vector<std::string> keys;
  for (const std::string& text : ordered) keys.push_back(orderKey(page, text));
  EXPECT_TRUE(std::ranges::is_sorted(keys, std::ranges::less_equal()));
  EXPECT_EQ(keys[1], "a");
}

}  // namespace
