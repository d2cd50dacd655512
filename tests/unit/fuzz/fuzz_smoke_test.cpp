#include <gtest/gtest.h>

#include <random>

#include "fuzz/content_input.h"
#include "fuzz/entries_input.h"
#include "fuzz/modem_input.h"
#include "fuzz/phone_link_input.h"
#include "fuzz/settings_input.h"
#include "fuzz/store_input.h"

namespace {

using namespace std::string_literals;

// Changes a few bytes, and now and then leaves some out or doubles some.
std::string mutated(std::string input, std::mt19937& random) {
  constexpr std::string_view telling{"\"\r\n,:+|0F>()A\0\xFF=[]; ", 20};
  for (auto change = random() % 6; change > 0 && !input.empty(); --change) {
    const std::size_t at = random() % input.size();
    const std::size_t count = random() % 9;
    switch (random() % 4) {
      case 0:
        input[at] = static_cast<char>(random());
        break;
      case 1:
        input[at] = telling[random() % telling.size()];
        break;
      case 2:
        input.erase(at, count);
        break;
      default:
        input.insert(at, input.substr(random() % input.size(), count));
        break;
    }
  }
  return input;
}

void feed(void (*take)(std::string_view), const std::vector<std::string>& seeds, int rounds) {
  std::mt19937 random{20261121};
  for (int round = 0; round < rounds; ++round) {
    const std::string& seed = seeds[static_cast<std::size_t>(round) % seeds.size()];
    take(mutated(seed, random));
  }
}

const std::string hello = "07911326040000F0040B911306000000F100006211127151044005C8329BFD06";

TEST(Fuzz, PdusSurviveChanges) {
  feed(handset::at::fuzz::pdus,
       {hello, "07911326040000F0440B911306000000F10000621112715104400B050003000302C462B118\n" + hello,
        "07919730071111F10414D04937BD2C7797E9D3E614000811309291024061080442043504410442",
        "0011000B916407281553F80000AA0AE8329BFD4697D9EC37",
        "07911326040000F006070B911306000000F1621112715104406211127151044046",
        "Grüße \xF0\x9F\x8E\x89 {€} " + std::string(150, 'x') + "\r\n"},
       8000);
}

TEST(Fuzz, ListingsSurviveChanges) {
  feed(handset::at::fuzz::listings,
       {"+CMGL: 1,1,,24\n" + hello + "\n+CMGL: 2,3,\"A\",24\n\"" + hello + '"',
        "+CPBR: 1,\"+31\n600000001\",145,\"00410042\"\n+CPBR: 2,\"112\",129,\"J\xC3\xB6rg\",\"\",0",
        "+CPBR: (1-250),40,14", "+CPBS: \"SM\",12,250", "+CPMS: ((\"SM\",\"BM\"),(\"SM\"))",
        "+CSCS: (\"0055004300530032\",GSM)"},
       8000);
}

TEST(Fuzz, SessionsSurviveChanges) {
  const std::string ok = "\r\nOK\r\n|";
  const std::string sending = "\r\n> |+CMGS: 7" + ok;
  const auto session = [&ok](char ways, const std::string& sent) {
    return std::string{ways} + "|" + ok + ok + ok + ok + ok + "+CPIN: READY" + ok + "+CSCS: (\"UCS2\")" + ok +
           ok + "+CPMS: (\"SM\",\"ME\")" + ok + ok + "+CNMI: 2,2" + ok + ok + ok + "+CMGL: 1,1,,24\r\n" +
           hello + ok + ok + ok + sent + ok + "+CSCS: \"GSM\"" + ok + ok + ok + ok + "+CPBR: (1-9),4" + ok +
           "+CPBR: 1,\"112\",129,\"0041\"" + ok + ok + ok;
  };
  feed(handset::at::fuzz::sessions, {session('\x07', sending), session('\x87', sending + sending)}, 3000);
}

// A handset entry as a library gives it: a message and its status.
const std::string entry = std::string(16, '\0') + "+31600000001" + std::string(5, '\0') + "\x08" +
                          "26030211223304" + std::string(2, '\0') + "h\0\xE9\0\x3D\xD8"s +
                          std::string(154, '\0') + "\x05\0\x07\0"s;

TEST(Fuzz, StoresSurviveChanges) {
  const std::string group =
      "Content = hello \r\nPhone = +316 \r\nTime = 2026/03/02  11:22:33 \r\nIndex = 7 \r\n";
  const std::string message = "text\0+316\0time\0"s;
  std::vector<std::string> seeds;
  for (const char way : {'\0', '\1', '\2', '\4', '\5'}) {
    seeds.push_back(way + message + "[PCINBOX] \r\n" + group + group);
    seeds.push_back(way + message + "\xEF\xBB\xBF[pcinbox]\n" + group + "Content = Gr\xC3\xBC\xC3\x9F" +
                    "e\n");
    seeds.push_back(way + "\xEA\xB0\x8D=a\r\n\0\0\0; x\n[PCINBOX]\n"s + group + "\x81= \x81[\n[OTHER]\n");
  }
  feed(fuzz::stores, seeds, 6000);
}

TEST(Fuzz, SettingsSurviveChanges) {
  feed(fuzz::settings,
       {"\x03"
        "button\nleft\n[port]\r\ncom=3\r\n[button]\nleft = 1, 2,3,-4\n",
        "\x07port\ncom\n\xEF\xBB\xBF; c\n[ PORT ]\n COM = \"12\"\nbaud=9\n",
        "\x01"
        "a\nb\n[other]\n[port"},
       8000);
}

TEST(Fuzz, EntriesSurviveChanges) {
  std::vector<std::string> seeds;
  for (const char kind : {'\0', '\1', '\2', '\3', '\4'}) seeds.push_back(kind + entry);
  feed(fuzz::entries, seeds, 8000);
}

TEST(Fuzz, PhoneLinksSurviveChanges) {
  std::vector<std::string> seeds;
  for (const char way : {'\0', '\1', '\5', '\x09', '\xF9', '\x0C', '\x1D'}) {
    for (const char result : {'\0', '\1', '\2', '\3', '\4', '\5'}) seeds.push_back({way, '\xFF', result});
    seeds.push_back(std::string{way, '\0', '\2'} + entry);
    seeds.push_back(std::string{way, '\0', '\1'} + "112\0Gr\xC3\xBC\xC3\x9F-\0"s);
  }
  feed(fuzz::phoneLinks, seeds, 1500);
}

TEST(Fuzz, ContentsSurviveChanges) {
  feed(fuzz::contents,
       {"[settings]\nopen = yes\ndelay = 3\nunreachable = 5\n[message]\nstore = sim\nstatus = received\n"
        "number = +316\ntime = 26030211223304\ntext = a\\nb\n[message]\nstatus=7\nindex=3\n"
        "[contact]\nstore=phone\nname=J\xC3\xB6rg\nnumber=112\n[contact]\nname=Anna\n"},
       3000);
}

}  // namespace
