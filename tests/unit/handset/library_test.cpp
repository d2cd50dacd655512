#include "handset/library.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes.h"

namespace handset {
namespace {

using phonelink::MessageEntry;

constexpr std::byte untouched{0x5A};

std::string withText(const std::string& text) {
  return "[message]\ntext = " + text + "\n";
}

// Stands at one port, holds one message of each kind and notes what it is asked.
class RealHandset : public Handset {
 public:
  static constexpr int port = 12;

  bool open(int where, int baud) override {
    asked += "open(" + std::to_string(where) + "," + std::to_string(baud) + ") ";
    return where == port;
  }
  bool init() override {
    asked += "init ";
    return true;
  }
  void close() override { asked += "close "; }
  bool offersUnicode() override { return unicode; }
  std::optional<std::vector<Message>> simReceived() override { return listOf("received"); }
  std::optional<std::vector<Message>> simOutgoing() override { return listOf("outgoing"); }
  std::optional<std::vector<Message>> phoneMessages() override { return listOf("phone"); }
  bool send(std::string_view number, std::string_view text) override {
    asked += "send(" + std::string{number} + "," + std::string{text} + ") ";
    return true;
  }
  bool initPhonebook() override { return true; }
  std::optional<std::vector<Contact>> simContacts() override { return {{{"sim", "55"}}}; }
  std::optional<std::vector<Contact>> phoneContacts() override { return std::nullopt; }

  std::string asked;
  bool unicode = true;

 private:
  static std::vector<Message> listOf(std::string text) { return {{"55", "", std::move(text), 1, 1}}; }
};

class LibraryTest : public testing::Test {
 protected:
  bool openWith(const std::string& file) {
    world.file = file;
    return library.open(simulatedPort, 115200) != 0 && library.init() != 0;
  }

  // What a read writes into a buffer of exactly `count` entries; everything else in it must stay as it was.
  template <typename Entry, std::size_t Size>
  std::vector<Entry> read(int (Library::*operation)(std::span<std::byte>), std::size_t head,
                          Entry (*decode)(std::span<const std::byte, Size>),
                          std::size_t count = phonelink::maxEntries) {
    std::vector<std::byte> buffer(head + count * Size, untouched);
    const auto got = static_cast<std::size_t>((library.*operation)(buffer));
    EXPECT_LE(got, count);
    const std::span<const std::byte> bytes{buffer};
    const auto isUntouched = [](std::byte b) { return b == untouched; };
    EXPECT_TRUE(std::ranges::all_of(bytes.first(head), isUntouched));
    EXPECT_TRUE(std::ranges::all_of(bytes.subspan(head + got * Size), isUntouched));
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < got; ++i)
      entries.push_back(decode(bytes.subspan(head + i * Size).template first<Size>()));
    return entries;
  }

  auto received(std::size_t count = phonelink::maxEntries) {
    return read(&Library::receivedMessages, 0, phonelink::decodeMessage, count);
  }
  auto outgoing() { return read(&Library::outgoingMessages, 0, phonelink::decodeMessage); }
  auto onHandset() { return read(&Library::handsetMessages, 0, phonelink::decodeHandsetMessage); }
  // The standard phonebook's buffer is 40,000 bytes: 999 entries and a rest.
  auto contacts() { return read(&Library::contacts, 4, phonelink::decodeContact, 999); }
  auto wideContacts() { return read(&Library::wideContacts, 4, phonelink::decodeWideContact); }

  int send(const std::string& number, std::uint8_t coding, std::string_view text) {
    MessageEntry entry;
    entry.phone = number;
    entry.coding = coding;
    std::copy(text.begin(), text.end(), entry.text.begin());
    std::vector<std::byte> bytes(phonelink::messageEntrySize);
    phonelink::encodeMessage(entry, std::span<std::byte, phonelink::messageEntrySize>{bytes});
    return sendBytes(bytes);
  }
  int sendBytes(const std::vector<std::byte>& bytes) {
    return library.send(phonelink::MessageBytes{bytes.data(), phonelink::messageEntrySize});
  }

