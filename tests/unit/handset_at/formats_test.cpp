#include <map>
#include <sstream>

#include "handset/at/fields.h"
#include "handset/at/joined_messages.h"
#include "handset/at/message_list.h"
#include "handset/at/phonebook.h"
#include "handset/at/result_codes.h"
#include "handset/at/submit.h"
#include "handset/fakes.h"

namespace handset::at {
namespace {

using namespace std::string_literals;

// What the tables below abbreviate in messages, and in the lines that hold them.
const std::map<char, std::string> meanings{
    {'Z', "07911326040000F0"}, {'S', "0B911306000000F1"}, {'T', "62111271510440"},
    {'H', "Z04S0000"},         {'t', "05C8329BFD06"},     {'<', "HTt"},
    {'>', "000100S0000t"},     {'~', "+CMGL: "},          {'P', "Z44S0008T"},
    {'p', "P0805000309"},      {'U', "p03010061"},        {'V', "p03020062"},
    {'W', "p03030063"},        {'X', "p03010062"},        {'Y', "p03020061"}};

std::string expanded(std::string text) {
  for (std::size_t at = 0; at < text.size();) {
    const auto meaning = meanings.find(text[at]);
    meaning == meanings.end() ? void(++at) : void(text.replace(at, 1, meaning->second));
  }
  return text;
}

// Lines divided by "|"; "'" is a double quote, "^" what begins an entry.
std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines(1);
  for (const char c : text)
    c == '|' ? void(lines.emplace_back())
             : void(lines.back() += c == '^' ? "+CPBR: " : std::string(1, c == '\'' ? '"' : c));
  return lines;
}

TEST(Formats, MessagesAreReadToTheLetter) {
  // "<" received, ">" to send, "r" a report, "?" neither; then number ("S" for the usual one), time (so is
  // "T"), text, and reference, number and total of a part.
  const auto read = [](const std::string& in) {
    const std::string hex = expanded(in);
    const Pdu pdu = decodePdu(hex);
    std::string all{"<>r?"[static_cast<int>(pdu.kind)]};
    all += (pdu.number == "+31600000001" ? "S" : pdu.number) + ' ' +
           (pdu.time == "26112117154004" ? "T" : pdu.time);
    all += ' ' + textOf(pdu, hex);
    if (pdu.part)
      for (const int number : {+pdu.part->reference, +pdu.part->number, +pdu.part->total})
        all += '/' + std::to_string(number);
    // Wherever it breaks off, it is known to have done so.
    for (std::size_t end = 0; pdu.kind != PduKind::undecodable && end + 2 <= hex.size(); end += 2)
      EXPECT_TRUE(decodePdu(hex.substr(0, end)).kind == PduKind::undecodable || hex.ends_with("FFFF")) << in;
    return all;
  };
  expectEach(
      read,
      {"<+31641600986 02082619374184 How are you? <= "
       "Z040B911346610089F60000208062917314480CC8F71D14969741F977FD07",
       "<InternetSMS 11032919200416 тест <= "
       "07919730071111F10414D04937BD2C7797E9D3E614000811309291024061080442043504410442",
       ">+35010101010  \f^ {}\\[~]|€ <= 0001000B915310101010100000151BC58602DAA036A9CD6BC3DBF436BE0D705306",
       ">S  Hello <= 001100S0000AAt <= 001900S0000Tt <= 000900S000000000000000000t <= "
       "0001000b911306000000f1000005c8329bfd06",
       "<0612345 T Hi <= Z040781602143F50000T02C834", "<*#abc T Hi <= Z040581BADCFE0000T02C834",
       "< T Hi <= Z0400910000T02C834",
       "<S T Hello <= Z07S0000Tt <= HTtFFFF <= Z04S0040Tt <= Z04S00C8Tt <= Z04S00D0Tt <= Z04S00B0Tt <= "
       "Z04S000CTt <= Z04S00F1Tt",
       "<S  Hello <= H62001271510440t <= H62110071510440t <= H6A111271510440t <= H62111271A10440t",
       "<S 261121171540B2 Hello <= H6211127151042Bt", "<S 26112117154098 Hello <= H62111271510489t",
       "<S 26112117154000 Hello <= H621112715104AFt",
       "rS T (status report: delivered) <= Z0607STT00 <= Z0607STT1F <= Z0607ST0000000000000000",
       "rS T (status report: not yet delivered) <= Z0607STT20 <= Z0607STT3F",
       "rS T (status report: not delivered, reason 40) <= Z0607STT40", "<S T  <= HT00",
       "<S T a\nb\nc\nd <= HT08E18642DC182BC8", "<S T a\nb\n <= Z04S0008T0A0061000D000A0062000D",
       "<S T A  <= HT02C10D", "<S T A € <= HT069BE066B32903", "<S T a🎉b <= Z04S0008T080061D83CDF890062",
       "<S T Привет <= Z04S0008T0C041F04400438043204350442 <= Z04S0048T0C041F04400438043204350442 <= "
       "Z04S00E0T0C041F04400438043204350442",
       "<S T \uFFFDa <= Z04S0008T04D83C0061", "<S T ab <= Z04S0008T050061006204",
       "<S T (8-bit data) 6162 <= Z04S0004T026162 <= Z04S0044T026162 <= Z04S00F5T026162",
       "<S T (compressed text) 01FE <= Z04S0020T0201FE <= Z04S002CT0201FE",
       "<S T bbbb/7/2/3 <= Z44S0000T0B050003070302C462B118",
       "<S T bbbb/0/1/1 <= Z44S0000T0B050003000101C462B118",
       "<S T bbbb/4660/2/3 <= Z44S0000T0C0608041234030262B1580C",
       "<S T Ж/7/1/2 <= P0E0B05040B8423F000030702010416",
       // Not a part's number: 0, past the total, past the header, of another element or of one of another
       // length.
       "<S T bbbb <= Z44S0000T0B050003090300C462B118 <= Z44S0000T0B050003090304C462B118 <= "
       "Z44S0000T0B050009070201C462B118",
       "<S T Ж <= P0704010202010416 <= P0D0A000402050401000202050416", "?  (unreadable message)  <= ",
       "?  (unreadable message) hello <= hello", "?  (unreadable message) FF9100000000 <= FF9100000000",
       "?+31  (unreadable message) 00040B9113 <= 00040B9113",
       "?S T (unreadable message) Hello <= HT14C8329BFD06", "?S T (unreadable message) Hell <= HT05C8329BFD0",
       "?S T (unreadable message) \uFF00\u0300 <= P04FF000300"});
}

TEST(Formats, MessagesAreWrittenForNumbersThatAreSome) {
  // Number, "=", text.
  const auto written = [](const std::string& in) {
    const auto pdus = submitPdus(in.substr(0, in.find('=')), in.substr(in.find('=') + 1), 0);
    return pdus ? pdus->front().hex + ' ' + std::to_string(pdus->front().octets) : "none";
  };
  expectEach(
      written,
      {"0011000B916407281553F80000AA0AE8329BFD4697D9EC37 23 <= +46708251358=hellohello <= +46 (708) "
       "251-35.8=hellohello",
       "0011000781602143F50008AA080442043504410442 20 <= 0612345=тест", "00110004811AB20000AA00 10 <= *12#=",
       "0011001481214365870921436587090000AA0461854201 22 <= 12345678901234567890=a\r\n\r\n\r",
       "none <= 123456789012345678901=x <= =x <= +=x <= ++1=x <= 1+1=x <= Anna=x <= 1\r2=x <= 1\xD9\xA1=x"});
}

TEST(Formats, LongMessagesAreDivided) {
  // Reference, then pieces of text and how often each stands there; septets or octets of each part.
  const auto divided = [](const std::string& in) {
    std::istringstream words{in};
    std::string text, piece, sizes;
    std::uint16_t reference = 0;
    std::size_t times = 0;
    for (words >> reference; words >> piece >> times;) text += repeated(piece, times);
    const std::vector<SubmitPdu> pdus =
        submitPdus("+31600000001", text, reference).value_or(std::vector<SubmitPdu>{});
    std::vector<UserData> parts;
    for (const SubmitPdu& one : pdus) {
      const Pdu pdu = decodePdu(one.hex);
      EXPECT_EQ(one.octets * 2 + 2, one.hex.size());
      parts.push_back(pdu.data);
      const PartOf part{reference, static_cast<std::uint8_t>(pdus.size()),
                        static_cast<std::uint8_t>(parts.size())};
      EXPECT_EQ(pdu.part, pdus.size() > 1 ? std::optional{part} : std::nullopt) << in;
      sizes += std::to_string(pdu.data.units.size()) + ' ';
    }
    EXPECT_EQ(textOf(parts), pdus.empty() ? "" : text);
    return pdus.size() > 4 ? std::to_string(pdus.size()) : sizes;
  };
  // An escape stays with its character, and so do surrogates.
  expectEach(divided,
             {"160  <= 1 x 160 <= 1 € 80", "153 8  <= 255 x 161", "153 153 1  <= 1 x 307",
              "152 9  <= 256 x 161", "152 10  <= 1 x 152 € 1 x 8", "153 9  <= 1 x 151 € 1 x 9",
              "140  <= 1 ж 70", "134 8  <= 1 ж 71", "132 10  <= 4660 ж 71",
              "132 12  <= 1 ж 66 🎉 1 ж 4 <= 1 🎉 36", "255 <= 1 x 39015", "2  <= 1 ç 1 <= 1 ` 1 <= 1 \x1B 1",
              "142  <= 1 @£$¥èéùìòÇØøÅåΔ_ΦΓΛΩΠΨΣΘΞÆæßÉ 1 "
              "!\"#¤%&'()*+,-./0123456789:;<=>?¡ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§ 1 "
              "¿abcdefghijklmnopqrstuvwxyzäöñüà^{}\\[~]|€ 1",
              " <= 1 x 39016"});
}

TEST(Formats, PhonebooksAreReadWhateverHandsetsMakeOfThem) {
  // The first letter: names as UCS-2 ("u"), numbers too ("h"), in the default alphabet ("g") or as ASCII
  // ("i").
  const auto read = [](const std::string& in) {
    using enum CharacterSet;
    const CharacterSet set = in[0] == 'g' ? gsm : in[0] == 'i' ? ira : ucs2;
    std::string all;
    for (const PhonebookEntry& entry : entriesIn(linesOf(in.substr(1)), set, in[0] == 'h'))
      all += std::to_string(entry.index) + ' ' + Shown::of(entry.contact);
    return all;
  };
  expectEach(
      read,
      {"1 +31600000001=Anna;  <= u^1,'+31600000001',145,'0041006E006E0061' <= "
       "u^1,'+316|00000001',145,'0041006E006E0061' <= u^1,'31600000001',145,'0041006E006E0061'",
       "2 +31=한🎉;  <= u^2,'002B00330031',145,'D55CD83CDF89'", "2 +31=한;  <= h^2,'00330031',145,'D55C'",
       "3 112=Help!;  <= h^3,'112',129,'Help!'", "3 00310032=B;  <= u^3,'00310032',129,'0042'",
       "250 112=AB;  <= u^250,'112',129,'00410042' <= u^250,'112',129,'0041004200000042','',0,'x,y',,",
       "4 112=AB;  <= u^4,'112',129,00410042\0rest"s,
       "7 112=B; 8 113=C;  <= ugarbage|^7,'112',129,'0042'|x'y|^8,'113',129,'0043'",
       "0 5=;  <= u^1,'',129,''|+CPBR:|+CPBR: 2|^x,'5|^,,,,",
       "1 1=a@_€ \"b\" c;  <= g^1,'1',129,'a\0\x11\x1B\x65 'b' c'"s,
       "1 1=Berg, Anna;  <= g^1,'1',129,'Berg, Anna'",
       "1 1=Jörg;  <= g^1,'1',129,'J\xC3\xB6rg' <= g^1,'1',129,'J\xF6rg'",
       "1 1=$ 0041;  <= i^1,'1',129,'$ 0041'"});
  const auto size = [](const std::string& in) {
    const std::vector<std::string> lines = linesOf(in);
    const std::optional<IndexRange> range = in.starts_with("+CPBS") ? capacityIn(lines) : rangeIn(lines);
    return range ? std::to_string(range->first) + '-' + std::to_string(range->last) : "";
  };
  expectEach(
      size,
      {"1-250 <= junk|^(1-250),40,14 <= ^(1,250),40,14 <= ^1-250,40 <= ^('1-250'),4 <= +CPBS: 'SM',12,250",
       "0-0 <= ^(0-0)",
       " <= ^ <= ^() <= ^(),40,14 <= ^(9-1),40 <= ^(0-99999999999) <= (1-250) <= ^(99999999999-9)",
       " <= +CPBS: 'SM' <= +CPBS: 'SM',0,0 <= +CPBS: ,,x <= +CPBS:"});
}

TEST(Formats, ListsOfWordsAreReadInEveryShape) {
  const auto words = [](const std::string& list) {
    std::string all;
    for (const std::string& word : wordsOf(firstGroupOf(linesOf(list)[0]))) all += word + ' ';
    return all;
  };
  expectEach(words, {"GSM UCS2  <= ('GSM','UCS2') <= (GSM, UCS2) <= ('00470053004D','0055004300530032')",
                     "0  <= 0", " <=  <= (),(),()", "SM ME  <= 'SM','ME' <= ('SM,'ME'),('SM')",
                     "SM BM SR  <= (('SM','BM','SR'),('SM'))", "0020  <= 0020"});
}

TEST(Formats, MessageListsAreReadWhateverStandsAroundTheMessages) {
  const auto rows = [](const std::string& lines) {
    std::string all;
    for (const Message& row : joinedMessages(messagesIn(linesOf(expanded(lines))), 3))
      all += std::to_string(row.storageNumber) + '/' + std::to_string(row.status) + '/' + row.text + ' ';
    return all;
  };
  expectEach(
      rows,
      {"1/3/Hello 2/1/Hello 3/7/Hello 9/7/Hello  <= ~1,0,,24|<|~2,1,,24|<|~3,2,,18|>|~9,3,'Anna, B',18|>",
       "1/7/Hello 2/1/Hello  <= ~1,3,,24|<|~2,1,,18|>",  // the state says it, not the message
       "0/3/Hello  <= ~0,23|<", "2/3/Hello  <= ~2,0,24|<", "4/7/Hello  <= ~4,3,35|>0 <= ~4|> <= ~4,4,,18|>",
       "4/1/Hello  <= ~4,1,,151|< <= ~4,,,24|< <= ~4|< <= ~4,'REC READ',,24|< <= ~4,1|'<' <= x|<|~4,1,,24|# "
       "12|<|<",
       "1/1/(unreadable message) xyz 2/1/Hello 3/1/(unreadable message)  0/1/(unreadable message)   <= "
       "~1,1,,24|xyz|~2,1,,24|<|~3,1|+CMGL:",
       "32767/1/Hello 0/1/Hello 0/1/Hello 0/1/Hello  <= "
       "~32767,1,,24|<|~32768,1,,24|<|~-1,1,,24|<|~99999999999,1|<",
       // Characters that are spread over parts; half a one too much stays in its part, what is damaged is not
       // joined.
       // Parts are joined when all are there, and make no more than three characters.
       "1/1/abc  <= ~1,1|U|~2,1|V|~3,1|W", "2/3/abc  <= ~1,1|W|~2,1|U|~3,0|V <= ~1,1|W|~2,0|U|~3,1|V",
       "2/1/a 1/1/c  <= ~1,1|W|~2,1|U", "1/1/a 3/1/c 2/7/b  <= ~1,1|U|~2,3|V|~3,1|W",
       "1/1/a 2/1/b  <= ~1,1|U|~2,1|p02020062",
       "1/1/a 3/1/c 2/1/b  <= ~1,1|U|~2,1|Z44049121430008T080500030903020062|~3,1|W",
       "2/1/a 1/1/b 3/1/c 4/1/d  <= ~1,1|p04020062|~2,1|p04010061|~3,1|p04030063|~4,1|p04040064",
       "1/1/abc 4/1/bac  <= ~1,1|U|~2,1|V|~3,1|W|~4,1|X|~5,1|Y|~6,1|W",
       "1/1/a 2/1/c 3/1/b 4/1/a 5/1/c  <= ~1,1|U|~2,1|W|~3,1|X|~4,1|Y|~5,1|W",
       "1/1/🎉  <= ~1,1|P08050003090201D83C|~2,1|P08050003090202DF89",
       "2/1/€  <= ~1,1|Z44S0000T08050003090202CA|~2,1|Z44S0000T0805000309020136",
       "1/1/Жe  <= ~1,1|P09050003090201041604|~2,1|Z44S0000T08050003090202CA",
       "1/1/Ж 2/1/(unreadable message) Ж  <= ~1,1|P080500030902010416|~2,1|P090500030902020416"});
}

TEST(Formats, ErrorsArePutIntoWords) {
  // The numbers that have words of their own, those that mean the SIM, and those that may pass.
  std::string known, sim, busy;
  for (const std::string family : {"+CME ERROR: ", "+CMS ERROR: ", "+EXT ERROR: "}) {
    for (int number = 0; number < 600; ++number) {
      const FinalResult result = finalResultIn(family + std::to_string(number)).value();
      const bool other = reasonOf(result) == "the handset refuses (" + family + std::to_string(number) + ')';
      known += other ? "" : std::to_string(number) + ' ';
      sim += isSimTrouble(result) ? std::to_string(number) + ' ' : "";
      busy += isBusy(result) ? std::to_string(number) + ' ' : "";
    }
  }
  EXPECT_EQ(known,
            "10 11 12 13 14 15 16 17 18 20 21 22 24 26 1 8 21 27 28 38 41 42 50 69 302 303 304 310 311 312 "
            "313 314 315 316 317 318 320 321 322 330 331 332 500 ");
  EXPECT_EQ(sim, "10 11 12 13 14 15 16 17 18 310 311 312 313 314 315 316 317 318 ");
  EXPECT_EQ(busy, "14 314 ");
  const auto words = [](const std::string& line) { return reasonOf(finalResultIn(line).value()); };
  expectEach(words, {"the SIM is busy (+CME ERROR:14) <= +CME ERROR:14",
                     "the receiver is unknown (+CMS ERROR: 28) <= +CMS ERROR: 28",
                     "the handset takes the message for malformed (+CMS ERROR: 304) <= +CMS ERROR: 304",
                     "the memory is full (+CMS ERROR: 322) <= +CMS ERROR: 322",
                     "the SIM wants its PIN (+CMS ERROR: 311) <= +CMS ERROR: 311"});
}

}  // namespace
}  // namespace handset::at
