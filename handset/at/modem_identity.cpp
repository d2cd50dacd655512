#include "handset/at/modem_identity.h"

#include <cstddef>
#include <string_view>

#include "handset/at/channel.h"
#include "handset/at/opening.h"

namespace handset::at {
namespace {

constexpr std::size_t longestText = 60;

// What can be shown of a line: control characters and what lies beyond ASCII are left out.
std::string printable(std::string_view line) {
  std::string text;
  for (const char c : line)
    if (c >= ' ' && c <= '~' && text.size() < longestText) text.push_back(c);
  while (text.starts_with(' ')) text.erase(0, 1);
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

// The first line, without the command's name and the quotes that some put around it.
std::string textOf(const Answer& answer, std::string_view name) {
  if (!answer.ok() || answer.lines.empty()) return {};
  std::string_view line = answer.lines.front();
  if (line.starts_with(name)) line.remove_prefix(name.size());
  std::string text = printable(line);
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return text;
}

// False when there is no answer in time. One that has stopped answering gets no more questions: there is no
// time to wait for the overdue answer.
bool ask(Channel& channel, std::string_view command, std::string_view name, int milliseconds,
         std::string& text) {
  const Answer answer = channel.command(command, name, milliseconds);
  text = textOf(answer, name);
  return answer.outcome != Answer::Outcome::timedOut;
}

}  // namespace

std::string nameOf(const ModemIdentity& identity) {
  const bool both = !identity.manufacturer.empty() && !identity.model.empty();
  return identity.manufacturer + (both ? " " : "") + identity.model;
}

bool askName(Channel& channel, int milliseconds, ModemIdentity& identity) {
  return ask(channel, "AT+CGMI", "+CGMI:", milliseconds, identity.manufacturer) &&
         ask(channel, "AT+CGMM", "+CGMM:", milliseconds, identity.model);
}

std::optional<ModemIdentity> askIdentity(ByteStream& line, Clock& clock) {
  Channel channel{line, clock};
  Dialect dialect;
  if (!findModem(channel, dialect).empty()) return std::nullopt;

  ModemIdentity identity;
  if (askName(channel, simDeadline, identity)) ask(channel, "AT+CPIN?", "+CPIN:", simDeadline, identity.wanted);
  if (identity.wanted == "READY") identity.wanted.clear();
  return identity;
}

}  // namespace handset::at