  World world;
  SimulatedHandset* handset = new SimulatedHandset{std::make_unique<FakeEnvironment>(world)};
  RealHandset* real = new RealHandset;
  Library library{std::unique_ptr<Handset>{handset}, std::unique_ptr<Handset>{real},
                  std::make_unique<FakeCodePage>()};
};

TEST_F(LibraryTest, GivesNothingUnlessOpenAndReady) {
  const std::string content =
      "[message]\n[message]\nstatus=7\n[message]\nstore=phone\n[contact]\n[contact]\nstore=phone\n";
  const auto expectClosed = [this](const char* when) {
    SCOPED_TRACE(when);
    EXPECT_TRUE(received().empty() && outgoing().empty() && onHandset().empty());
    EXPECT_EQ(library.initPhonebook(), 0);
    EXPECT_TRUE(contacts().empty() && wideContacts().empty());
    EXPECT_EQ(send("5550142", 0, "x"), -1);
  };
  world.file = content;
  expectClosed("before open");
  EXPECT_EQ(library.init(), 0);
  EXPECT_NE(library.open(simulatedPort, 115200), 0);
  expectClosed("before init");
  EXPECT_FALSE(openWith("[settings]\ninit = no\n" + content));
  expectClosed("init failed");
  EXPECT_FALSE(openWith("[settings]\nopen = no\n" + content));
  EXPECT_EQ(library.init(), 0);
  expectClosed("open failed");

  ASSERT_TRUE(openWith(content));
  EXPECT_EQ(received().size(), 1U);
  EXPECT_EQ(outgoing().size(), 1U);
  EXPECT_EQ(onHandset().size(), 1U);
  EXPECT_NE(library.initPhonebook(), 0);
  EXPECT_EQ(contacts().size(), 1U);
  EXPECT_EQ(wideContacts().size(), 1U);
  for (const int port : {1, -1, 256}) EXPECT_EQ(library.open(port, 115200), 0);
  expectClosed("after an open of another port");
  ASSERT_TRUE(openWith(content));
  library.close();
  expectClosed("after close");
}

TEST_F(LibraryTest, AsksTheRealHandsetAtEveryOtherPort) {
  ASSERT_TRUE(openWith("[message]\ntext=simulated\n"));
  EXPECT_EQ(received().at(0).narrowText(), "simulated");
  EXPECT_EQ(real->asked, "");
  EXPECT_NE(library.open(RealHandset::port, 115200), 0);
  EXPECT_TRUE(received().empty()) << "not ready yet";
  EXPECT_NE(library.init(), 0);
  EXPECT_EQ(received().at(0).narrowText(), "received");
  EXPECT_EQ(outgoing().at(0).narrowText(), "outgoing");
  EXPECT_EQ(onHandset().at(0).narrowText(), "phone");
  EXPECT_NE(library.initPhonebook(), 0);
  EXPECT_EQ(contacts().size(), 1U);
  EXPECT_TRUE(wideContacts().empty()) << "could not be read";
  EXPECT_EQ(send("5550142", 0, "x"), 1);
  EXPECT_TRUE(handset->simOutgoing()->empty());
  library.close();
  library.close();
  EXPECT_EQ(library.open(3, 9600), 0);
  EXPECT_EQ(library.init(), 0);
  EXPECT_EQ(real->asked, "open(12,115200) init send(5550142,x) close open(3,9600) ");
  ASSERT_TRUE(openWith("[message]\ntext=again\n"));
  EXPECT_EQ(received().at(0).narrowText(), "again");
}

TEST_F(LibraryTest, FillsTheFieldsOfAnEntry) {
  ASSERT_TRUE(
      openWith("[message]\nstore=phone\nstatus=unread\nnumber=+316000000011234\ntime=26112106171504\n"
               "index=-2\ntext=a\\nb\n[message]\nstore=phone\nstatus=40000\nnumber=0123456789012345678\n"));
  const std::vector<MessageEntry> entries = onHandset();
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].phone, "+316000000011234");
  EXPECT_EQ(entries[0].time, "26112106171504");
  EXPECT_EQ(entries[0].number, -2);
  EXPECT_EQ(entries[0].status, 3);
  EXPECT_EQ(entries[0].narrowText(), "a\nb");
  EXPECT_EQ(entries[1].phone, "0123456789012345");
  EXPECT_EQ(entries[1].status, 40000);
}

