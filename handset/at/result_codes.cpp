#include "handset/at/result_codes.h"

#include <algorithm>
#include <array>

#include "handset/at/fields.h"
#include "text/plain.h"

namespace handset::at {
namespace {

using Family = FinalResult::Family;

struct Code {
  Family family;
  int first;
  int last;
  std::string_view words;
};

constexpr std::array codes{
    Code{Family::equipment, 3, 3, "the handset does not allow it"},
    Code{Family::equipment, 4, 4, "the handset does not offer it"},
    Code{Family::equipment, 5, 5, "the handset wants its PIN"},
    Code{Family::equipment, 10, 10, "no SIM"},
    Code{Family::equipment, 11, 11, "the SIM wants its PIN"},
    Code{Family::equipment, 12, 12, "the SIM wants its PUK"},
    Code{Family::equipment, 13, 13, "the SIM does not work"},
    Code{Family::equipment, 14, 14, "the SIM is busy"},
    Code{Family::equipment, 15, 15, "wrong SIM"},
    Code{Family::equipment, 16, 16, "wrong password"},
    Code{Family::equipment, 17, 18, "the SIM wants its PIN2 or PUK2"},
    Code{Family::equipment, 20, 20, "the memory is full"},
    Code{Family::equipment, 21, 22, "no such place in the memory"},
    Code{Family::equipment, 23, 23, "the memory does not work"},
    Code{Family::equipment, 24, 24, "the text is too long"},
    Code{Family::equipment, 26, 26, "the number is too long"},
    Code{Family::equipment, 30, 31, "no network"},
    Code{Family::equipment, 330, 330, "the SIM names no service centre"},
    Code{Family::message, 1, 1, "nobody has this number"},
    Code{Family::message, 8, 8, "barred by the operator"},
    Code{Family::message, 21, 21, "the network rejects the message"},
    Code{Family::message, 27, 27, "the receiver is out of service"},
    Code{Family::message, 28, 28, "the receiver is unknown"},
    Code{Family::message, 38, 38, "the network is out of order"},
    Code{Family::message, 41, 41, "the network has a passing fault"},
    Code{Family::message, 42, 42, "the network is congested"},
    Code{Family::message, 50, 50, "the subscription does not allow it"},
    Code{Family::message, 69, 69, "the network does not offer it"},
    Code{Family::message, 302, 303, "the handset does not allow it"},
    Code{Family::message, 304, 304, "the handset takes the message for malformed"},
    Code{Family::message, 310, 310, "no SIM"},
    Code{Family::message, 311, 311, "the SIM wants its PIN"},
    Code{Family::message, 312, 312, "the handset wants its PIN"},
    Code{Family::message, 313, 313, "the SIM does not work"},
    Code{Family::message, 314, 314, "the SIM is busy"},
    Code{Family::message, 315, 315, "wrong SIM"},
    Code{Family::message, 316, 316, "the SIM wants its PUK"},
    Code{Family::message, 317, 318, "the SIM wants its PIN2 or PUK2"},
    Code{Family::message, 320, 320, "the memory does not work"},
    Code{Family::message, 321, 321, "no such place in the memory"},
    Code{Family::message, 322, 322, "the memory is full"},
    Code{Family::message, 330, 330, "the SIM names no service centre"},
    Code{Family::message, 331, 332, "no network"},
    Code{Family::message, 500, 500, "unknown error"},
};

// What a modem says that puts its errors into words itself. Both families know the SIM's by the same words.
struct Words {
  std::string_view text;
  int equipment;
  int message;
};

constexpr std::array errorWords{Words{"SIM not inserted", 10, 310},
                                Words{"no SIM", 10, 310},
                                Words{"SIM PIN required", 11, 311},
                                Words{"SIM PIN necessary", 11, 311},
                                Words{"SIM PUK required", 12, 316},
                                Words{"SIM failure", 13, 313},
                                Words{"SIM busy", 14, 314},
                                Words{"SIM wrong", 15, 315},
                                Words{"incorrect password", 16, 16},
                                Words{"SIM PIN2 required", 17, 317},
                                Words{"SIM PUK2 required", 18, 318},
                                Words{"PH-SIM PIN required", 5, 312},
                                Words{"memory full", 20, 322},
                                Words{"memory failure", 23, 320},
                                Words{"invalid index", 21, 321},
                                Words{"invalid memory index", 21, 321},
                                Words{"operation not allowed", 3, 302},
                                Words{"operation not supported", 4, 303},
                                Words{"invalid PDU mode parameter", 304, 304},
                                Words{"SMSC address unknown", 330, 330},
                                Words{"no network service", 30, 331},
                                Words{"network timeout", 31, 332},
                                Words{"unknown error", 500, 500}};

int errorNumber(std::string_view value, Family family) {
  if (const std::optional<int> number = numberOf(value)) return *number;
  for (const Words& words : errorWords)
    if (text::equalInAnyCase(value, words.text))
      return family == Family::message ? words.message : words.equipment;
  return -1;
}

// Final results with nothing behind them, and those that say more.
constexpr std::array<std::string_view, 2> plainErrors{"ERROR", "NA"};
constexpr std::array<std::string_view, 5> errorPrefixes{
    "+CME ERROR:", "+CMS ERROR:", "+EXT ERROR:", "MODEM ERROR:", "COMMAND NOT SUPPORT"};
constexpr std::array<std::string_view, 6> callWords{"RING",      "NO CARRIER",  "BUSY",
                                                    "NO ANSWER", "NO DIALTONE", "NO DIAL TONE"};

// The name up to the colon of a line like "+CREG: 1"; empty when the line is not like that.
std::string_view nameOf(std::string_view line) {
  if (line.size() < 3 || std::string_view{"+^*%#$"}.find(line.front()) == std::string_view::npos) return {};
  const std::size_t colon = line.find(':');
  if (colon == line.npos || colon < 2) return {};
  const auto inName = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == ' ';
  };
  const std::string_view name = line.substr(0, colon);
  const char initial = name[1];
  if (!inName(initial) || (initial >= '0' && initial <= '9')) return {};
  return std::ranges::all_of(name.substr(1), inName) ? line.substr(0, colon + 1) : std::string_view{};
}

}  // namespace

