#include "handset/at/submit.h"

#include <gtest/gtest.h>

#include "handset/at/pdu.h"

namespace handset::at {
namespace {

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

TEST(Submit, IsWrittenToTheLetter) {
  const auto pdus = submitPdus("+46708251358", "hellohello", 0);
  ASSERT_TRUE(pdus);
  EXPECT_EQ(*pdus, (std::vector<SubmitPdu>{{"0011000B916407281553F80000AA0AE8329BFD4697D9EC37", 23}}));
  EXPECT_EQ(submitPdus("0612345", "тест", 0)->front().hex, "0011000781602143F50008AA080442043504410442");
  EXPECT_EQ(submitPdus("*12#", "", 0)->front().hex, "00110004811AB20000AA00");
}

TEST(Submit, DividesWhatDoesNotFit) {
  struct Case {
    std::string text;
    std::uint16_t reference;
    std::vector<std::size_t> units;                     // of each part: septets, or octets of UCS-2
    std::optional<std::string> arrived = std::nullopt;  // when it is not the text
  };
  const Case cases[] = {
      {repeated("x", 160), 1, {160}},
      {repeated("x", 161), 1, {153, 8}},
      {repeated("x", 306), 0, {153, 153}},
      {repeated("x", 307), 0xFF, {153, 153, 1}},
      {repeated("x", 161), 0x100, {152, 9}},
      {repeated("€", 80), 1, {160}},
      {repeated("x", 152) + "€" + repeated("x", 8), 1, {152, 10}},  // an escape stays with its character
      {repeated("x", 151) + "€" + repeated("x", 9), 1, {153, 9}},
      {repeated("ж", 70), 1, {140}},
      {repeated("ж", 71), 1, {134, 8}},
      {repeated("ж", 71), 0x1234, {132, 10}},
      {repeated("ж", 66) + "🎉" + repeated("ж", 4), 1, {132, 12}},  // so do surrogates
      {repeated("🎉", 35), 1, {140}},
      {repeated("🎉", 36), 1, {132, 12}},
      {repeated("\r\n", 160), 1, {160}, repeated("\n", 160)},  // one character a line break
      {"\r\r\n\n\r", 1, {4}, "\n\n\n\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const auto pdus = submitPdus("+31600000001", c.text, c.reference);
    ASSERT_TRUE(pdus);
    ASSERT_EQ(pdus->size(), c.units.size());
    std::vector<UserData> parts;
    for (std::size_t i = 0; i < pdus->size(); ++i) {
      const SubmitPdu& sent = (*pdus)[i];
      EXPECT_EQ(sent.octets * 2 + 2, sent.hex.size());
      const Pdu pdu = decodePdu(sent.hex);
      EXPECT_EQ(pdu.kind, PduKind::submit);
      EXPECT_EQ(pdu.number, "+31600000001");
      EXPECT_EQ(pdu.data.units.size(), c.units[i]);
      std::optional<PartOf> expected;
      if (c.units.size() > 1)
        expected =
            PartOf{c.reference, static_cast<std::uint8_t>(c.units.size()), static_cast<std::uint8_t>(i + 1)};
      EXPECT_EQ(pdu.part, expected);
      // Each part can be read by itself.
      EXPECT_EQ(textOf(std::span{&pdu.data, 1}).find("\xEF\xBF\xBD"), std::string::npos);
      parts.push_back(pdu.data);
    }
    EXPECT_EQ(textOf(parts), c.arrived.value_or(c.text));
  }
  EXPECT_EQ(submitPdus("1", repeated("x", 255 * 153), 0)->size(), 255U);
  EXPECT_FALSE(submitPdus("1", repeated("x", 255 * 153 + 1), 0));
}

TEST(Submit, ChecksTheNumber) {
  for (const auto& [number, dialled] : {std::pair{"+31600000001", "+31600000001"},
                                        {"+31 (6) 000-0.00", "+316000000"},
                                        {"*100#", "*100#"},
                                        {"12345678901234567890", "12345678901234567890"}}) {
    EXPECT_EQ(dialledNumber(number), dialled);
    EXPECT_TRUE(submitPdus(number, "x", 0)) << number;
  }
  for (const char* wrong : {"123456789012345678901", "", "+", "++1", "1+1", "Anna", "1\r2", "1\xD9\xA1"}) {
    EXPECT_EQ(dialledNumber(wrong), std::nullopt) << wrong;
    EXPECT_FALSE(submitPdus(wrong, "x", 0)) << wrong;
  }
}

}  // namespace
}  // namespace handset::at
