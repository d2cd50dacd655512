#include "handset/library.h"

#include <algorithm>

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
    "# a comment\n[message]\nstore = phone\nstatus = unread\nnumber = +31600000001\ntime = 26112106171504\n"
    "index = 7\ntext = a = b\\nｱ \\\\n 🎉\n; another comment\n[message]\nstatus = outgoing\ntext= o\n\n"
    "[contact]\nstore = phone\nname = 김🌻\nnumber = +82000000058\n[contact]\nstore=sim\nname = ｱ\n";
const std::string messages = "|1/0///o; |7/3/+31600000001/26112106171504/a = b\n\xB1 \\n ?; |";

// Notes who is asked what, and cannot read what it has sent.
struct RealHandset : SimulatedHandset {
  using SimulatedHandset::SimulatedHandset;
  bool open(int port, int baud) override {
    asked += "open(" + std::to_string(port) + "," + std::to_string(baud) + ") ";
    return port == 12 && SimulatedHandset::open(port, baud);
  }
  void close() override { asked += "close "; }
  Listing<Message> simOutgoing() override { return {{}, false}; }
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
  // What a read writes into a buffer for `count` entries, or how many, "!" before it when that is not all;
  // the rest of it must stay as it was.
  template <typename Entry, std::size_t Size>
  std::string read(int (Library::*operation)(std::span<std::byte>), std::size_t head,
                   Entry (*decode)(std::span<const std::byte, Size>), std::size_t count) {
    std::vector<std::byte> buffer(head + count * Size, std::byte{0x5A});
    const int answer = (library.*operation)(buffer);
    const auto got = static_cast<std::size_t>(answer < 0 ? -1 - answer : answer);
    EXPECT_LE(got, count);
    const std::span<const std::byte> bytes{buffer};
    std::string all = answer < 0 ? "!" : "";
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
    EXPECT_EQ(all(), "!|!|!|!|!") << when;
    EXPECT_FALSE(library.initPhonebook() != 0 || send("5550142") != -1) << when;
  };
  EXPECT_EQ(library.init(), 0);
  world->file = oneEach;
  EXPECT_EQ(library.open(simulatedPort, 115200), 1);
  expectClosed("before init");
  EXPECT_EQ(opened(oneEach + "[settings]\ninit = no"), 1);
  expectClosed("after a refusal");
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
  EXPECT_EQ(all(), "1/0///real; |!||!|!") << "some could not be read";
  EXPECT_EQ(library.setUnicode(1), 0);  // of both handsets, whichever is open
  EXPECT_EQ(realWorld->reports, "line 6: no such key in this section\n");
  library.close();
  EXPECT_EQ(real->asked, "open(1,9600) open(-1,9600) open(12,9600) close ");
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
    expectEach(entries, {"1/0///;  <= ", "1/0///ab;  <= a\0b"s, n + x158 + "yz;  <= " + x158 + "yz",
                         n + x158 + "y; " + n + "\x81\x31z;  <= " + x158 + "y각z",
                         n + x158 + "\x81\x31; " + n + "z;  <= " + x158 + "각z"});
    if (unicode == 0) expectEach(entries, {"1/0///??.;  <= Ω🎉."});
    if (unicode == 1)
      expectEach(entries, {"1/0///Ω🎉!*;  <= Ω🎉!", n + greek79 + "Ω*; 1/0///Ψ*;  <= " + greek79 + "ΩΨ",
                           "1/0///ΩΩ*;  <= Ω\0Ω"s, n + greek79 + "*; 1/0///🎉y*;  <= " + greek79 + "🎉y"});
  }
  const std::string ascii18(18, 'a'), n125(125, 'n'), phone = "[contact]\nstore = phone\nname = ";
  opened("[message]\nstore=phone\nstatus=40000\nnumber=+3160000000112345\nindex=-2\n[contact]\nname = " +
         ascii18 + "각\nnumber = 01234567890123456789\n" + phone + n125 + "🌻\n");
  EXPECT_EQ(all(), "||-2/40000/+316000000011...//+3160000000112345: ; |0123456789012345678=" + ascii18 +
                       "; |=" + n125 + "; ");
}

TEST_F(LibraryTest, NeverWritesPastTheBuffer) {
  opened(repeated(oneEach, 1001));
  EXPECT_EQ(all(), "1000|1000|1000|999|1000");
  std::vector<std::byte> bytes(1002 * phonelink::messageEntrySize);
  EXPECT_EQ(library.receivedMessages(bytes), 1000);
  EXPECT_EQ(library.contacts(std::span{bytes}.first(3)), 0);
  char text[8];
  EXPECT_EQ(std::to_string(library.describe(text)) + text, "7Simulat");
  opened(oneEach + "[message]\ntext = " + std::string(400, 'x'));
  const std::string piece = "3/0///" + std::string(160, 'x') + "; ";  // of three: the third has no room
  EXPECT_EQ(received(3), "1/0///R; " + piece + piece);
}

