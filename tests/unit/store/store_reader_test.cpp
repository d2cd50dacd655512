#include "store/store_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "store/store_format.h"
#include "store/utf8.h"
#include "support/fake_code_pages.h"

namespace {

using namespace std::string_literals;
using store::SmsRecord;

SmsRecord message(std::string content, std::string phone, std::string time, std::int32_t index) {
  return {.Content = std::move(content), .Time = std::move(time), .Phone = std::move(phone), .Index = index};
}

const std::string header = "[PCINBOX] \r\n";
const std::string group = "Content = hi \r\nPhone = 12 \r\nTime = 05030412304500 \r\nIndex = 7 \r\n";
const SmsRecord hi = message("hi", "12", "05030412304500", 7);

enum class Page { latin1, doubleByte };

struct Case {
  const char* what;
  std::string bytes;
  std::vector<SmsRecord> records;
  bool whole = true;
  bool aligned = true;
  Page page = Page::latin1;
};

std::string content(const std::string& line) {
  return header + line + "\r\nPhone = 12 \r\nTime = 05030412304500 \r\nIndex = 7 \r\n";
}

std::string index(const std::string& line) {
  return header + "Content = hi \r\nPhone = 12 \r\nTime = 05030412304500 \r\n" + line + "\r\n";
}

SmsRecord withContent(const std::string& text) {
  return message(text, "12", "05030412304500", 7);
}
SmsRecord withIndex(std::int32_t number) {
  return message("hi", "12", "05030412304500", number);
}

const std::string lf = "[PCINBOX] \nContent = hi \nPhone = 12 \nTime = 05030412304500 \nIndex = 7 \n";
const std::string mark = "\xEF\xBB\xBF";
const SmsRecord empty = message("", "", "", 0);
constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

const std::vector<Case> cases{
    {"nothing", "", {}},
    {"only a mark", mark, {}},
    {"only a header", header, {}},
    {"one message", header + group, {hi}},
    {"two messages", header + group + group, {hi, hi}},
    {"single line feeds", lf, {hi}},
    {"a filed message without a number", index("Index =  "), {withIndex(0)}},
    {"empty texts", header + "Content =  \r\nPhone =  \r\nTime =  \r\nIndex =  \r\n", {empty}},
    {"other letter case in the section", "[pcInbox] \r\n" + group, {hi}},
    {"a usual message behind an unusual one", content("Content = a\tb ") + group, {withContent("a\tb"), hi}},
    {"a comment between two messages", header + group + "; x\r\n" + group, {hi, hi}, false},
    {"a blank line within a message",
     header + "Content = hi \r\n\r\n" + group.substr(group.find("Phone")) + group,
     {hi, hi}},
    {"a line feed alone within a message",
     header + "Content = hi \n" + group.substr(group.find("Phone")),
     {hi}},
    {"blank lines", "\r\n" + header + "  \t\r\n" + group + "\n\r\n", {hi}},
    // Values
    {"blanks belong to the text", content("Content =   hi    "), {withContent("  hi   ")}},
    {"no blanks around", content("Content=hi"), {hi}, false},
    {"a stripped end", content("Content = hi"), {hi}, false},
    {"a single blank", content("Content = "), {withContent("")}, false},
    {"an equals sign in the text", content("Content = 1+1=2 "), {withContent("2")}, false},
    {"an equals sign at the end", content("Content = a= "), {withContent("")}, false},
    {"no equals sign", content(" just text "), {withContent("just text")}, false},
    {"another key", content("Text = hi "), {hi}, false},
    {"another letter case", content("content = hi "), {hi}, false},
    {"lines in another order",
     header + "Phone = a \r\nContent = b \r\nIndex = c \r\nTime = 4 \r\n",
     {message("a", "b", "c", 4)},
     false},
    {"a lone carriage return", content("Content = a\rb "), {withContent("a\rb")}, false},
    // Numbers
    {"a negative number", index("Index = -12 "), {withIndex(-12)}},
    {"text behind a number", index("Index = 12ab "), {withIndex(12)}, false},
    {"a sign and blanks", index("Index =   +5 "), {withIndex(5)}, false},
    {"no number", index("Index = x "), {withIndex(0)}, false},
    {"the largest", index("Index = 2147483647 "), {withIndex(most)}},
    {"the smallest", index("Index = -2147483648 "), {withIndex(least)}},
    {"too large", index("Index = 2147483648 "), {withIndex(most)}, false},
    {"far too small", index("Index = -99999999999999999999999 "), {withIndex(least)}, false},
    // Whatever does not belong
    {"no header", group, {}, false, false},
    {"another section", "[PCSENT] \r\n" + group, {}, false, false},
    {"an unfinished header", "[PCINBOX \r\n" + group, {}, false, false},
    {"a longer name", "[PCINBOX2] \r\n" + group, {}, false, false},
    {"text behind the header", "[PCINBOX] x\r\n" + group, {hi}, false},
    {"text before the header", "x\r\n" + header + group, {hi}, false, false},
    {"a section before", "[A]\r\nb=c\r\n" + header + group, {hi}, false, false},
    {"a section behind", header + group + "[A]\r\nb=c\r\n", {hi}, false, false},
    {"the section twice", header + group + header + group, {hi}, false, false},
    {"a comment", header + "; hello\r\n" + group, {hi}, false},
    // Broken off
    {"one line", header + "Content = 5 a \r\n", {message("5 a", "5 a", "5 a", 5)}, false, false},
    {"two lines",
     header + group + "Content = a \r\nPhone = 42 \r\n",
     {hi, message("a", "42", "42", 42)},
     false,
     false},
    {"three lines",
     header + "Content = a \r\nPhone = 1 \r\nTime = 05 \r\n",
     {message("a", "1", "05", 5)},
     false,
     false},
    {"no last line end", header + group.substr(0, group.size() - 1), {hi}, false, false},
    // Characters
    {"a NUL", content("Content = a\0b "s), {withContent("a\0b"s)}, false},
    {"a tail of NULs", header + group + std::string(600, '\0'), {hi}, false, false},
    {"sixteen-bit text", "\xFF\xFE[\0P\0C\0"s, {}, false, false},
    {"high bytes", content("Content = \xE9t\xE9 "), {withContent("\xC3\xA9t\xC3\xA9")}},
    {"UTF-8 behind a mark",
     mark + content("Content = \xEC\xA7\x80\xF0\x9F\x98\x80 "),
     {withContent("\xEC\xA7\x80\xF0\x9F\x98\x80")}},
    {"malformed behind a mark",
     mark + content("Content = a\xC3 \xED\xA0\x80\xC0\xAF "),
     {withContent("a\xEF\xBF\xBD \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD")},
     false},
    {"a second byte like an equals sign",
     content("Content = a\x81= b "),
     {withContent("a\xEA\xB0\x8D b")},
     true,
     true,
     Page::doubleByte},
    {"a second byte like a bracket",
     content("Content = \x81[ "),
     {withContent("\xEA\xB0\xAB")},
     true,
     true,
     Page::doubleByte},
    {"a first byte without its second",
     content("Content = a\x81"),
     {withContent("a\xEF\xBF\xBD")},
     false,
     true,
     Page::doubleByte},
};

// In two blocks, cut at every place, and in blocks of one byte.
void expectTheSameHoweverItIsCut(const std::string& bytes, const text::CodePage& page,
                                 const store::FolderTable& table, const store::StoreShape& shape) {
  const auto expectSame = [&](const std::vector<std::string_view>& blocks) {
    store::FolderTable again;
    store::StoreReader reader("PCINBOX", page, again);
    for (const std::string_view block : blocks) reader.take(block, bytes.size());
    EXPECT_TRUE(reader.finish() == shape);
    EXPECT_TRUE(std::ranges::equal(again.records(), table.records()));
  };
  const std::string_view all = bytes;
  std::vector<std::string_view> single;
  for (std::size_t cut = 0; cut < all.size(); ++cut) {
    SCOPED_TRACE(cut);
    expectSame({all.substr(0, cut), all.substr(cut)});
    single.push_back(all.substr(cut, 1));
  }
  expectSame(single);
}

TEST(StoreReaderTest, EveryRule) {
  const support::Latin1Page latin1;
  const support::DoubleBytePage doubleByte;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const text::CodePage& page =
        c.page == Page::latin1 ? static_cast<const text::CodePage&>(latin1) : doubleByte;
    store::FolderTable table;
    const store::StoreShape shape = readStore(c.bytes, "PCINBOX", page, table);
    EXPECT_EQ(std::vector<SmsRecord>(table.records().begin(), table.records().end()), c.records);
    EXPECT_EQ(shape.whole, c.whole);
    EXPECT_EQ(shape.aligned, c.aligned);
    EXPECT_EQ(shape.marked, c.bytes.starts_with(mark));
    expectTheSameHoweverItIsCut(c.bytes, page, table, shape);
    if (!c.aligned) continue;

    // The promise of `aligned`: what is put behind is read as one more message, the others stay as they are.
    store::FolderTable longer;
    readStore(c.bytes + (shape.blank ? header + group : group), "PCINBOX", page, longer);
    ASSERT_EQ(longer.size(), c.records.size() + 1);
    EXPECT_EQ(longer[c.records.size()], hi);
    for (std::size_t i = 0; i < c.records.size(); ++i) EXPECT_EQ(longer[i], c.records[i]);
  }
}

