#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "store/store_format.h"
#include "store/store_reader.h"
#include "store/time_stamp.h"
#include "support/fake_code_pages.h"

namespace {

using namespace std::string_literals;
using store::SmsRecord;

// The messages as "content#index/phone/time", without what most of them have: 7, 12 and 05.
std::string summary(const store::FolderTable& table) {
  std::string all;
  for (const SmsRecord& record : table.records()) {
    all += (&record == &table[0] ? "" : ", ") + record.Content;
    if (record.Index != 7) all += "#" + std::to_string(record.Index);
    if (record.Phone != "12" || record.Time != "05") all += "/" + record.Phone + "/" + record.Time;
  }
  return all;
}

const std::string header = "[PCINBOX] \r\n";
const std::string mark = "\xEF\xBB\xBF";
std::string content(const std::string& line) {
  return line + "\r\nPhone = 12 \r\nTime = 05 \r\nIndex = 7 \r\n";
}
std::string index(const std::string& line) {
  return "Content = hi \r\nPhone = 12 \r\nTime = 05 \r\n" + line + "\r\n";
}
const std::string group = content("Content = hi ");

enum Fate { fine, lossy, misaligned, lost };  // lost: both

struct Case {
  const char* what;
  std::string bytes;
  std::string records;
  Fate fate = fine;
  bool doubleByte = false;
};

const std::vector<Case> cases{
    {"nothing", "", ""},
    {"only a byte-order mark", mark, ""},
    {"only a header", header, ""},
    {"two messages", header + group + group, "hi, hi"},
    {"single line feeds", "[PCINBOX] \nContent = hi \nPhone = 12 \nTime = 05 \nIndex = 7 \n", "hi"},
    {"doubled carriage returns", header + content("Content = hi \r"), "hi"},
    {"a filed message without a number", header + index("Index =  "), "hi#0"},
    {"a header typed by hand", "[ pcInbox]\n" + group, "hi"},
    {"typed without spaces", header + content("Content=zero"), "zero"},
    {"a key in another letter case", header + content(" CONTENT\t= hi "), "hi"},
    {"empty lines", "\r\n" + header + "  \t\r\nContent = hi \r\n\r\n" + group.substr(group.find("Phone")),
     "hi"},
    {"one space on either side is the writer's", header + content("Content =   hi    "), "  hi   "},
    {"a single space", header + content("Content = "), ""},
    {"high bytes", header + content("Content = \xE9t\xE9 "), "été"},
    {"UTF-8 behind a mark", mark + header + content("Content = 지😀 "), "지😀"},
    {"a second byte like an equals sign", header + content("Content = a\x81= b "), "a갍 b", fine, true},
    {"a negative number", header + index("Index = -12"), "hi#-12"},
    // A value goes lost.
    {"an equals sign in the text", header + content("Content = 1+1=2 "), "2", lossy},
    {"no equals sign", header + content(" just text "), "just text", lossy},
    {"another key", header + content("Text = hi "), "hi", lossy},
    {"a lone carriage return", header + content("Content = a\rb "), "a\rb", lossy},
    {"a NUL", header + content("Content = a\0b "s), "a\0b"s, lossy},
    {"text behind a number", header + index("Index = 12ab "), "hi#12", lossy},
    {"no number", header + index("Index = x "), "hi#0", lossy},
    {"a number too large", header + index("Index = 2147483648 "), "hi#2147483647", lossy},
    {"text behind the header", "[PCINBOX] x\r\n" + group, "hi", lossy},
    {"a section before", "[A]\r\nb=c\r\n" + header + group, "hi", lossy},
    {"a comment", header + group + "; x\r\n" + group, "hi, hi", lossy},
    {"malformed behind a mark", mark + header + content("Content = a\xC3 \xED\xA0\x80 "), "a� ���", lossy},
    {"a first byte without its second", header + content("Content = a\x81"), "a�", lossy, true},
    // Four lines at the end would not be read as one more message.
    {"one line", header + "Content = 5 a \r\n", "5 a#5/5 a/5 a", misaligned},
    {"two lines", header + group + "Content = a \r\nPhone = 42 \r\n", "hi, a#42/42/42", misaligned},
    {"three lines", header + "Content = a \r\nPhone = 1 \r\nTime = 05 \r\n", "a#5/1/05", misaligned},
    {"no last line end", header + group.substr(0, group.size() - 2), "hi", misaligned},
    {"only empty lines", "\r\n \r\n", "", misaligned},
    {"no header", group, "", lost},
    {"a longer name", "[PCINBOX2] \r\n" + group, "", lost},
    {"an unfinished header", "[PCINBOX \r\n" + group, "", lost},
    {"a section behind", header + group + "[A]\r\nb=c\r\n", "hi", lost},
    {"the section twice", header + group + header + group, "hi", lost},
    {"sixteen-bit text", "\xFF\xFE[\0P\0"s, "", lost},
};

TEST(StoreReader, EveryRule) {
  const support::Latin1Page latin1;
  const support::DoubleBytePage doubleByte;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const text::CodePage& page = c.doubleByte ? static_cast<const text::CodePage&>(doubleByte) : latin1;
    store::FolderTable table;
    const store::StoreShape shape = readStore(c.bytes, "PCINBOX", page, table);
    EXPECT_EQ(summary(table), c.records);
    EXPECT_EQ(shape.lossless, c.fate == fine || c.fate == misaligned);
    EXPECT_EQ(shape.aligned, c.fate == fine || c.fate == lossy);
    EXPECT_EQ(shape.isUtf8, c.bytes.starts_with(mark));
    if (!shape.aligned) continue;
    // The promise of `aligned`: what is put behind is read as one more message, the others stay as they are.
    store::FolderTable longer;
    readStore(c.bytes + (shape.empty ? header + group : group), "PCINBOX", page, longer);
    EXPECT_EQ(summary(longer), c.records + (table.empty() ? "hi" : ", hi"));
  }
}

TEST(TimeStamp, HandsetTimesAreShownReadablyAndStampsHaveTwoSpaces) {
  // Characters count, not bytes: the fifth has 14 of them in 17 bytes.
  const std::pair<const char*, const char*> times[] = {
      {"05030412304500", "2005-03-04 12:30:45"},   {"abcdefghijklmn", "20ab-cd-ef gh:ij:kl"},
      {"0503041230450", "0503041230450"},          {"050304123045000", "050304123045000"},
      {"é5030412지04500", "20é5-03-04 12:지0:45"}, {"é503041230450", "é503041230450"}};
  for (const auto& [time, shown] : times) EXPECT_EQ(store::displayTime(time), shown) << time;
  std::tm morning{};
  std::tie(morning.tm_year, morning.tm_mday, morning.tm_hour, morning.tm_min) = std::tuple{105, 2, 9, 5};
  EXPECT_EQ(store::timeStamp(morning), "2005/01/02  09:05:00");
}

}  // namespace