std::optional<FinalResult> finalResultIn(std::string_view line) {
  if (line == "OK") return FinalResult{true, Family::plain, -1, "OK"};
  if (std::ranges::find(plainErrors, line) != plainErrors.end())
    return FinalResult{false, Family::plain, -1, std::string{line}};
  for (const std::string_view prefix : errorPrefixes) {
    const std::optional<std::string_view> value = valueOf(line, prefix);
    if (!value) continue;
    const Family family = prefix == "+CME ERROR:"   ? Family::equipment
                          : prefix == "+CMS ERROR:" ? Family::message
                                                    : Family::plain;
    return FinalResult{false, family, errorNumber(*value, family), std::string{line}};
  }
  return std::nullopt;
}

bool isUnsolicited(std::string_view line, std::string_view prefix) {
  if (std::ranges::find(callWords, line) != callWords.end()) return true;
  const std::string_view name = nameOf(line);
  return !name.empty() && name != prefix;
}

Companion companionOf(std::string_view line) {
  const std::string_view name = nameOf(line);
  if (name != "+CMT:" && name != "+CDS:" && name != "+CBM:") return Companion::none;
  // More than a length, and a name before it: the handset is in text mode, the next line may say anything. Of
  // a report there is none then.
  if (std::ranges::count(line, ',') < 2) return Companion::hexadecimal;
  return name == "+CDS:" ? Companion::none : Companion::any;
}

std::string reasonOf(const FinalResult& result) {
  for (const Code& code : codes) {
    if (code.family == result.family && result.number >= code.first && result.number <= code.last)
      return std::string{code.words} + " (" + result.text + ")";
  }
  return "the handset refuses (" + result.text + ")";
}

bool isSimTrouble(const FinalResult& result) {
  return (result.family == Family::equipment && result.number >= 10 && result.number <= 18) ||
         (result.family == Family::message && result.number >= 310 && result.number <= 318);
}

bool wantsPin(const FinalResult& result) {
  return (result.family == Family::equipment && result.number == 11) ||
         (result.family == Family::message && result.number == 311);
}

bool isBusy(const FinalResult& result) {
  return (result.family == Family::equipment && result.number == 14) ||
         (result.family == Family::message && result.number == 314);
}

}  // namespace handset::at
