#include "handset/library.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>

#include "fakes.h"
#include "handset/simulated/simulated_handset.h"
#include "support/fake_code_pages.h"
#include "text/unicode.h"

namespace handset {
namespace {

using namespace std::string_literals;

const std::string oneEach =
    "[message]\ntext=R\n[message]\nstatus=7\n[message]\nstore=phone\n[contact]\n[contact]\nstore=phone\n";
const std::string items =
    "# a comment\n[message]\nstore = phone\nstatus = unread\nnumber = +31600000001\ntime = "
    "26112106171504\nindex = 7\ntext = a = b\\nｱ \\\\n 🎉\n; another comment\n[message]\nstatus = "
    "2\n[message]\nstatus = outgoing\ntext= o\n\n[contact]\nstore = phone\nname = 김🌻\nnumber = "
    "+82000000058\n[contact]\nstore=sim\nname = ｱ\n";
const std::string messages = "|2/0///o; |7/3/+31600000001/26112106171504/a = b\n\xB1 \\n ?; |";

// Notes who is asked what, and cannot read what it has sent.
struct RealHandset : SimulatedHandset {
  using SimulatedHandset::SimulatedHandset;
  bool open(int port, int baud) override {
    asked += "open(" + std::to_string(port) + "," + std::to_string(baud) + ") ";
    return port == 12 && SimulatedHandset::open(port, baud);
  }
  void close() override { asked += "close "; }
  std::optional<std::vector<Message>> simOutgoing() override { return std::nullopt; }
  std::string asked;
};

struct LibraryTest : testing::Test {
  // How many of open() and init() went well at the simulated port.
  int opened(const std::string& file) {
    world->file = file;
    const int open = library.open(simulatedPort, 115200);
    return open + library.init();
  }

  // "*" marks 16-bit characters.
  static std::string shown(const phonelink::MessageEntry& e) {
    const bool wide = e.coding == phonelink::codingUcs2;
    const std::string text = wide ? text::utf8FromUtf16(e.wideText()) + '*' : e.narrowText();
    return Shown::of(Message{e.phone, e.time, text, e.status, e.number});
  }
  static std::string shown(const phonelink::ContactEntry& e) { return Shown::of(Contact{e.name, e.number}); }
  static std::string shown(const phonelink::WideContactEntry& e) {
    return Shown::of(Contact{text::utf8FromUtf16(e.name), e.number});
  }
  // What a read writes into a buffer for `count` entries, or how many; the rest of it must stay as it was.
  template <typename Entry, std::size_t Size>
  std::string read(int (Library::*operation)(std::span<std::byte>), std::size_t head,
                   Entry (*decode)(std::span<const std::byte, Size>), std::size_t count) {
    std::vector<std::byte> buffer(head + count * Size, std::byte{0x5A});
    const auto got = static_cast<std::size_t>((library.*operation)(buffer));
    EXPECT_LE(got, count);
    const std::span<const std::byte> bytes{buffer};
    std::string all;
    for (std::size_t at = head; at < head + got * Size; at += Size)
      all += shown(decode(bytes.subspan(at).template first<Size>()));
    for (const auto& rest : {bytes.first(head), bytes.subspan(head + got * Size)})
      EXPECT_TRUE(std::ranges::all_of(rest, [](std::byte b) { return b == std::byte{0x5A}; }));
    return got > 9 ? std::to_string(got) : all;
  }
  std::string received(std::size_t count = 1000) {
    return read(&Library::receivedMessages, 0, phonelink::decodeMessage, count);
  }
  std::string outgoing() { return read(&Library::outgoingMessages, 0, phonelink::decodeMessage, 1000); }
  // Every read; the standard phonebook's buffer is 40,000 bytes: 999 entries and a rest.
  std::string all() {
    return received() + '|' + outgoing() + '|' +
           read(&Library::handsetMessages, 0, phonelink::decodeHandsetMessage, 1000) + '|' +
           read(&Library::contacts, 4, phonelink::decodeContact, 999) + '|' +
           read(&Library::wideContacts, 4, phonelink::decodeWideContact, 1000);
  }

