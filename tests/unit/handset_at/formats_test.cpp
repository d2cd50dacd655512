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
    all += (pdu.number == "+31600000001" ? "S" : pdu.number) + ' ';
    all += (pdu.time == "26112117154004" ? "T" : pdu.time) + ' ' + textOf(pdu, hex);
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
      {"<S T How are you? <= HT0CC8F71D14969741F977FD07",
       "<InternetSMS T тест <= Z0414D04937BD2C7797E9D3E6140008T080442043504410442",
       ">+35010101010  \f^ {}\\[~]|€ <= 0001000B915310101010100000151BC58602DAA036A9CD6BC3DBF436BE0D705306",
       ">S  Hello <= 001100S0000AAt <= 001900S0000Tt <= 000100S0000t <= 000900S000000000000000000t",
       "<0612345 T Hi <= Z040781602143F50000T02C834", "<*#abc T Hi <= Z040581BADCFE0000T02C834",
       "< T Hi <= Z0400910000T02C834",
       "<S T Hello <= HTtFFFF <= Z04S0040Tt <= Z04S00C8Tt <= Z04S00D0Tt <= Z04S00B0Tt <= Z04S00F1Tt",
       "<S  Hello <= H62001271510440t <= H6A111271510440t", "<S 261121171540B2 Hello <= H6211127151042Bt",
       "<S 26112117154000 Hello <= H621112715104AFt", "rS T (delivered 2026-11-21 17:15) <= Z0607STT00",
       "rS T (not yet delivered 2026-11-21 17:15) <= Z0607STT20",
       "rS T (not delivered 2026-11-21 17:15, reason 40) <= Z0607STT40", "<S T  <= HT00",
       "<S T a\nb\nc\nd <= HT08e18642dc182bc8", "<S T a\nb\n <= Z04S0008T0A0061000D000A0062000D",
       "<S T A  <= HT02C10D", "<S T A € <= HT069BE066B32903", "<S T a🎉b <= Z04S0008T080061D83CDF890062",
       "<S T Пр <= Z04S0008T04041F0440 <= Z04S0048T04041F0440 <= Z04S00E0T04041F0440",
       "<S T \uFFFDa <= Z04S0008T04D83C0061", "<S T ab <= Z04S0008T050061006204",
       "<S T (8-bit data) 6162 <= Z04S0004T026162 <= Z04S00F5T026162",
       "<S T (multimedia message waiting) <= Z44S0004T0A0605040B8423F0010203",
       "<S T €ıĞğŞşİçĞİŞçğış€ <= Z44S0000T200624010125010184C382C1E900C19BE326B9996EC69BF326BD996FCA",
       "<S T AçÁÍÓÚáíóú€ <= Z44S0000T1A03240102086E129BE026B9796EAA9BF026BD796FEA9B32",
       "<S T êúíóÔôÁáªÇÀ∞^\\€Ó|ÂâÊºÍÃÕÚ~ãõ` <= "
       "Z44S0000T250624010325010304C301B160381E9209A562B960321A4EC743026EB95DF09EDF07",
       "<S T êçÔôÁáΦΓΩΠΨΣΘÊÀÍÓÚÃÕÂíóúãõâ <= "
       "Z44S0000T3B03240103D8143689CD62C3D838368F8D6433D9543696CD6583D964369F4D"
       "7093DC3C37D5CD76C3DD8437E9CD7B53DFEC37FCCD1F",
       "<S T (compressed text) 01FE <= Z04S0020T0201FE", "<S T bbbb/7/2/3 <= Z44S0000T0B050003070302C462B118",
       "<S T Ж/4660/2/3 <= P09060804123403020416", "<S T Ж/7/1/2 <= P0E0B05040B8423F000030702010416",
       // Not a part's number: 0, past the total, past the header, of another element or of one of another
       // length.
       "<S T Ж <= P080500030903000416 <= P080500030903040416 <= P080500090702010416 <= P0704010202010416 <= "
       "P0D0A000402050401000202050416",
       "?  (unreadable message)  <= ", "?  (unreadable message) FF9100000000 <= FF9100000000",
       "?S T (unreadable message) Hello <= HT14C8329BFD06",
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
      {"0011000B916407281553F80000AA0AE8329BFD4697D9EC37 23 <= +46 (708) 251-35.8=hellohello",
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
    std::vector<StoredPdu> parts;
    for (const SubmitPdu& one : submitPdus("1", text, reference).value_or(std::vector<SubmitPdu>{})) {
      EXPECT_EQ(one.octets * 2 + 2, one.hex.size());
      parts.push_back({.pdu = decodePdu(one.hex), .hex = one.hex});
      sizes += std::to_string(parts.back().pdu.data.units.size()) + ' ';
    }
    for (const Message& whole : joinedMessages(parts, text.size())) EXPECT_EQ(whole.text, text);
    return parts.size() > 4 ? std::to_string(parts.size()) : sizes;
  };
  // An escape stays with its character, and so do surrogates.
  expectEach(divided,
             {"160  <= 1 x 160 <= 1 € 80", "153 153 1  <= 255 x 307", "152 9  <= 256 x 161",
              "152 10  <= 1 x 152 € 1 x 8", "140  <= 1 ж 70", "134 8  <= 1 ж 71", "132 10  <= 4660 ж 71",
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
      {"1 +316=An;  <= u^1,'+316',145,'0041006E' <= u^1,'+3|16',145,'0041006E' <= u^1,'316',145,'0041006E'",
       "2 +31=한🎉;  <= u^2,'002B00330031',145,'D55CD83CDF89'", "2 +31=한;  <= h^2,'00330031',145,'D55C'",
       "3 112=Help!;  <= h^3,'112',129,'Help!'", "4 112=AB;  <= u^4,'112',129,00410042\0rest"s,
       "250 112=AB;  <= u^250,'112',129,'0041004200000042','',0,'x,y',,",
       "7 112=B; 8 113=C;  <= ugarbage|^7,'112',129,'0042'|x'y|^8,'113',129,'0043'",
       "0 5=;  <= u^1,'',129,''|+CPBR:|+CPBR: 2|^x,'5|^,,,,",
       "1 1=a@_€ \"b\" c;  <= g^1,'1',129,'a\0\x11\x1B\x65 'b' c'"s,
       "1 1=ö, A;  <= g^1,'1',129,'\xC3\xB6, A' <= g^1,'1',129,'\xF6, A'",
       "1 1=$ 0041;  <= i^1,'1',129,'$ 0041'"});
  for (const char* lines : {"junk|^(1-250),40,14", "^(1,250),40,14", "^1-250,40", "^('1-250'),4"})
    EXPECT_EQ(rangeIn(linesOf(lines)).value_or(IndexRange{}).last, 250) << lines;
  for (const char* lines : {"^()", "^(9-1),40", "^(0-99999999999)", "(1-250)", "^(99999999999-9)"})
    EXPECT_FALSE(rangeIn(linesOf(lines))) << lines;
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
      {"1/3/Hello 3/7/Hello 9/7/Hello  <= ~1,0,,24|<|~3,2,,18|>|~9,3,'Anna, B',18|>",
       "1/7/Hello 2/1/Hello  <= ~1,3,,24|<|~2,1,,18|>",  // the state says it, not the message
       "0/3/Hello  <= ~0,23|<", "2/3/Hello  <= ~2,0,24|<", "4/7/Hello  <= ~4|> <= ~4,4,,18|>",
       "4/1/Hello  <= ~4,,,24|< <= ~4,'REC READ',,24|< <= ~4,1|'<' <= x|<|~4,1,,24|# 12|<|<",
       "1/1/(unreadable message) xyz 0/1/(unreadable message)   <= ~1,1,,24|xyz|+CMGL:",
       "32767/1/Hello 0/1/Hello  <= ~32767,1|<|~32768,1|<", "0/1/Hello  <= ~-1,1|< <= ~99999999999,1|<",
       // Parts are joined when all are there, and make no more than three characters.
       "2/3/abc  <= ~1,1|W|~2,1|U|~3,0|V", "2/1/(1/3) a 1/1/(3/3) c  <= ~1,1|W|~2,1|U",
       "1/1/(1/3) a 3/1/(3/3) c 2/7/(2/3) b  <= ~1,1|U|~2,3|V|~3,1|W",
       "1/1/(1/3) a 2/1/(2/2) b  <= ~1,1|U|~2,1|p02020062",
       "1/1/(1/3) a 3/1/(3/3) c 2/1/(2/3) b  <= ~1,1|U|~2,1|Z44049121430008T080500030903020062|~3,1|W",
       "2/1/(1/4) a 1/1/(2/4) b 3/1/(3/4) c 4/1/(4/4) d  <= "
       "~1,1|p04020062|~2,1|p04010061|~3,1|p04030063|~4,1|p04040064",
       "1/1/abc 4/1/bac  <= ~1,1|U|~2,1|V|~3,1|W|~4,1|X|~5,1|Y|~6,1|W",
       "1/1/(1/3) a 2/1/(3/3) c 3/1/(1/3) b 4/1/(2/3) a 5/1/(3/3) c  <= ~1,1|U|~2,1|W|~3,1|X|~4,1|Y|~5,1|W",
       // The same reference a day later is another message.
       "1/1/abc 4/1/(1/3) a  <= ~1,1|U|~2,1|V|~3,1|W|~4,1|Z44S000862112241510440080500030903010061",
       // A character may be spread over parts; what is damaged is not joined.
       "1/1/🎉  <= ~1,1|P08050003090201D83C|~2,1|P08050003090202DF89",
       "2/1/€  <= ~1,1|Z44S0000T08050003090202CA|~2,1|Z44S0000T0805000309020136",
       "1/1/Жe  <= ~1,1|P09050003090201041604|~2,1|Z44S0000T08050003090202CA",
       "1/1/(1/2) Ж 2/1/(unreadable message) Ж  <= ~1,1|P080500030902010416|~2,1|P090500030902020416"});
}

TEST(Formats, ErrorsArePutIntoWords) {
  // Behind the words: that it means the SIM, that it may pass.
  const auto words = [](const std::string& line) {
    const FinalResult result = finalResultIn(line).value();
    return reasonOf(result) + (isSimTrouble(result) ? ", SIM" : "") + (isBusy(result) ? ", busy" : "");
  };
  expectEach(words, {"the SIM is busy (+CME ERROR:14), SIM, busy <= +CME ERROR:14",
                     "the SIM is busy (+CMS ERROR: 314), SIM, busy <= +CMS ERROR: 314",
                     "the SIM wants its PIN2 or PUK2 (+CME ERROR: 18), SIM <= +CME ERROR: 18",
                     "no SIM (+CME ERROR: sim not inserted), SIM <= +CME ERROR: sim not inserted",
                     "the SIM is busy (+CMS ERROR: SIM busy), SIM, busy <= +CMS ERROR: SIM busy",
                     "the handset refuses (+EXT ERROR: 14) <= +EXT ERROR: 14"});
}

}  // namespace
}  // namespace handset::at
