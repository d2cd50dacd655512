#pragma once

#include <string>
#include <vector>

#include "handset/at/channel.h"

namespace handset::at {

// What a modem has said about itself. Empty lists: it did not say.
struct Dialect {
  std::vector<std::string> characterSets;
  std::vector<std::string> messageStores;  // that messages can be read from
  bool hexStrings = false;                 // it writes quoted texts in digits, four a character

  // The words of the first list in an answer; notes when they came in digits.
  std::vector<std::string> learn(const Answer& answer, std::string_view prefix);

  // Whether `name` may be asked for: listed, or nothing sensible is.
  static bool mayOffer(const std::vector<std::string>& list, std::string_view name);
};

// Deadlines in milliseconds.
inline constexpr int plainDeadline = 3000;
inline constexpr int simDeadline = 10'000;  // for what is asked of the SIM
inline constexpr int listDeadline = 120'000;
inline constexpr int promptDeadline = 10'000;
inline constexpr int sendDeadline = 60'000;
inline constexpr int phonebookDeadline = 30'000;  // a hundred entries
inline constexpr int retryPause = 1000;

// Why an answer is not OK, in words.
std::string problemOf(const Answer& answer);

// A command that selects something by name. The name is given as plain text and, if that is refused, in
// digits, or the other way about; asked again, a second apart, while the SIM is busy.
Answer select(Channel& channel, Clock& clock, std::string_view command, std::string_view prefix,
              std::string_view name, bool hexFirst);

}  // namespace handset::at