TEST(StoreFormatTest, OneCharacterTellsPlainTextAndAsciiAtEveryPlace) {
  for (std::size_t length = 0; length <= 40; ++length) {
    const std::string text(length, ' ');
    EXPECT_TRUE(store::isPlainText(text) && store::isAscii(text)) << length;
    for (std::size_t place = 0; place < length; ++place) {
      for (int c = 0; c < 256; ++c) {
        std::string other = text;
        other[place] = static_cast<char>(c);
        ASSERT_EQ(store::isPlainText(other), c >= 0x20 && c < 0x80) << length << ' ' << place << ' ' << c;
        ASSERT_EQ(store::isAscii(other), c < 0x80) << length << ' ' << place << ' ' << c;
        const bool passed = c >= 0x20 && c < 0x80 && c != '=';
        ASSERT_EQ(store::plainLength(other, '='), passed ? length : place)
            << length << ' ' << place << ' ' << c;
        std::string copied(length, 'x');
        ASSERT_EQ(store::copyIfPlain(other, copied.data()), store::isPlainText(other));
        if (store::isPlainText(other)) {
          ASSERT_EQ(copied, other);
        }
      }
    }
  }
}

TEST(StoreFormatTest, LineBreaksStayOutOfTheLines) {
  const SmsRecord record = message("a\r\nb\nc\rd\0e"s, "1\n2", "3\r\n4", -5);
  const std::string rest = "Phone = 1 2 \r\nTime = 3  4 \r\n";
  std::string stored;
  appendGroup(stored, record, store::LineBreaks::stored, store::IndexLine::number);
  EXPECT_EQ(stored, "Content = a  b c d e \r\n" + rest + "Index = -5 \r\n");
  std::string sent;
  appendGroup(sent, record, store::LineBreaks::sent, store::IndexLine::empty);
  EXPECT_EQ(sent, "Content = a b cd e \r\n" + rest + "Index =  \r\n");
}

TEST(StoreFormatTest, TheCodePageIsKeptAsLongAsItHoldsTheText) {
  const support::Latin1Page page;
  EXPECT_EQ(store::fileBytes("a\xC3\xA9", page), "a\xE9");
  EXPECT_EQ(store::fileBytes("a\xC3\xA9\xE2\x82\xAC", page), mark + "a\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(store::bytesToAppend("\xC3\xA9", false, page), "\xE9");
  EXPECT_EQ(store::bytesToAppend("\xC3\xA9", true, page), "\xC3\xA9");
  EXPECT_EQ(store::bytesToAppend("\xE2\x82\xAC", false, page), std::nullopt);

  const support::DoubleBytePage doubleByte;
  const store::Transcoded kept = store::transcode("\x81=\r\n\nx\x81[", doubleByte);
  EXPECT_EQ(kept.text, "\xEA\xB0\x8D\r\n\nx\xEA\xB0\xAB");
  EXPECT_TRUE(kept.exact);
  const store::Transcoded broken = store::transcode("a\x81\r\nb", doubleByte);
  EXPECT_EQ(broken.text, "a\xEF\xBF\xBD\r\nb");
  EXPECT_FALSE(broken.exact);
}

}  // namespace
