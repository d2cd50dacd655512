#include "phonelink/phone_link.h"

#include <gtest/gtest.h>

#include "phonelink/entry_layouts.h"
#include "phonelink/handset_folders.h"
#include "support/fake_code_pages.h"

namespace {

using namespace phonelink;
using namespace std::string_literals;
using Send = SendResult;

std::string padded(std::string bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

// What an entry becomes on top of other bytes.
template <std::size_t Size, class Entry>
std::string encoded(const Entry& entry, void (*encode)(const Entry&, std::span<std::byte, Size>)) {
  std::string bytes(Size, '\xEE');
  encode(entry, std::span<std::byte, Size>(reinterpret_cast<std::byte*>(bytes.data()), Size));
  return bytes;
}

template <class Entry, std::size_t Size>
Entry decoded(const std::string& bytes, Entry (*decode)(std::span<const std::byte, Size>)) {
  return decode(std::as_bytes(std::span(bytes)).template first<Size>());
}

TEST(EntryLayouts, FieldsLieWhereTheyBelongBothWays) {
  const std::string message = padded("", 16) + padded("+31600000001", 17) + "\x08" +
                              padded("26030211223304", 16) + padded("hello", 160) + "\xFE\xFF\x07\x01";
  EXPECT_EQ(encoded(decoded(message, decodeHandsetMessage), encodeHandsetMessage), message);
  const std::string contact = padded("112", 20) + padded("Anna", 20);
  EXPECT_EQ(encoded(decoded(contact, decodeContact), encodeContact), contact);
  const std::string wide = padded("A\0\x3D\xD8"s, 255) + padded("112", wideContactEntrySize - 255);
  EXPECT_EQ(encoded(decoded(wide, decodeWideContact), encodeWideContact), wide);
}

TEST(EntryLayouts, LongTextsAreCutOnTheWayOutAndRefusedAsContent) {
  MessageEntry entry;
  entry.phone = entry.time = std::string(40, '1');
  EXPECT_FALSE(entry.setNarrowText(std::string(161, 'u')) || entry.setWideText(std::u16string(81, u'w')));
  EXPECT_TRUE(entry.setWideText(std::u16string(80, u'w')));
  const MessageEntry back = decoded(encoded(entry, encodeMessage), decodeMessage);
  EXPECT_EQ(back.phone + back.time, std::string(16 + 15, '1'));
  EXPECT_EQ(back.wideText(), std::u16string(80, u'w'));
  EXPECT_EQ(encoded({std::u16string(300, u'\x6E6E'), std::string(300, '3')}, encodeWideContact),
            padded(std::string(252, 'n'), 255) + padded(std::string(127, '3'), wideContactEntrySize - 255));
}

// A phone-link library in this process. Entry points are plain functions, so its state is static.
struct FakeLibrary {
  int opens = 1, starts = 1, unicode = 0, count = 0, sends = 0;
  std::string received{}, outgoing{}, handset{}, contacts{}, wideContacts{};  // bytes for the buffers
  std::string calls{};
};
FakeLibrary fake;

template <std::string FakeLibrary::*bytes>
int give(void* buffer) {
  (fake.*bytes).copy(static_cast<char*>(buffer), std::string::npos);
  return fake.count;
}

int say(char* text, int size) {
  return fake.handset.copy(text, static_cast<std::size_t>(size)), fake.count;
}

PhoneLink boundTo(const FakeLibrary& library) {
  fake = library;
  static const support::Latin1Page page;
  PhoneLink link(page);
  link.bind(
      {.zelOpenSIM = [](int port,
                        int rate) { return fake.calls += std::to_string(port + rate) + " ", fake.opens; },
       .zelInitSMS = [] { return fake.calls += "init ", fake.starts; },
       .zelGetHandSetSMS = give<&FakeLibrary::handset>,
       .zelGetSenderSMS = give<&FakeLibrary::outgoing>,
       .zelGetReceiverSMS = give<&FakeLibrary::received>,
       .zelSendSMS =
           [](void* entry) {
             return fake.received.assign(static_cast<const char*>(entry), messageEntrySize), fake.sends;
           },
       .zelGetPB = give<&FakeLibrary::contacts>,
       .zelGetPB_KOVA = give<&FakeLibrary::wideContacts>,
       .zelInitPB = [] { return fake.starts; },
       .zelCloseSIM = [] { return fake.calls += "close ", 0; },
       .zelUnicode = [](int on) { return on == 1 ? fake.unicode : 0; },
       .zelDescribe = say,
       .zelProblem = say});
  return link;
}

// The numbers of the messages in both folders, and the contacts.
std::string read(PhoneLink& link) {
  std::string all;
  for (const store::Folder folder : {store::Folder::MInbox, store::Folder::MOutbox})
    for (const store::FolderTable table = readHandsetFolder(link, folder);
         const store::SmsRecord& record : table.records())
      all += std::to_string(record.Index) + " ";
  for (const Contact& contact : link.contacts()) all += contact.name + " " + contact.number + "; ";
  return all;
}

TEST(PhoneLink, OpensInTwoStepsUpToTheFirstFailureAndCloses) {
  PhoneLink link = boundTo({});
  EXPECT_TRUE(link.open(-1));
  fake.starts = 0;
  EXPECT_FALSE(link.open(1));
  fake.opens = 0;
  EXPECT_FALSE(link.open(2));
  link.close();
  EXPECT_EQ(fake.calls, "115199 init 115201 init 115202 close ");
}

TEST(PhoneLink, IsQuietWithoutALibraryOrItsNames) {
  PhoneLink link = boundTo({.unicode = 1, .count = 1});
  link.unbind();
  for (const bool bound : {false, true}) {
    EXPECT_EQ(link.isBound(), bound);
    EXPECT_FALSE(link.wideTexts() || link.open(1) || link.send("1", "x", false) != Send::refused);
    EXPECT_EQ(read(link), "");
    link.close();
    link.bind({});
  }
  EXPECT_EQ(fake.calls + fake.received, "");
}

TEST(PhoneLink, ClampsCountsAndEndsTextsAtTheirFields) {
  const auto full = [](std::size_t count) { return std::string(count, 'x'); };
  PhoneLink link = boundTo({.received = full(maxEntries * messageEntrySize),
                            .contacts = full(contactBufferSize),
                            .wideContacts = full(wideContactBufferSize)});
  fake.count = 2147483647;
  EXPECT_EQ(link.handsetMessages().size(), 1000U);
  EXPECT_EQ(link.receivedMessages().size(), 1000U);
  EXPECT_EQ(link.contacts().size(), 999U + 1000U);
  EXPECT_EQ(link.receivedMessages().back(), (store::SmsRecord{full(160), full(16), full(17), 0x7878}));
  EXPECT_EQ(link.contacts()[998].name + link.contacts()[998].number, full(20 + 20));
  EXPECT_EQ(link.contacts().back().name.size() + link.contacts().back().number.size(), 20U * 3 + 128);
  fake.handset = full(300);
  EXPECT_EQ(link.problem(), full(256));
  fake.handset = "a\tb\xFF\0c"s;
  EXPECT_EQ(link.describe(), "a b\uFFFD");
  fake.count = -1;
  EXPECT_EQ(read(link) + link.describe(), "");
  // What a read that failed has come to is there, and why it failed is told once.
  fake.count = -3;
  EXPECT_EQ(link.receivedMessages().size(), 2U);
  EXPECT_EQ(link.takeReadProblem() + link.takeReadProblem(), "?");
}

TEST(PhoneLink, ReadsTheListedThenTheHandsetsOwnByStatusAndBothPhonebooks) {
  PhoneLink link = boundTo({.count = 6});
  MessageEntry entry;
  for (const std::uint16_t status : std::initializer_list<std::uint16_t>{3, 2, 1, 7, 0, 5}) {
    entry.number = static_cast<std::int16_t>(entry.status = status);
    fake.handset += encoded(entry, encodeHandsetMessage);
    fake.received += encoded(entry, encodeMessage);
  }
  EXPECT_EQ(read(link).substr(0, 30), "3 2 1 7 0 5 3 1 0 0 0 0 0 0 7 ");
  fake.count = 1;
  fake.contacts = "head" + encoded({"+316", "J\xF6rg"}, encodeContact);
  fake.wideContacts = "head" + encoded({u"Анна и девятнадцать\U0001F600", "555"}, encodeWideContact);
  EXPECT_EQ(read(link), "3 3 0 Jörg +316; Анна и девятнадцать 555; ");  // without half a character
  fake.starts = 0;
  EXPECT_EQ(read(link), "3 3 0 ");
}

TEST(PhoneLink, TextsCrossWholeOrNotAtAllAndAsAgreed) {
  const std::string longest(16, '1');
  const std::string yellow = "жёлтый 😀";
  using Case = std::tuple<int, std::string, std::string, bool, Send>;
  for (const auto& [unicode, number, text, wide, result] :
       {Case{0, longest, std::string(160, 'x'), false, Send::sent},
        Case{0, longest + "1", "x", false, Send::numberTooLong},
        Case{0, "1", std::string(161, 'x'), false, Send::textNotCarried},
        Case{0, "1", "café", true, Send::sent},
        Case{0, "1", yellow, true, Send::textNotCarried},  // never with "?" in it
        Case{1, "1", yellow, true, Send::sent},
        Case{1, "1", std::string(81, 'x'), true, Send::textNotCarried},
        Case{1, "1", "café", false, Send::sent}, Case{1, "ж", "x", false, Send::notANumber}}) {
    PhoneLink link = boundTo({.unicode = unicode, .count = 1});
    const bool crosses = result == Send::sent;
    EXPECT_EQ(link.send(number, text, wide), result) << text;
    EXPECT_EQ(fake.received.empty(), !crosses) << text;
    if (!crosses) continue;
    EXPECT_EQ(fake.received.at(33), wide ? codingUcs2 : codingDefault);
    // The library hands it back as it came.
    EXPECT_EQ(link.receivedMessages().at(0), (store::SmsRecord{text, "", number, 0}));
    fake.sends = -1;
    EXPECT_EQ(link.send(number, text, wide), Send::refused);
  }
}

}  // namespace
