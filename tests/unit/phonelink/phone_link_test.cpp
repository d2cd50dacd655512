#include "phonelink/phone_link.h"

#include <gtest/gtest.h>

#include <cstring>

#include "phonelink/entry_layouts.h"
#include "phonelink/handset_folders.h"
#include "support/fake_code_pages.h"

namespace {

using namespace phonelink;
using store::Folder;

// A phone-link library in this process. Entry points are plain functions, so its state is static.
struct FakeLibrary {
  static inline std::string calls;
  static inline int openResult, initResult, unicodeResult;
  static inline int count, handsetCount;
  static inline std::vector<MessageEntry> entries;
  static inline unsigned char fill;
  static inline int sendResult, contactCount;
  static inline MessageEntry sent;

  static void reset() {
    calls.clear();
    openResult = initResult = 1;
    unicodeResult = count = handsetCount = 0;
    entries.clear();
    fill = 0;
    sendResult = contactCount = 0;
    sent = {};
  }

  static void put(void* buffer, std::size_t entrySize) {
    std::memset(buffer, fill, maxEntries * entrySize);
    auto* at = static_cast<std::byte*>(buffer);
    for (const MessageEntry& entry : entries) {
      if (entrySize == messageEntrySize)
        encodeMessage(entry, std::span<std::byte, messageEntrySize>(at, entrySize));
      else
        encodeHandsetMessage(entry, std::span<std::byte, handsetEntrySize>(at, entrySize));
      at += entrySize;
    }
  }

  static EntryPoints all() {
    EntryPoints points;
    points.zelOpenSIM = [](int port, int rate) {
      calls += "open(" + std::to_string(port) + "," + std::to_string(rate) + ") ";
      return openResult;
    };
    points.zelInitSMS = [] { return calls += "init ", initResult; };
    points.zelCloseSIM = [] { return calls += "close ", 0; };
    points.zelUnicode = [](int on) { return on == 1 ? unicodeResult : 0; };
    points.zelGetReceiverSMS = [](void* buffer) { return put(buffer, messageEntrySize), count; };
    points.zelGetSenderSMS = [](void* buffer) { return put(buffer, messageEntrySize), count; };
    points.zelSendSMS = [](void* entry) {
      sent = decodeMessage(MessageBytes(static_cast<const std::byte*>(entry), messageEntrySize));
      calls += "send ";
      return sendResult;
    };
    points.zelInitPB = [] { return initResult; };
    points.zelGetPB = [](void* buffer) {
      std::memset(buffer, fill, contactBufferSize);
      if (!fill)
        encodeContact({"+316", "J\xF6rg"},
                      std::span<std::byte, contactEntrySize>(
                          static_cast<std::byte*>(buffer) + contactHeadSize, contactEntrySize));
      return contactCount;
    };
    points.zelGetPB_KOVA = [](void* buffer) {
      std::memset(buffer, fill, wideContactBufferSize);
      if (!fill)
        encodeWideContact({u"Анна и девятнадцать\U0001F600", "555"},
                          std::span<std::byte, wideContactEntrySize>(
                              static_cast<std::byte*>(buffer) + contactHeadSize, wideContactEntrySize));
      return contactCount;
    };
    points.zelGetHandSetSMS = [](void* buffer) { return put(buffer, handsetEntrySize), handsetCount; };
    return points;
  }
};

class PhoneLinkTest : public testing::Test {
 protected:
  PhoneLinkTest() { FakeLibrary::reset(); }

