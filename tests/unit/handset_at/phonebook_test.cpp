#include "handset/at/phonebook.h"

#include <gtest/gtest.h>

#include "handset/at/fields.h"
#include "handset/at/message_list.h"

namespace handset::at {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

std::string shown(const std::vector<PhonebookEntry>& entries) {
  std::string text;
  for (const PhonebookEntry& entry : entries)
    text += std::to_string(entry.index) + ' ' + entry.contact.number + " [" + entry.contact.name + "] ";
  return text;
}

TEST(Phonebook, ReadsEntriesWhateverHandsetsMakeOfThem) {
  using enum CharacterSet;
  struct Case {
    const char* name;
    Lines lines;
    std::string entries;
    CharacterSet set = ucs2;
    bool hexNumbers = false;
  };
  const std::string anna = "0041006E006E0061";
  const Case cases[] = {
      {"names as UCS-2", {"+CPBR: 1,\"+31600000001\",145,\"" + anna + "\""}, "1 +31600000001 [Anna] "},
      {"sign from the type", {"+CPBR: 1,\"31600000001\",145,\"" + anna + "\""}, "1 +31600000001 [Anna] "},
      {"everything as UCS-2", {"+CPBR: 2,\"002B00330031\",145,\"D55C\""}, "2 +31 [한] ", ucs2, true},
      {"proved by its length", {"+CPBR: 2,\"002B00330031\",145,\"D55CD83CDF89\""}, "2 +31 [한🎉] "},
      {"a number, not its code", {"+CPBR: 3,\"00310032\",129,\"0042\""}, "3 00310032 [B] "},
      {"no code at all", {"+CPBR: 3,\"112\",129,\"Help!\""}, "3 112 [Help!] ", ucs2, true},
      {"unquoted name with a NUL", {"+CPBR: 4,\"112\",129,00410042\0rest"s}, "4 112 [AB] "},
      {"name with a coded NUL", {"+CPBR: 4,\"112\",129,\"004100000042\""}, "4 112 [A] "},
      {"line break in the number",
       {"+CPBR: 5,\"+316", "00000001\",145,\"" + anna + "\""},
       "5 +31600000001 [Anna] "},
      {"further fields", {"+CPBR: 6,\"112\",129,\"0042\",\"\",0,\"x,y\",,"}, "6 112 [B] "},
      {"another place than asked", {"+CPBR: 250,\"112\",129,\"0042\""}, "250 112 [B] "},
      {"garbage between",
       {"garbage", "+CPBR: 7,\"112\",129,\"0042\"", "x\"y", "+CPBR: 8,\"113\",129,\"0043\""},
       "7 112 [B] 8 113 [C] "},
      {"empty and broken ones",
       {"+CPBR: 1,\"\",129,\"\"", "+CPBR:", "+CPBR: 2", "+CPBR: x,\"5", "+CPBR: ,,,,"},
       "0 5 [] "},
      {"default alphabet", {"+CPBR: 1,\"1\",129,\"a\0\x11\x1B\x65 \"b\" c\""s}, "1 1 [a@_€ \"b\" c] ", gsm},
      {"a comma in a name", {"+CPBR: 1,\"1\",129,\"Berg, Anna\""}, "1 1 [Berg, Anna] ", gsm},
      {"not its alphabet, UTF-8", {"+CPBR: 1,\"1\",129,\"J\xC3\xB6rg\""}, "1 1 [Jörg] ", gsm},
      {"not its alphabet, Latin-1", {"+CPBR: 1,\"1\",129,\"J\xF6rg\""}, "1 1 [Jörg] ", gsm},
      {"plain ASCII", {"+CPBR: 1,\"1\",129,\"$ 0041\""}, "1 1 [$ 0041] ", ira},
  };
  for (const Case& c : cases) EXPECT_EQ(shown(entriesIn(c.lines, c.set, c.hexNumbers)), c.entries) << c.name;
}

TEST(Phonebook, ReadsItsSize) {
  const std::optional<IndexRange> full = IndexRange{1, 250};
  for (const char* line :
       {"+CPBR: (1-250),40,14", "+CPBR: (1,250),40,14", "+CPBR: 1-250,40", "+CPBR: (\"1-250\"),4"})
    EXPECT_EQ(rangeIn({"junk", line}), full) << line;
  for (const char* line :
       {"+CPBR:", "+CPBR: ()", "+CPBR: (),40,14", "+CPBR: (9-1),40", "+CPBR: (0-99999999999)", "(1-250)"})
    EXPECT_EQ(rangeIn({line}), std::nullopt) << line;
  EXPECT_EQ(capacityIn({"+CPBS: \"SM\",12,250"}), full);
  for (const char* line : {"+CPBS: \"SM\"", "+CPBS: \"SM\",0,0", "+CPBS: ,,x", "+CPBS:"})
    EXPECT_EQ(capacityIn({line}), std::nullopt) << line;
}

TEST(Lists, AreReadInEveryShape) {
  struct Case {
    const char* list;
    Lines words;
  };
  const Case cases[] = {
      {"(\"GSM\",\"UCS2\")", {"GSM", "UCS2"}},
      {"(GSM, UCS2)", {"GSM", "UCS2"}},
      {"(\"00470053004D\",\"0055004300530032\")", {"GSM", "UCS2"}},
      {"0", {"0"}},
      {"", {}},
      {"(),(),()", {}},
      {"\"SM\",\"ME\"", {"SM", "ME"}},
      {"(\"SM,\"ME\"),(\"SM\")", {"SM", "ME"}},
      {"((\"SM\",\"BM\",\"SR\"),(\"SM\"))", {"SM", "BM", "SR"}},
      {"(\"ME\"),(\"SM\"),(\"SM\")", {"ME"}},
  };
  for (const Case& c : cases) EXPECT_EQ(wordsOf(firstGroupOf(c.list)), c.words) << c.list;
}

TEST(MessageList, FindsTheMessagesWhateverStandsAroundThem) {
  const std::string pdu = "07911326040000F0040B911306000000F100006211127151044005C8329BFD06";
  const std::string submit = "0001000B911306000000F1000005C8329BFD06";
  struct Case {
    const char* name;
    Lines lines;
    std::string rows;  // place/status/text
  };
  const Case cases[] = {
      {"states",
       {"+CMGL: 1,0,,24", pdu, "+CMGL: 2,1,,24", pdu, "+CMGL: 3,2,,18", submit, "+CMGL: 9,3,\"Anna, B\",18",
        submit},
       "1/3/Hello 2/1/Hello 3/7/Hello 9/7/Hello "},
      {"no place", {"+CMGL: 0,23", pdu}, "0/3/Hello "},
      {"empty name", {"+CMGL: 4,1,,151", pdu}, "4/1/Hello "},
      {"name left out, odd digits", {"+CMGL: 17,3,35", submit + "0"}, "17/7/Hello "},
      {"name left out, unread", {"+CMGL: 2,0,24", pdu}, "2/3/Hello "},
      {"no state",
       {"+CMGL: 5,,,24", pdu, "+CMGL: 6", submit, "+CMGL: 7,\"REC READ\",,24", pdu},
       "5/1/Hello 6/7/Hello 7/1/Hello "},
      {"in quotes", {"+CMGL: 1,1,,24", '"' + pdu + '"'}, "1/1/Hello "},
      {"garbage",
       {"x", pdu, "+CMGL: 1,1,,24", "# 12", pdu, pdu, "+CMGL: 2,1,,24", pdu},
       "1/1/Hello 2/1/Hello "},
      {"one cannot be read",
       {"+CMGL: 1,1,,24", "xyz", "+CMGL: 2,1,,24", pdu, "+CMGL: 3,1", "+CMGL:"},
       "1/1/(unreadable message) xyz 2/1/Hello 3/1/(unreadable message)  0/1/(unreadable message)  "},
      {"places out of bounds",
       {"+CMGL: 32767,1,,24", pdu, "+CMGL: 32768,1,,24", pdu, "+CMGL: -1,1,,24", pdu, "+CMGL: 99999999999,1",
        pdu},
       "32767/1/Hello 0/1/Hello 0/1/Hello 0/1/Hello "},
  };
  for (const Case& c : cases) {
    std::string rows;
    for (const Message& row : joinedMessages(messagesIn(c.lines), 100))
      rows += std::to_string(row.storageNumber) + '/' + std::to_string(row.status) + '/' + row.text + ' ';
    EXPECT_EQ(rows, c.rows) << c.name;
  }
}

}  // namespace
}  // namespace handset::at
