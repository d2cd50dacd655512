#include "handset/at/dialect.h"

#include <algorithm>

#include "handset/at/fields.h"

namespace handset::at {

bool Dialect::mayOffer(const std::vector<std::string>& list, std::string_view name) {
  // A list without letters ("0") says nothing.
  const bool sensible = std::ranges::any_of(
      list, [](const std::string& word) { return word.find_first_of("EGIMSU") != std::string::npos; });
  return !sensible || std::ranges::find(list, name) != list.end();
}

std::vector<std::string> Dialect::learn(const Answer& answer, std::string_view prefix) {
  const std::optional<std::string_view> value = valueOf(answer.lines, prefix);
  if (!answer.ok() || !value) return {};
  const std::string_view list = firstGroupOf(*value);
  std::vector<std::string> words = wordsOf(list);
  for (const std::string& word : words) hexStrings = hexStrings || list.find(word) == list.npos;
  return words;
}

std::string problemOf(const Answer& answer) {
  switch (answer.outcome) {
    case Answer::Outcome::ok:
      return {};
    case Answer::Outcome::refused:
      return reasonOf(answer.result);
    case Answer::Outcome::timedOut:
      return "the handset does not answer";
    case Answer::Outcome::gone:
      break;
  }
  return "the connection is gone";
}

Answer select(Channel& channel, Clock& clock, std::string_view command, std::string_view prefix,
              std::string_view name, bool hexFirst) {
  constexpr int triesWhileBusy = 4;
  Answer answer;
  for (int tries = 0; tries < triesWhileBusy; ++tries) {
    if (tries > 0) clock.sleep(retryPause);
    for (const bool hex : {hexFirst, !hexFirst}) {
      const std::string parameter = hex ? hexOfAscii(name) : std::string{name};
      answer = channel.command(std::string{command} + '"' + parameter + '"', prefix, simDeadline);
      if (answer.outcome != Answer::Outcome::refused) return answer;
      if (isBusy(answer.result)) break;
    }
    if (!isBusy(answer.result)) break;
  }
  return answer;
}

}  // namespace handset::at
