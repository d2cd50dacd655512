#include "handset/at/opening.h"

#include <optional>

#include "handset/at/fields.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;

constexpr int tries = 5;

// Asks again, a second apart, while `again` says that it may help.
template <typename Again>
Answer patiently(Channel& channel, Clock& clock, std::string_view command, std::string_view prefix,
                 Again again) {
  Answer answer = channel.command(command, prefix, simDeadline);
  for (int done = 1; done < tries && answer.outcome == Outcome::refused && again(answer.result); ++done) {
    clock.sleep(retryPause);
    answer = channel.command(command, prefix, simDeadline);
  }
  return answer;
}

constexpr std::string_view simPin = "SIM PIN";
constexpr std::string_view refusedKey = "pin refused";

// What the SIM asks for: "READY", or the reason why there is no telling.
struct Wanted {
  std::string what;
  std::string problem;
};

Wanted askPin(Channel& channel, Clock& clock) {
  const Answer answer = patiently(channel, clock, "AT+CPIN?", "+CPIN:", isBusy);
  if (answer.outcome == Outcome::refused) {
    if (wantsPin(answer.result)) return {std::string{simPin}, reasonOf(answer.result)};
    // Any other error means that the modem does not know the question.
    return {"READY", isSimTrouble(answer.result) ? reasonOf(answer.result) : std::string{}};
  }
  if (!answer.ok()) return {{}, problemOf(answer)};
  const std::string wanted{valueOf(answer.lines, "+CPIN:").value_or("READY")};
  if (wanted == "READY") return {wanted, {}};
  if (wanted == "NOT INSERTED") return {wanted, "no SIM (+CPIN: NOT INSERTED)"};
  if (wanted == "NOT READY") return {wanted, "the SIM is not ready (+CPIN: NOT READY)"};
  return {wanted, "the handset asks for " + wanted};
}

// Enters the PIN once. A third wrong one would lock the SIM: what was not accepted is noted among the
// settings before it is tried, and never tried again. The reason when it does not open the SIM.
std::string enterPin(Channel& channel, PortSettings& settings, const std::string& wanted) {
  const std::string pin = settings.value("pin");
  if (pin.empty()) return wanted;
  if (pin.size() < 4 || pin.size() > 8 || pin.find_first_not_of("0123456789") != pin.npos)
    return wanted + "; the pin in port.ini is none";
  // All of them: whoever goes back to an earlier one would use up what tries are left.
  const std::string refused = settings.value(refusedKey);
  if ((' ' + refused + ' ').find(' ' + pin + ' ') != refused.npos)
    return wanted + "; it has refused the pin in port.ini";
  const std::string noted = refused.empty() ? pin : refused + ' ' + pin;
  settings.setValue(refusedKey, noted);
  if (settings.value(refusedKey) != noted) return wanted + "; port.ini cannot be written";
  const Answer answer = channel.command("AT+CPIN=\"" + pin + '"', {}, simDeadline);
  return answer.ok() ? std::string{} : "the PIN was not accepted: " + problemOf(answer);
}

std::string checkPin(Channel& channel, Clock& clock, PortSettings& settings) {
  Wanted wanted = askPin(channel, clock);
  if (wanted.what != simPin) return wanted.problem;
  if (std::string problem = enterPin(channel, settings, wanted.problem); !problem.empty()) return problem;
  // It takes the SIM a while to get ready.
  for (int done = 0; done < tries; ++done) {
    wanted = askPin(channel, clock);
    if (wanted.problem.empty() || wanted.what.empty()) break;
    clock.sleep(retryPause);
  }
  if (wanted.problem.empty()) settings.setValue(refusedKey, {});
  return wanted.problem;
}

// How reports are to be handed over: from its store where it has one, else as they come.
std::string_view reportsIn(std::string_view offered) {
  for (int group = 0; group < 3; ++group) {
    const std::size_t end = offered.find(')');
    if (end == offered.npos) return {};
    offered.remove_prefix(end + 1);
  }
  offered = firstGroupOf(offered);
  return offered.find('2') != offered.npos ? "2" : offered.find('1') != offered.npos ? "1" : "";
}

// A handset that hands new messages straight through would have them lost while nobody looks for them: they
// are to be kept in its store. Reports come when a person wants them. Everything else stays as it is.
void keepNewMessages(Channel& channel, bool reports) {
  const Answer offered = channel.command("AT+CNMI=?", "+CNMI:", plainDeadline);
  if (!offered.ok()) return;
  const Answer current = channel.command("AT+CNMI?", "+CNMI:", plainDeadline);
  const std::optional<std::string_view> value = valueOf(current.lines, "+CNMI:");
  if (!current.ok() || !value) return;
  std::vector<Field> fields = fieldsOf(*value);
  const auto numberAt = [&fields](std::size_t at) {
    return at < fields.size() ? numberOf(fields[at].text).value_or(0) : 0;
  };
  const std::string_view wanted = reportsIn(valueOf(offered.lines, "+CNMI:").value_or(""));
  const bool changesReports = reports && fields.size() > 3 && numberAt(3) == 0 && !wanted.empty();
  const bool changesMessages = numberAt(1) >= 2;
  if (!changesReports && !changesMessages) return;
  if (changesReports) fields[3].text = wanted;
  if (changesMessages) fields[1].text = "1";
  std::string command = "AT+CNMI=";
  for (const Field& field : fields) command.append(command.ends_with('=') ? "" : ",").append(field.text);
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

std::string findModem(Channel& channel, Dialect& dialect) {
  constexpr int patience = 10'000;
  constexpr int firstDeadline = 500;
  constexpr int wakingTime = 2000;
  channel.callOff();
  // What was begun on the line before spoils the first answer.
  const bool answers = channel.probe(firstDeadline).ok();
  // One that echoes has heard the question; one that slept may not have.
  const bool echoes = channel.heardAnything() && !channel.heardMoreThanEcho();
  Answer answer = channel.synchronize(echoes ? patience : wakingTime);
  if (answer.outcome == Outcome::timedOut && !echoes) answer = channel.synchronize(patience - wakingTime);
  dialect.characterSets = dialect.learn(answer, "+CSCS:");
  if (channel.gone()) return problemOf(answer);
  if (answers || answer.ok()) return {};
  if (!channel.heardAnything()) return "nothing answers";
  return channel.heardMoreThanEcho() ? "what answers is no modem" : "only the echo comes back";
}

std::string prepareForMessages(Channel& channel, Clock& clock, PortSettings& settings, Dialect& dialect) {
  // A modem may refuse these and work all the same.
  for (const std::string_view command : {"ATE0", "ATV1", "AT+CMEE=1"}) {
    const Answer answer = channel.command(command, {}, plainDeadline);
    if (answer.outcome >= Outcome::timedOut) return problemOf(answer);
  }
  if (std::string problem = checkPin(channel, clock, settings); !problem.empty()) return problem;

  const Answer format = patiently(channel, clock, "AT+CMGF=0", {}, isBusy);
  if (!format.ok()) return "no messages as PDUs: " + problemOf(format);

  const Answer stores =
      patiently(channel, clock, "AT+CPMS=?", "+CPMS:", [](const FinalResult&) { return true; });
  if (stores.outcome >= Outcome::timedOut) return problemOf(stores);
  dialect.messageStores = dialect.learn(stores, "+CPMS:");

  keepNewMessages(channel, settings.value(reportKey) == "yes");
  return channel.gone() ? "the connection is gone" : std::string{};
}

}  // namespace handset::at