TEST_F(LibraryTest, SendsTheTextThatTheEntryMeansOrSaysThatItDidNot) {
  opened(
      "[settings]\nunreachable = 5550199\n[message]\nstatus = outgoing\ntext = old\n[message]\nindex = 2\n");
  EXPECT_EQ(send("+316000000012345", std::string(160, 'x')), 1);  // a full field has no NUL
  world->time = {2101, 12, 31, 23, 59, 5, -32};
  EXPECT_EQ(send("55", "\xB1\x81\x31", 8), 1);  // 8 alone does not mean 16-bit characters
  library.setUnicode(1);
  EXPECT_EQ(send("55", "\xB1"), 1);
  EXPECT_EQ(send("55", "\xA9\x03\x3C\xD8\x89\xDF", 8), 1);
  // Half a number would reach somebody else.
  for (const char* number : {"5550199", "", "+:/a", "+3160000000123456", "+316000000012..."})
    EXPECT_EQ(send(number), -1);
  const std::string late = "/0/55/011231235905B2/";
  EXPECT_EQ(outgoing(), "1/0///old; 3/0/+316000000012345/26112117150404/" + std::string(160, 'x') + "; 4" +
                            late + "\xB1\x81\x31; 5" + late + "\xB1; 6" + late + "Ω🎉*; ");
}

TEST_F(LibraryTest, RemovesAMessageWithTheLastOfItsEntries) {
  const std::string file = "[message]\ntext = " + std::string(161, 'x') + '\n' + oneEach;
  opened(file);
  std::vector<std::byte> bytes(4 * phonelink::messageEntrySize);
  EXPECT_EQ(library.receivedMessages(bytes), 3);
  const auto remove = [&](std::size_t entry) {
    return library.remove(
        std::span{bytes}.subspan(entry * phonelink::messageEntrySize).first<phonelink::messageEntrySize>());
  };
  // The fourth entry is none, and what is gone cannot be removed again.
  for (const auto& [entry, answer] : {std::pair{3, 0}, {0, 2}, {0, 0}, {1, 1}, {1, 0}})
    EXPECT_EQ(remove(static_cast<std::size_t>(entry)), answer) << entry;
  EXPECT_EQ(library.problem(), "the message is not in the last list");
  opened(file);
  EXPECT_EQ(remove(2), 1);  // a list outlives its link
  opened(file);
  EXPECT_EQ(all(), "|3/0///; |1/1///; |=; |=; ");
  EXPECT_EQ(opened("[settings]\nopen = no"), 0);
  EXPECT_EQ(library.problem(), "handset.txt says open = no");
}

TEST_F(LibraryTest, SimulatesWhatItsFileHoldsWhateverEditorSavedIt) {
  std::string spaced;
  for (const char c : items) spaced += c == '\n' ? "  \t\r\n  " : std::string(1, c);
  for (const std::string& file : {"\xEF\xBB\xBF" + items, items.substr(0, items.size() - 1), spaced}) {
    EXPECT_EQ(opened(file), 2);
    EXPECT_EQ(all(), messages + "=\xB1; |+82000000058=김🌻; ") << file;
  }
  opened("[settings]\nphonebook=no\ndelay = 30\n" + items);
  EXPECT_EQ(all(), messages + "!|!");
  EXPECT_EQ(world->pauses.at(0), 30);
  world->file.reset();
  EXPECT_EQ(library.open(0, 115200), 0);
  EXPECT_EQ(world->reports, "there is no content to simulate a handset from\n");
}

TEST(Content, NamesTheLineOfEachMistakeAndGoesOn) {
  const auto mistakes = [](const std::string& lines) {
    const Content content = parseContent("[message]\n" + lines + "\n[message]\ntext = after");
    EXPECT_EQ(content.messages.back().message.text, "after");
    std::string all;
    for (const Problem& one : content.problems) all += std::to_string(one.line) + ": " + one.what;
    return all;
  };
  const std::string backslash = "2: a backslash that begins neither \\n nor \\\\ stays as it is <= text = ";
  expectEach(mistakes, {"2: neither a section nor \"key = value\" <= hello <= [message",
                        "2: neither sim nor phone <= store = pc", backslash + "a\\tb <= text = end\\",
                        "2: not a number from -32768 to 32767 <= index = 32768 <= index = 3a",
                        "3: no such key in this section <= [settings]\ncolour = red <= [contact]\ntext = x",
                        "2: no such section; left out <= [mesage]\nanything = goes"});
}

}  // namespace
}  // namespace handset
