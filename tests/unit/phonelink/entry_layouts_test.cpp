#include "phonelink/entry_layouts.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace phonelink;

template <std::size_t Size>
std::array<std::byte, Size> filled(unsigned char byte) {
  std::array<std::byte, Size> bytes;
  bytes.fill(std::byte{byte});
  return bytes;
}

template <std::size_t Size>
std::string textAt(const std::array<std::byte, Size>& bytes, std::size_t offset) {
  return reinterpret_cast<const char*>(bytes.data()) + offset;
}

TEST(EntryLayouts, FieldsLieWhereTheyBelong) {
  MessageEntry entry;
  entry.phone = "+31600000001";
  entry.coding = codingUcs2;
  entry.time = "26030211223304";
  entry.number = -2;
  entry.status = 0x0107;
  ASSERT_TRUE(entry.setNarrowText("hello"));
  auto bytes = filled<handsetEntrySize>(0xEE);
  encodeHandsetMessage(entry, bytes);

  EXPECT_EQ(textAt(bytes, 0), "");
  EXPECT_EQ(textAt(bytes, 16), "+31600000001");
  EXPECT_EQ(bytes[33], std::byte{8});
  EXPECT_EQ(textAt(bytes, 34), "26030211223304");
  EXPECT_EQ(textAt(bytes, 50), "hello");
  EXPECT_EQ(bytes[209], std::byte{0});
  EXPECT_EQ(bytes[210], std::byte{0xFE});
  EXPECT_EQ(bytes[211], std::byte{0xFF});
  EXPECT_EQ(bytes[212], std::byte{0x07});
  EXPECT_EQ(bytes[213], std::byte{0x01});

  const MessageEntry back = decodeHandsetMessage(bytes);
  EXPECT_EQ(back.phone, entry.phone);
  EXPECT_EQ(back.coding, codingUcs2);
  EXPECT_EQ(back.time, entry.time);
  EXPECT_EQ(back.narrowText(), "hello");
  EXPECT_EQ(back.number, -2);
  EXPECT_EQ(back.status, 0x0107);
}

TEST(EntryLayouts, UnterminatedFieldsEndAtTheirEnd) {
  const auto message = filled<messageEntrySize>('x');
  const MessageEntry entry = decodeMessage(message);
  EXPECT_EQ(entry.phone, std::string(17, 'x'));
  EXPECT_EQ(entry.time, std::string(16, 'x'));
  EXPECT_EQ(entry.narrowText(), std::string(160, 'x'));
  EXPECT_EQ(entry.wideText(), std::u16string(80, u'\x7878'));

  EXPECT_EQ(decodeContact(filled<contactEntrySize>('x')).number, std::string(20, 'x'));
  EXPECT_EQ(decodeContact(filled<contactEntrySize>('x')).name, std::string(20, 'x'));
  const WideContactEntry contact = decodeWideContact(filled<wideContactEntrySize>('x'));
  EXPECT_EQ(contact.name, std::u16string(127, u'\x7878'));
  EXPECT_EQ(contact.number, std::string(128, 'x'));
}

TEST(EntryLayouts, LongTextsAreCutOnTheWayOutAndRefusedAsContent) {
  MessageEntry entry;
  entry.phone = std::string(40, '1');
  entry.time = std::string(40, '2');
  EXPECT_TRUE(entry.setNarrowText(std::string(160, 't')));
  EXPECT_FALSE(entry.setNarrowText(std::string(161, 'u')));
  EXPECT_FALSE(entry.setWideText(std::u16string(81, u'w')));
  auto bytes = filled<messageEntrySize>(0xEE);
  encodeMessage(entry, bytes);
  const MessageEntry back = decodeMessage(bytes);
  EXPECT_EQ(back.phone, std::string(16, '1'));
  EXPECT_EQ(back.time, std::string(15, '2'));
  EXPECT_EQ(back.narrowText(), std::string(160, 't'));
  EXPECT_EQ(back.number, 0);

  auto contact = filled<wideContactEntrySize>(0xEE);
  encodeWideContact({std::u16string(300, u'n'), std::string(300, '3')}, contact);
  EXPECT_EQ(decodeWideContact(contact).name, std::u16string(126, u'n'));
  EXPECT_EQ(decodeWideContact(contact).number, std::string(127, '3'));
}

TEST(Utf16, ConvertsBothWaysAndReplacesWhatIsBroken) {
  EXPECT_EQ(utf8FromUtf16(u"aé€\U0001F600"), "aé€😀");
  EXPECT_EQ(utf16FromUtf8("aé€😀"), u"aé€\U0001F600");
  const char16_t stray[] = {u'a', 0xD83D, u'b', 0xDE00, 0xD83D};
  EXPECT_EQ(utf8FromUtf16({stray, 5}),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD");
  for (const char* broken :
       {"\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80"}) {
    const std::u16string units = utf16FromUtf8(broken);
    EXPECT_EQ(units, std::u16string(std::strlen(broken), u'\xFFFD')) << broken;
  }
  EXPECT_EQ(utf16FromUtf8("\xC3"
                          "a"),
            u"\xFFFD"
            u"a");
}

}  // namespace