TEST_F(LibraryTest, ContinuesTextsInTheCodePage) {
  struct Case {
    std::string text;
    std::vector<std::string> entries;
  };
  const Case cases[] = {
      {"", {""}},
      {"plain", {"plain"}},
      {"é한", {"\xE9\xC7\xD1"}},
      {"Ω🎉.", {"??."}},
      {std::string{"a\0b", 3}, {"ab"}},
      {std::string(160, 'x'), {std::string(160, 'x')}},
      {std::string(161, 'x'), {std::string(160, 'x'), "x"}},
      {std::string(321, 'x'), {std::string(160, 'x'), std::string(160, 'x'), "x"}},
      {std::string(159, 'x') + "한y", {std::string(159, 'x'), "\xC7\xD1y"}},  // both its bytes or none
      {std::string(158, 'x') + "한y", {std::string(158, 'x') + "\xC7\xD1", "y"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    ASSERT_TRUE(openWith("[message]\nnumber = 55\nindex = 9\ntext = " + c.text + "\n"));
    std::vector<std::string> texts;
    for (const MessageEntry& entry : received()) {
      texts.push_back(entry.narrowText());
      EXPECT_EQ(entry.coding, phonelink::codingDefault);
      EXPECT_EQ(entry.phone, "55");
      EXPECT_EQ(entry.number, 9);
    }
    EXPECT_EQ(texts, c.entries);
  }
}

TEST_F(LibraryTest, ContinuesSixteenBitTexts) {
  struct Case {
    std::string text;
    std::vector<std::u16string> entries;
  };
  const std::u16string greek(80, u'Ω');
  const Case cases[] = {
      {"éΩ", {u"éΩ"}},
      {"Ω🎉!", {u"Ω🎉!"}},
      {repeated("Ω", 80), {greek}},
      {repeated("Ω", 81), {greek, u"Ω"}},
      {repeated("Ω", 79) + "🎉y", {std::u16string(79, u'Ω'), u"🎉y"}},
      {repeated("Ω", 78) + "🎉y", {std::u16string(78, u'Ω') + u"🎉", u"y"}},
      {"\xFF", {u"\xFFFD"}},
  };
  world.file = "";
  ASSERT_NE(library.setUnicode(1), 0);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    ASSERT_TRUE(openWith(withText(c.text)));
    std::vector<std::u16string> texts;
    for (const MessageEntry& entry : received()) {
      texts.push_back(entry.wideText());
      EXPECT_EQ(entry.coding, phonelink::codingUcs2);
    }
    EXPECT_EQ(texts, c.entries);
  }
  // What the code page holds crosses in it, twice as much to an entry.
  ASSERT_TRUE(openWith(withText(repeated("é", 161))));
  ASSERT_EQ(received().size(), 2U);
  EXPECT_EQ(received()[1].coding, phonelink::codingDefault);
  EXPECT_EQ(received()[1].narrowText(), "\xE9");
}

TEST_F(LibraryTest, SwitchesSixteenBitTextsOnlyWhereOffered) {
  world.file = "[settings]\nunicode = no\n";
  EXPECT_EQ(library.setUnicode(1), 0);
  ASSERT_TRUE(openWith(withText("Ω")));
  EXPECT_EQ(received().at(0).narrowText(), "?");
  real->unicode = false;  // of both handsets, whichever is open
  EXPECT_EQ(library.setUnicode(1), 0);
  real->unicode = true;
  EXPECT_NE(library.setUnicode(1), 0);
  EXPECT_EQ(received().at(0).coding, phonelink::codingUcs2);
  EXPECT_EQ(library.setUnicode(0), 0);
  EXPECT_EQ(received().at(0).coding, phonelink::codingDefault);
}

TEST_F(LibraryTest, NeverWritesPastTheBuffer) {
  ASSERT_TRUE(openWith(repeated("[message]\n[message]\nstatus=7\n[message]\nstore=phone\n", 1001) +
                       repeated("[contact]\n[contact]\nstore=phone\n", 1001)));
  EXPECT_EQ(received().size(), 1000U);
  EXPECT_EQ(outgoing().size(), 1000U);
  EXPECT_EQ(onHandset().size(), 1000U);
  EXPECT_EQ(contacts().size(), 999U);
  EXPECT_EQ(wideContacts().size(), 1000U);
  EXPECT_EQ(received(0).size(), 0U);
  std::vector<std::byte> large(1002 * phonelink::messageEntrySize);
  EXPECT_EQ(library.receivedMessages(large), 1000);
  std::vector<std::byte> small(3);
  EXPECT_EQ(library.contacts(small), 0);

  ASSERT_TRUE(openWith(withText("first") + withText(std::string(400, 'x'))));
  EXPECT_EQ(received(3).size(), 3U);  // the third piece of the second message has no room
}

TEST_F(LibraryTest, GivesBothPhonebooks) {
  const std::string longName = repeated("é", 18) + "한";
  ASSERT_TRUE(openWith("[contact]\nname = " + longName + "\nnumber = 01234567890123456789\n" +
                       "[contact]\nstore = phone\nname = 김🌻\nnumber = +82000000058\n" +
                       "[contact]\nstore = phone\nname = " + std::string(125, 'n') + "🌻\n"));
  ASSERT_EQ(contacts().size(), 1U);
  EXPECT_EQ(contacts()[0].name, repeated("\xE9", 18));
  EXPECT_EQ(contacts()[0].number, "0123456789012345678");
  ASSERT_EQ(wideContacts().size(), 2U);
  EXPECT_EQ(wideContacts()[0].name, u"김🌻");
  EXPECT_EQ(wideContacts()[0].number, "+82000000058");
  EXPECT_EQ(wideContacts()[1].name, std::u16string(125, u'n'));
}

TEST_F(LibraryTest, SendsTheTextThatTheEntryMeans) {
  const auto wide = [](std::u16string_view text) {
    MessageEntry entry;
    EXPECT_TRUE(entry.setWideText(text));
    return std::string{entry.text.begin(), entry.text.end()};
  };
  struct Case {
    int unicode;
    std::uint8_t coding;
    std::string field;
    std::string arrived;
  };
  const Case cases[] = {
      {0, 0, "hello", "hello"},
      {0, 0, std::string(160, 'x'), std::string(160, 'x')},  // a full field has no NUL
      {0, 8, "\xE9\xC7\xD1", "é한"},                         // 8 alone does not mean 16-bit characters
      {1, 0, "\xE9", "é"},
      {1, 8, wide(u"Ω🎉"), "Ω🎉"},
      {1, 8, wide(std::u16string(80, u'Ω')), repeated("Ω", 80)},
      {1, 8, wide(u"\xD83C"), "\xEF\xBF\xBD"},
  };
  ASSERT_TRUE(openWith(""));
  for (const Case& c : cases) {
    SCOPED_TRACE(c.field);
    library.setUnicode(c.unicode);
    EXPECT_EQ(send("+31600000001", c.coding, c.field), 1);
    EXPECT_EQ(handset->simOutgoing()->back().text, c.arrived);
    EXPECT_EQ(handset->simOutgoing()->back().number, "+31600000001");
  }
  EXPECT_EQ(handset->simOutgoing()->size(), std::size(cases));
}

TEST_F(LibraryTest, SaysWhenAMessageWasNotSent) {
  ASSERT_TRUE(openWith("[settings]\nunreachable = 5550199\n"));
  EXPECT_EQ(send("5550199", 0, "x"), -1);
  EXPECT_EQ(send("", 0, "x"), -1);
  std::vector<std::byte> endless(phonelink::messageEntrySize, std::byte{'5'});
  EXPECT_EQ(sendBytes(endless), -1);
  EXPECT_TRUE(outgoing().empty());
  endless[32] = std::byte{0};  // a number of sixteen digits is a number
  EXPECT_EQ(sendBytes(endless), 1);
  EXPECT_EQ(outgoing().at(0).phone, std::string(16, '5'));
}

}  // namespace
}  // namespace handset
