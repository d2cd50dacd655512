#include <gtest/gtest.h>

#include <random>

#include "fuzz/modem_input.h"

namespace handset::at {
namespace {

// Changes a few bytes, and now and then leaves some out or doubles some.
std::string mutated(std::string input, std::mt19937& random) {
  constexpr std::string_view telling{"\"\r\n,:+|0F>()A\0\xFF", 15};
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
  feed(fuzz::pdus,
       {hello, "07911326040000F0440B911306000000F10000621112715104400B050003000302C462B118\n" + hello,
        "07919730071111F10414D04937BD2C7797E9D3E614000811309291024061080442043504410442",
        "0011000B916407281553F80000AA0AE8329BFD4697D9EC37",
        "07911326040000F006070B911306000000F1621112715104406211127151044046",
        "Grüße \xF0\x9F\x8E\x89 {€} " + std::string(150, 'x') + "\r\n"},
       8000);
}

TEST(Fuzz, ListingsSurviveChanges) {
  feed(fuzz::listings,
       {"+CMGL: 1,1,,24\n" + hello + "\n+CMGL: 2,3,\"A\",24\n\"" + hello + '"',
        "+CPBR: 1,\"+31\n600000001\",145,\"00410042\"\n+CPBR: 2,\"112\",129,\"J\xC3\xB6rg\",\"\",0",
        "+CPBR: (1-250),40,14", "+CPBS: \"SM\",12,250", "+CPMS: ((\"SM\",\"BM\"),(\"SM\"))",
        "+CSCS: (\"0055004300530032\",GSM)"},
       8000);
}

TEST(Fuzz, SessionsSurviveChanges) {
  const std::string ok = "\r\nOK\r\n|";
  feed(fuzz::sessions,
       {"\x07|" + ok + ok + ok + ok + ok + "+CPIN: READY" + ok + "+CSCS: (\"UCS2\")" + ok + ok +
        "+CPMS: (\"SM\",\"ME\")" + ok + ok + "+CNMI: 2,2" + ok + ok + ok + "+CMGL: 1,1,,24\r\n" + hello + ok +
        ok + ok + "\r\n> |+CMGS: 7" + ok + "+CSCS: \"GSM\"" + ok + ok + ok + ok + "+CPBR: (1-9),4" + ok +
        "+CPBR: 1,\"112\",129,\"0041\"" + ok + ok},
       4000);
}

}  // namespace
}  // namespace handset::at
