#include "handset/at/opening.h"

#include <optional>

#include "handset/at/fields.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;

// Asks again, a second apart, while `again` says that it may help.
template <typename Again>
Answer patiently(Channel& channel, Clock& clock, std::string_view command, std::string_view prefix,
                 Again again) {
  constexpr int tries = 5;
  Answer answer = channel.command(command, prefix, plainDeadline);
  for (int done = 1; done < tries && answer.outcome == Outcome::refused && again(answer.result); ++done) {
    clock.sleep(retryPause);
    answer = channel.command(command, prefix, plainDeadline);
  }
  return answer;
}

std::string checkPin(Channel& channel, Clock& clock) {
  const Answer answer = patiently(channel, clock, "AT+CPIN?", "+CPIN:", isBusy);
  if (answer.outcome == Outcome::refused) {
    // Any other error means that the modem does not know the question.
    return isSimTrouble(answer.result) ? reasonOf(answer.result) : std::string{};
  }
  if (!answer.ok()) return problemOf(answer);
  const std::string_view wanted = valueOf(answer.lines, "+CPIN:").value_or("READY");
  return wanted == "READY" ? std::string{} : "the handset asks for " + std::string{wanted};
}

std::vector<std::string> wordsIn(const Answer& answer, std::string_view prefix, Dialect& dialect) {
  const std::optional<std::string_view> value = valueOf(answer.lines, prefix);
  if (!answer.ok() || !value) return {};
  const std::string_view list = firstGroupOf(*value);
  std::vector<std::string> words = wordsOf(list);
  for (const std::string& word : words)
    dialect.hexStrings = dialect.hexStrings || list.find(word) == list.npos;
  return words;
}

// A handset that hands new messages straight through would have them lost while nobody looks for them: they
// are to be kept in its store. Everything else about them stays as it is.
void keepNewMessages(Channel& channel) {
  const Answer offered = channel.command("AT+CNMI=?", "+CNMI:", plainDeadline);
  if (!offered.ok()) return;
  const Answer current = channel.command("AT+CNMI?", "+CNMI:", plainDeadline);
  const std::optional<std::string_view> value = valueOf(current.lines, "+CNMI:");
  if (!current.ok() || !value) return;
  const std::vector<Field> fields = fieldsOf(*value);
  if (fields.size() < 2 || numberOf(fields[1].text).value_or(0) < 2) return;
  std::string command = "AT+CNMI=";
  for (std::size_t i = 0; i < fields.size(); ++i)
    command.append(i == 0 ? "" : ",").append(i == 1 ? "1" : fields[i].text);
  channel.command(command, {}, plainDeadline);
}

}  // namespace

std::string problemOf(PortProblem problem, int port) {
  const std::string name = "COM" + std::to_string(port);
  switch (problem) {
    case PortProblem::none:
      return {};
    case PortProblem::absent:
      return "there is no " + name;
    case PortProblem::busy:
      return name + " is used by another program";
    case PortProblem::denied:
      return name + " may not be used";
    case PortProblem::notSerial:
      return name + " is no serial port";
    case PortProblem::failed:
      break;
  }
  return name + " cannot be opened";
}

std::string findModem(Channel& channel) {
  constexpr int firstDeadline = 500;
  constexpr int probeDeadline = 1000;
  constexpr int overdueDeadline = 600;
  constexpr int probes = 3;
  channel.callOff();
  // What was begun on the line before spoils the first answer.
  channel.probe(firstDeadline);
  for (int i = 0; i < probes && !channel.gone(); ++i) {
    if (!channel.probe(probeDeadline).ok()) continue;
    channel.takeOverdue(overdueDeadline);
    return channel.gone() ? problemOf(Answer{Outcome::gone, {}, {}}) : std::string{};
  }
  if (channel.gone()) return "the connection is gone";
  if (!channel.heardAnything()) return "nothing answers";
  return channel.heardMoreThanEcho() ? "what answers is no modem" : "only the echo comes back";
}

std::string prepareForMessages(Channel& channel, Clock& clock, Dialect& dialect) {
  dialect = {};
  // A modem may refuse these and work all the same.
  for (const std::string_view command : {"ATE0", "ATV1", "AT+CMEE=1"}) {
    const Answer answer = channel.command(command, {}, plainDeadline);
    if (answer.outcome >= Outcome::timedOut) return problemOf(answer);
  }
  if (std::string problem = checkPin(channel, clock); !problem.empty()) return problem;

  const Answer sets = channel.command("AT+CSCS=?", "+CSCS:", plainDeadline);
  if (sets.outcome >= Outcome::timedOut) return problemOf(sets);
  dialect.characterSets = wordsIn(sets, "+CSCS:", dialect);

  const Answer format = patiently(channel, clock, "AT+CMGF=0", {}, isBusy);
  if (!format.ok()) return "no messages as PDUs: " + problemOf(format);

  const Answer stores =
      patiently(channel, clock, "AT+CPMS=?", "+CPMS:", [](const FinalResult&) { return true; });
  if (stores.outcome >= Outcome::timedOut) return problemOf(stores);
  dialect.messageStores = wordsIn(stores, "+CPMS:", dialect);

  keepNewMessages(channel);
  return channel.gone() ? "the connection is gone" : std::string{};
}

}  // namespace handset::at