  // A number of seventeen characters leaves its field without an end.
  int send(std::string_view number, std::string_view text = "x", int coding = 0) {
    std::vector<std::byte> entry(phonelink::messageEntrySize);
    std::ranges::copy(std::as_bytes(std::span{number}), entry.begin() + 16);
    entry[33] = std::byte(coding);
    std::ranges::copy(std::as_bytes(std::span{text}), entry.begin() + 50);
    return library.send(phonelink::MessageBytes{entry.data(), phonelink::messageEntrySize});
  }

  FakeWorld *world = new FakeWorld, *realWorld = new FakeWorld;
  SimulatedHandset* handset = new SimulatedHandset{std::unique_ptr<Environment>{world}};
  RealHandset* real = new RealHandset{std::unique_ptr<Environment>{realWorld}};
  Library library{std::unique_ptr<Handset>{handset}, std::unique_ptr<Handset>{real},
                  std::make_unique<support::DoubleBytePage>()};
};

TEST_F(LibraryTest, GivesNothingUnlessOpenAndReady) {
  const auto expectClosed = [this](const char* when) {
    EXPECT_EQ(all(), "||||") << when;
    EXPECT_FALSE(library.initPhonebook() != 0 || send("5550142") != -1) << when;
  };
  expectClosed("before open");
  EXPECT_EQ(library.init(), 0);
  world->file = oneEach;
  EXPECT_EQ(library.open(simulatedPort, 115200), 1);
  expectClosed("before init");
  for (const char* setting : {"open", "init"}) {
    EXPECT_EQ(opened(oneEach + "[settings]\n" + setting + " = no"), setting[0] == 'o' ? 0 : 1);
    expectClosed(setting);
  }
  EXPECT_EQ(opened(oneEach), 2);
  EXPECT_EQ(library.initPhonebook(), 1);
  EXPECT_EQ(all(), "1/0///R; |2/0///; |1/1///; |=; |=; ");
  library.close();
  expectClosed("after close");
}

TEST_F(LibraryTest, AsksTheRealHandsetAtEveryOtherPort) {
  opened(oneEach);
  realWorld->file = "[settings]\nunicode = no\nphonebook = no\n[message]\ntext = real\nunicode = yes";
  for (const int port : {1, -1, 12}) EXPECT_EQ(library.open(port, 9600), port == 12 ? 1 : 0);
  EXPECT_EQ(library.init(), 1);
  EXPECT_EQ(send("5550142"), 1);
  EXPECT_EQ(all(), "1/0///real; ||||") << "some could not be read";
  EXPECT_EQ(library.initPhonebook(), 0);
  EXPECT_EQ(library.setUnicode(1), 0);  // of both handsets, whichever is open
  EXPECT_EQ(realWorld->reports, "line 6: no such key in this section\n");
  library.close();
  library.close();
  EXPECT_EQ(real->asked, "open(1,9600) open(-1,9600) open(12,9600) close ");
  opened(oneEach);
  EXPECT_EQ(received(), "1/0///R; ");
}

TEST_F(LibraryTest, ContinuesTextsInFurtherEntries) {
  const std::string x158(158, 'x'), greek79 = repeated("Ω", 79), n = "1/0///";
  const auto entries = [this](const std::string& text) {
    EXPECT_EQ(opened("[message]\ntext = " + text), 2);
    return received();
  };
  for (const int unicode : {0, 1, 0}) {
    EXPECT_EQ(library.setUnicode(unicode), unicode);
    // Half a two-byte character is none.
    expectEach(entries, {"1/0///;  <= ", "1/0///\xB1\x81\x31;  <= ｱ각", "1/0///ab;  <= a\0b"s,
                         "1/0///\xB1;  <= ｱ\0"s, n + x158 + "yz;  <= " + x158 + "yz",
                         n + x158 + "yz; " + n + x158 + "ab; " + n + "!;  <= " + x158 + "yz" + x158 + "ab!",
                         n + x158 + "y; " + n + "\x81\x31z;  <= " + x158 + "y각z",
                         n + x158 + "\x81\x31; " + n + "z;  <= " + x158 + "각z"});
    if (unicode == 0) expectEach(entries, {"1/0///??.;  <= Ω🎉."});
    if (unicode == 1)
      expectEach(entries, {"1/0///Ω🎉!*;  <= Ω🎉!", n + greek79 + "Ω*; 1/0///Ψ*;  <= " + greek79 + "ΩΨ",
                           "1/0///ΩΩ*;  <= Ω\0Ω"s, n + greek79 + "*; 1/0///🎉y*;  <= " + greek79 + "🎉y",
                           "1/0///\uFFFD*;  <= \xFF"});
  }
  const std::string phone = "[contact]\nstore = phone\nname = ", n125(125, 'n');
  opened("[message]\nstore=phone\nstatus=40000\nnumber=+3160000000112345\nindex=-2\n[contact]\nname = " +
         repeated("ｱ", 18) + "각\nnumber = 01234567890123456789\n" + phone + n125 + "🌻\n");
  EXPECT_EQ(all(), "||-2/40000/+316000000011234//; |0123456789012345678=" + repeated("\xB1", 18) +
                       "; |=" + n125 + "; ");
}

TEST_F(LibraryTest, NeverWritesPastTheBuffer) {
  opened(repeated(oneEach, 1001));
  EXPECT_EQ(all(), "1000|1000|1000|999|1000");
  EXPECT_EQ(received(0), "");
  std::vector<std::byte> bytes(1002 * phonelink::messageEntrySize);
  EXPECT_EQ(library.receivedMessages(bytes), 1000);
  EXPECT_EQ(library.contacts(std::span{bytes}.first(3)), 0);
  opened(oneEach + "[message]\ntext = " + std::string(400, 'x'));
  const std::string piece = "3/0///" + std::string(160, 'x') + "; ";  // of three: the third has no room
  EXPECT_EQ(received(3), "1/0///R; " + piece + piece);
}

TEST_F(LibraryTest, SendsTheTextThatTheEntryMeansOrSaysThatItDidNot) {
  opened("[message]\nstatus = outgoing\nindex = 1\ntext = old\n[message]\nindex = 2\n");
  EXPECT_EQ(send("+316000000012345", std::string(160, 'x')), 1);  // a full field has no NUL
  world->time = {2101, 12, 31, 23, 59, 5, -32};
  EXPECT_EQ(send("55", "\xB1\x81\x31", 8), 1);  // 8 alone does not mean 16-bit characters
  library.setUnicode(1);
  EXPECT_EQ(send("55", "\xB1"), 1);
  EXPECT_EQ(send("55", "\xA9\x03\x3C\xD8\x89\xDF", 8), 1);
  const std::string rest =
      "4/0/55/011231235905B2/\xB1\x81\x31; 5/0/55/011231235905B2/\xB1; 6/0/55/011231235905B2/Ω🎉*; ";
  const std::string x160(160, 'x'), first = "/0/+316000000012345/26112117150404/" + x160 + "; ";
  EXPECT_EQ(outgoing(), "1/0///old; 3" + first + rest);
  // Meanwhile somebody has put a message in the file where the first one was stored.
  opened("[settings]\nunreachable = 5550199\n[message]\nindex = 3\n[message]\nstore=phone\nindex = 1\n");
  EXPECT_EQ(outgoing(), "1" + first + rest);
  // Half a number would reach somebody else.
  for (const char* number : {"5550199", "", "+:/a", "+3160000000123456"}) EXPECT_EQ(send(number), -1);
  EXPECT_EQ(outgoing(), "1" + first + rest);
}

TEST_F(LibraryTest, SimulatesWhatItsFileHoldsWhateverEditorSavedIt) {
  for (const std::string& file : {items, "\xEF\xBB\xBF" + items, items.substr(0, items.size() - 1),
                                  std::regex_replace(items, std::regex{"\n"}, "  \t\r\n  ")}) {
    EXPECT_EQ(opened(file), 2);
    EXPECT_EQ(all(), messages + "=\xB1; |+82000000058=김🌻; ") << file;
  }
  opened(
      "[message]\n[message]\nindex = 1\n[message]\nindex = -5\n[message]\nindex = "
      "3\nstatus=unread\n[message]\n[message]\nstore=phone\n[message]\nindex = 3\n");
  EXPECT_EQ(received(), "2/0///; 1/0///; -5/0///; 3/0///; 4/0///; 3/0///; ");
  opened("[settings]\nphonebook=no\ndelay = 30\n" + items);
  EXPECT_EQ(all(), messages + '|');
  send("1");
  EXPECT_EQ(library.initPhonebook(), 0);
  EXPECT_EQ(world->reports, "");
  world->file.reset();
  EXPECT_EQ(library.setUnicode(1), 1);
  EXPECT_EQ(library.open(0, 115200), 0);
  EXPECT_EQ(world->reports, "there is no content to simulate a handset from\n");
  EXPECT_EQ(world->pauses, std::vector<int>(10, 30));
}

TEST_F(LibraryTest, NamesTheLineOfEachMistakeInTheFileAndGoesOn) {
  opened(
      "open = no\n[message]\nhello\n[message\ndelay = 5\nstatus = seen\nstatus = 65536\nstore = pc\nindex = "
      "32768\nindex = 3a\n"
      "number = 0123456789012345\nnumber = 01234567890123456\ntime = 012345678901234\ntime = "
      "0123456789012345\n"
      "text = a\\tb\ntext = end\\\n[settings]\n delay = 60000\ndelay = 0\n delay = 60001\nopen = "
      "maybe\ncolour = red\n"
      "[contact]\ntext = x\n[mesage]\nanything = goes\n[message]\ntext = after\n");
  EXPECT_EQ(Shown::of(handset->simReceived()), "1/1/01234567890123456/0123456789012345/end\\; 2/1///after; ");
  EXPECT_EQ(world->reports,
            "line 1: a value before the first section\n"
            "line 3: neither a section nor \"key = value\"\n"
            "line 4: neither a section nor \"key = value\"\n"
            "line 5: no such key in this section\n"
            "line 6: neither received, unread, outgoing nor a number up to 65535\n"
            "line 7: neither received, unread, outgoing nor a number up to 65535\n"
            "line 8: neither sim nor phone\n"
            "line 9: not a number from -32768 to 32767\n"
            "line 10: not a number from -32768 to 32767\n"
            "line 12: longer than 16: the rest will not be seen\n"
            "line 14: longer than 15: the rest will not be seen\n"
            "line 15: a backslash that begins neither \\n nor \\\\ stays as it is\n"
            "line 16: a backslash that begins neither \\n nor \\\\ stays as it is\n"
            "line 20: not a number of milliseconds up to 60000\n"
            "line 21: neither yes nor no\n"
            "line 22: no such key in this section\n"
            "line 24: no such key in this section\n"
            "line 25: no such section; left out\n");
}

TEST(Content, IsBoundedWhateverTheFileHolds) {
  const Content crowd = parseContent(repeated("[message]\n", maxContentItems + 2) +
                                     repeated("[contact]\nname = x\n", maxContentItems + 1));
  EXPECT_EQ(crowd.messages.size() + crowd.contacts.size(), 2 * maxContentItems);
  EXPECT_EQ(crowd.problems.size(), 3U);
  EXPECT_EQ(crowd.problems[0].what, "too many; left out");
  EXPECT_EQ(parseContent(repeated("nonsense\n", maxContentProblems + 50)).problems.size(),
            maxContentProblems);
  // A reader stops one byte past the limit; a byte-order mark does not hide that.
  const std::string before = "\xEF\xBB\xBF[message]\nnumber = 5550142\ntext = ";
  const std::string text(maxContentSize - before.size(), 'x');
  EXPECT_EQ(parseContent(before + text).messages.at(0).message.text, text);
  const Content tooLong = parseContent(before + text + 'x');
  EXPECT_EQ(tooLong.messages.at(0).message, (Message{"5550142", "", "", 1, 1}));
  EXPECT_EQ(tooLong.problems.at(0).what, "the file is too long; the rest is left out");
  EXPECT_EQ(parseContent(std::string(maxContentSize + 1, 'x')).problems.size(), 1U);
}

TEST(Content, IsShippedWithoutMistakes) {
  std::ifstream file{HANDSET_SHIPPED_CONTENT, std::ios::binary};
  const Content content = parseContent(std::string{std::istreambuf_iterator<char>{file}, {}});
  for (const Problem& problem : content.problems) ADD_FAILURE() << problem.line << ": " << problem.what;
  EXPECT_EQ(content.messages.size() + content.contacts.size(), 46U);
}

TEST(StorageNumbers, AreGivenOutOnceUntilTheStoreIsFull) {
  StorageNumbers numbers;
  for (int expected = 1; expected <= 32767; ++expected) ASSERT_EQ(numbers.takeFree(), expected);
  EXPECT_EQ(numbers.takeFree(), 0);
}

}  // namespace
}  // namespace handset