  support::Latin1Page page_;
  PhoneLink link_{page_};
};

TEST(BindEntryPoints, AsksForTheNamesInOrder) {
  std::string asked;
  static char places[14];
  std::size_t count = 0;
  const EntryPoints points = bindEntryPoints([&](const char* name) -> void* {
    asked += std::string(name) + " ";
    return &places[count++];
  });
  EXPECT_EQ(reinterpret_cast<void*>(points.zelOpenSIM), &places[0]);
  EXPECT_EQ(reinterpret_cast<void*>(points.zelGetHandSetSMS), &places[3]);
  EXPECT_EQ(reinterpret_cast<void*>(points.zelGetSenderSMS), &places[4]);
  EXPECT_EQ(reinterpret_cast<void*>(points.zelGetReceiverSMS), &places[5]);
  EXPECT_EQ(reinterpret_cast<void*>(points.zelGetPB), &places[8]);
  EXPECT_EQ(reinterpret_cast<void*>(points.zelGetPB_KOVA), &places[9]);
  EXPECT_EQ(asked,
            "zelOpenSIM zelInitSMS zelGetSMS zelGetHandSetSMS zelGetSenderSMS zelGetReceiverSMS zelSendSMS "
            "zelPutSMS zelGetPB zelGetPB_KOVA zelInitPB zelDeleteSMS zelCloseSIM zelUnicode ");
}

TEST_F(PhoneLinkTest, OpensInTwoStepsAndStopsAtTheFirstFailure) {
  link_.bind(FakeLibrary::all());
  EXPECT_TRUE(link_.open(-1));
  EXPECT_EQ(FakeLibrary::calls, "open(-1,115200) init ");
  FakeLibrary::initResult = 0;
  EXPECT_FALSE(link_.open(1));
  FakeLibrary::openResult = 0;
  FakeLibrary::calls.clear();
  EXPECT_FALSE(link_.open(1));
  EXPECT_EQ(FakeLibrary::calls, "open(1,115200) ");
}

TEST_F(PhoneLinkTest, IsQuietWithoutALibraryOrItsNames) {
  const auto expectNothing = [this] {
    EXPECT_FALSE(link_.open(1));
    EXPECT_TRUE(link_.receivedMessages().empty());
    EXPECT_TRUE(link_.outgoingMessages().empty());
    EXPECT_TRUE(link_.handsetMessages().empty());
    link_.close();
  };
  expectNothing();
  link_.bind(EntryPoints{});
  EXPECT_TRUE(link_.isBound());
  expectNothing();
  link_.bind(FakeLibrary::all());
  link_.unbind();
  expectNothing();
  EXPECT_EQ(FakeLibrary::calls, "");
}

TEST_F(PhoneLinkTest, ClampsCountsAndEndsTextsAtTheirFields) {
  link_.bind(FakeLibrary::all());
  for (const int count : {5000, 1000, 2147483647}) {
    FakeLibrary::count = FakeLibrary::handsetCount = count;
    FakeLibrary::fill = 'x';
    const auto records = link_.receivedMessages();
    ASSERT_EQ(records.size(), 1000U);
    EXPECT_EQ(records.back().Content, std::string(160, 'x'));
    EXPECT_EQ(records.back().Phone, std::string(17, 'x'));
    EXPECT_EQ(records.back().Index, 0x7878);
    EXPECT_EQ(link_.handsetMessages().size(), 1000U);
  }
  for (const int count : {-1, 0, -2147483647 - 1}) {
    FakeLibrary::count = FakeLibrary::handsetCount = count;
    EXPECT_TRUE(link_.receivedMessages().empty());
    EXPECT_TRUE(link_.handsetMessages().empty());
  }
}

TEST_F(PhoneLinkTest, ReadsTextsAsAgreedWithTheLibrary) {
  MessageEntry wide;
  wide.coding = codingUcs2;
  wide.setWideText(u"тест \U0001F600");
  MessageEntry narrow;
  narrow.setNarrowText("caf\xE9");
  FakeLibrary::entries = {wide, narrow};
  FakeLibrary::count = 2;

  FakeLibrary::unicodeResult = 1;
  link_.bind(FakeLibrary::all());
  EXPECT_TRUE(link_.wideTexts());
  EXPECT_EQ(link_.receivedMessages()[0].Content, "тест 😀");
  EXPECT_EQ(link_.receivedMessages()[1].Content, "café");

  // Without the agreement the coding byte means nothing on receiving.
  FakeLibrary::unicodeResult = 0;
  link_.bind(FakeLibrary::all());
  FakeLibrary::entries[0] = narrow;
  FakeLibrary::entries[0].coding = codingUcs2;
  EXPECT_EQ(link_.receivedMessages()[0].Content, "café");
}

TEST_F(PhoneLinkTest, FoldersTakeTheListedThenTheHandsetsOwnByStatus) {
  link_.bind(FakeLibrary::all());
  for (const std::uint16_t status : std::initializer_list<std::uint16_t>{3, 2, 1, 7, 0, 5}) {
    MessageEntry entry;
    entry.status = status;
    entry.number = static_cast<std::int16_t>(status);
    FakeLibrary::entries.push_back(entry);
  }
  FakeLibrary::count = 2;
  FakeLibrary::handsetCount = 6;
  const auto indices = [this](Folder folder) {
    store::FolderTable table;
    table.append().Index = 99;  // from before
    readHandsetFolder(link_, folder, table);
    std::vector<int> numbers;
    for (const store::SmsRecord& record : table.records()) numbers.push_back(record.Index);
    return numbers;
  };
  EXPECT_EQ(indices(Folder::MInbox), (std::vector{3, 2, 3, 1}));
  EXPECT_EQ(indices(Folder::MOutbox), (std::vector{3, 2, 7}));
  FakeLibrary::handsetCount = -1;
  EXPECT_EQ(indices(Folder::MInbox), (std::vector{3, 2}));
}

TEST_F(PhoneLinkTest, SendsOnlyWhatCrossesWhole) {
  const std::string longest(16, '1');
  struct Case {
    bool unicode;
    std::string number;
    std::string text;
    bool wide;
    bool crosses;
  };
  const std::string yellow = "жёлтый 😀";
  for (const Case& c :
       {Case{false, longest, std::string(160, 'x'), false, true},
        Case{false, longest + "1", "x", false, false}, Case{false, "1", std::string(161, 'x'), false, false},
        Case{false, "1", "café", true, true}, Case{false, "1", yellow, true, false},  // never with "?" in it
        Case{true, "1", yellow, true, true}, Case{true, "ж", "x", false, false}}) {
    FakeLibrary::reset();
    FakeLibrary::unicodeResult = c.unicode;
    link_.bind(FakeLibrary::all());
    EXPECT_EQ(link_.send(c.number, c.text, c.wide), c.crosses) << c.text;
    EXPECT_EQ(FakeLibrary::calls, c.crosses ? "send " : "") << c.text;
    if (!c.crosses) continue;
    EXPECT_EQ(FakeLibrary::sent.phone, c.number);
    EXPECT_EQ(FakeLibrary::sent.coding, c.wide ? codingUcs2 : codingDefault);
    const std::string received = c.wide && c.unicode ? utf8FromUtf16(FakeLibrary::sent.wideText())
                                                     : page_.decode(FakeLibrary::sent.narrowText());
    EXPECT_EQ(received, c.text);
    FakeLibrary::sendResult = -1;
    EXPECT_FALSE(link_.send(c.number, c.text, c.wide));
  }
}

TEST_F(PhoneLinkTest, ReadsBothPhonebooksWithinTheirBuffers) {
  link_.bind(FakeLibrary::all());
  FakeLibrary::contactCount = 1;
  auto contacts = link_.contacts();
  ASSERT_EQ(contacts.size(), 2U);
  EXPECT_EQ(contacts[0].name, "Jörg");
  EXPECT_EQ(contacts[0].number, "+316");
  EXPECT_EQ(contacts[1].name, "Анна и девятнадцать");  // the pair at the 20th place is left out whole
  EXPECT_EQ(contacts[1].number, "555");

  FakeLibrary::contactCount = 5000;
  FakeLibrary::fill = 'x';
  EXPECT_EQ(link_.contacts().size(), 999U + 1000U);
  FakeLibrary::contactCount = -1;
  EXPECT_TRUE(link_.contacts().empty());
  FakeLibrary::contactCount = 1;
  FakeLibrary::initResult = 0;
  EXPECT_TRUE(link_.contacts().empty());
}

}  // namespace
