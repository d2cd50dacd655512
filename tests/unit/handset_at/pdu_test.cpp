#include "handset/at/pdu.h"

#include <gtest/gtest.h>

#include "handset/at/alphabet.h"
#include "handset/at/hex.h"

namespace handset::at {
namespace {

const std::string centre = "07911326040000F0";
const std::string sender = "0B911306000000F1";
const std::string receivedAt = "62111271510440";

std::string received(const std::string& coding, const std::string& text, const std::string& first = "04",
                     const std::string& time = receivedAt) {
  return centre + first + sender + "00" + coding + time + text;
}

struct Vector {
  const char* name;
  std::string hex;
  PduKind kind;
  std::string number;
  std::string time;
  std::string text;
  std::optional<PartOf> part = std::nullopt;
};

TEST(Pdu, IsReadToTheLetter) {
  using enum PduKind;
  const std::string hello = "05C8329BFD06";
  const std::string someone = "+31600000001";
  const std::string then = "26112117154004";
  const Vector vectors[] = {
      {"received", "07911326040000F0040B911346610089F60000208062917314480CC8F71D14969741F977FD07", deliver,
       "+31641600986", "02082619374184", "How are you?"},
      {"to send", "0011000B916407281553F80000AA0AE8329BFD4697D9EC37", submit, "+46708251358", "",
       "hellohello"},
      {"sender with a name", "07919730071111F10414D04937BD2C7797E9D3E614000811309291024061080442043504410442",
       deliver, "InternetSMS", "11032919200416", "тест"},
      {"extension table", "0001000B915310101010100000151BC58602DAA036A9CD6BC3DBF436BE0D705306", submit,
       "+35010101010", "", "\f^ {}\\[~]|€"},
      {"small digits",
       "07911326040000f0040b911306000000f1000062111271510440"
       "05c8329bfd06",
       deliver, someone, then, "Hello"},
      {"national number of odd length", centre + "040781602143F50000" + receivedAt + "02C834", deliver,
       "0612345", then, "Hi"},
      {"star and hash", centre + "0404811AB20000" + receivedAt + "02C834", deliver, "*12#", then, "Hi"},
      {"nobody", centre + "0400910000" + receivedAt + "02C834", deliver, "", then, "Hi"},
      {"no text", received("00", "00"), deliver, someone, then, ""},
      {"surplus octets", received("00", hello + "FFFF"), deliver, someone, then, "Hello"},
      {"reserved kind", received("00", hello, "07"), deliver, someone, then, "Hello"},
      {"absolute validity", "0019000B911306000000F10000" + receivedAt + hello, submit, someone, "", "Hello"},
      {"enhanced validity", "0009000B911306000000F1000000000000000000" + hello, submit, someone, "", "Hello"},
      {"line breaks", received("00", "08E18642DC182BC8"), deliver, someone, then, "a\nb\nc\nd"},
      {"escape at the end", received("00", "02C10D"), deliver, someone, then, "A "},
      {"unknown escapes", received("00", "069BE066B32903"), deliver, someone, then, "A €"},

      {"automatic deletion", received("40", hello), deliver, someone, then, "Hello"},
      {"waiting, discard", received("C8", hello), deliver, someone, then, "Hello"},
      {"waiting, store", received("D0", hello), deliver, someone, then, "Hello"},
      {"reserved coding group", received("B0", hello), deliver, someone, then, "Hello"},
      {"reserved alphabet", received("0C", hello), deliver, someone, then, "Hello"},
      {"class 1", received("F1", hello), deliver, someone, then, "Hello"},
      {"waiting, UCS-2", received("E0", "0C041F04400438043204350442"), deliver, someone, then, "Привет"},
      {"deletion, UCS-2", received("48", "0C041F04400438043204350442"), deliver, someone, then, "Привет"},
      {"surrogates", received("08", "080061D83CDF890062"), deliver, someone, then, "a🎉b"},
      {"stray surrogate", received("08", "04D83C0061"), deliver, someone, then,
       "\xEF\xBF\xBD"
       "a"},
      {"half a character", received("08", "050061006204"), deliver, someone, then, "ab"},
      {"data", received("04", "026162"), deliver, someone, then, "(8-bit data) 6162"},
      {"class 1 data", received("F5", "030001FE"), deliver, someone, then, "(8-bit data) 0001FE"},
      {"compressed", received("20", "021234"), deliver, someone, then, "(compressed text) 1234"},

      {"part, 8 bits", received("00", "0B050003000302C462B118", "44"), deliver, someone, then, "bbbb",
       PartOf{0, 3, 2}},
      {"part, 16 bits", received("00", "0C0608041234030262B1580C", "44"), deliver, someone, then, "bbbb",
       PartOf{0x1234, 3, 2}},
      {"part behind ports", received("08", "0E0B05040B8423F000030702010416", "44"), deliver, someone, then,
       "Ж", PartOf{7, 2, 1}},
      {"part 0", received("00", "0B050003090300C462B118", "44"), deliver, someone, then, "bbbb"},
      {"part 4 of 3", received("00", "0B050003090304C462B118", "44"), deliver, someone, then, "bbbb"},
      {"element past the header", received("00", "0B050009070201C462B118", "44"), deliver, someone, then,
       "bbbb"},

      {"no date", received("00", hello, "04", "00000000000000"), deliver, someone, "", "Hello"},
      {"no decimal date", received("00", hello, "04", "6A111271510440"), deliver, someone, "", "Hello"},
      {"eight hours behind", received("00", hello, "04", "6211127151042B"), deliver, someone,
       "261121171540B2", "Hello"},
      {"eight hours ahead", received("00", hello, "04", "62111271510423"), deliver, someone, "26112117154032",
       "Hello"},
      {"no zone", received("00", hello, "04", "621112715104FF"), deliver, someone, "26112117154000", "Hello"},

      {"report", centre + "0607" + sender + receivedAt + receivedAt + "00", statusReport, someone, then,
       "(status report: delivered)"},
      {"report, on its way", centre + "0607" + sender + receivedAt + receivedAt + "30", statusReport, someone,
       then, "(status report: not yet delivered)"},
      {"report, given up", centre + "0607" + sender + receivedAt + receivedAt + "46", statusReport, someone,
       then, "(status report: not delivered, reason 46)"},
      {"report without an end", centre + "0607" + sender + receivedAt + "0000000000000000", statusReport,
       someone, then, "(status report: delivered)"},

      {"nothing", "", undecodable, "", "", "(unreadable message) "},
      {"no digits", "hello", undecodable, "", "", "(unreadable message) hello"},
      {"service centre without end", "FF9100000000", undecodable, "", "",
       "(unreadable message) FF9100000000"},
      {"number breaks off", centre + "040B9113", undecodable, "+31", "",
       "(unreadable message) " + centre + "040B9113"},
      {"time breaks off", centre + "04" + sender + "00006211", undecodable, someone, "",
       "(unreadable message) " + centre + "04" + sender + "00006211"},
      {"text breaks off", received("00", "14C8329BFD06"), undecodable, someone, then,
       "(unreadable message) Hello"},
      {"odd number of digits", received("00", "05C8329BFD0"), undecodable, someone, then,
       "(unreadable message) Hell"},
      {"header longer than the text", received("08", "04FF000300", "44"), undecodable, someone, then,
       "(unreadable message) \xEF\xBC\x80\xCC\x80"},
      {"report breaks off", centre + "0607" + sender + receivedAt, undecodable, someone, then,
       "(unreadable message) " + centre + "0607" + sender + receivedAt},
  };
  for (const Vector& vector : vectors) {
    SCOPED_TRACE(vector.name);
    const Pdu pdu = decodePdu(vector.hex);
    EXPECT_EQ(pdu.kind, vector.kind);
    EXPECT_EQ(pdu.number, vector.number);
    EXPECT_EQ(pdu.time, vector.time);
    EXPECT_EQ(textOf(pdu, vector.hex), vector.text);
    EXPECT_EQ(pdu.part, vector.part);
    // Wherever it breaks off, it is known to have done so.
    for (std::size_t end = 0; end + 2 <= vector.hex.size(); end += 2) {
      if (vector.kind == undecodable || std::string_view{vector.name} == "surplus octets") break;
      EXPECT_EQ(decodePdu(vector.hex.substr(0, end)).kind, undecodable) << end;
    }
  }
}

TEST(Alphabet, GoesThereAndBack) {
  std::u16string all;
  for (std::uint8_t septet = 0; septet < 0x80; ++septet)
    if (septet != escapeSeptet) all += textFromSeptets(Octets{&septet, 1});
  all += u"\f^{}\\[~]|€";
  const std::optional<Septets> septets = septetsFromText(all);
  ASSERT_TRUE(septets);
  EXPECT_EQ(septets->size(), 127U + 20U);
  for (std::size_t fillBits = 0; fillBits < 7; ++fillBits) {
    const std::vector<std::uint8_t> packed = packSeptets(*septets, fillBits);
    EXPECT_EQ(textFromSeptets(unpackSeptets(packed, septets->size(), fillBits)), all);
    EXPECT_EQ(unpackSeptets(packed, 10'000, fillBits).size(), (packed.size() * 8 - fillBits) / 7);
  }
  for (const char16_t* lacking : {u"\x1B", u"ç", u"`", u"\xFFFF"}) EXPECT_FALSE(septetsFromText(lacking));
}

}  // namespace
}  // namespace handset::at
