#include "handset/at/channel.h"

#include <utility>

#include "handset/at/fields.h"
#include "handset/at/hex.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;

constexpr char escapeKey = '\x1B';
constexpr char endOfText = '\x1A';
constexpr int plainDeadline = 3000;
constexpr int overduePatience = 1000;
constexpr int quiet = 100;
constexpr int longestDrain = 300;

Answer answerOf(Outcome outcome) {
  Answer answer;
  answer.outcome = outcome;
  return answer;
}

}  // namespace

bool Channel::write(std::string_view bytes) {
  gone_ = gone_ || !stream_.write(bytes);
  return !gone_;
}

// Waits for more bytes; false when none have come.
bool Channel::read(int milliseconds) {
  if (gone_) return false;
  std::string bytes;
  gone_ = stream_.read(bytes, milliseconds) == ByteStream::Arrival::gone;
  received_ += bytes.size();
  heardAnything_ = heardAnything_ || !bytes.empty();
  reader_.add(bytes);
  return !bytes.empty();
}

// Throws away what comes until nothing has come for a while.
void Channel::drain() {
  const std::int64_t deadline = after(longestDrain);
  received_ = 0;
  while (read(quiet) && clock_.milliseconds() < deadline && received_ <= mostBytes) {
    while (const std::optional<std::string> line = reader_.next({}))
      heardMoreThanEcho_ = heardMoreThanEcho_ || *line != std::string_view{&escapeKey, 1};
  }
  forget();
}

void Channel::forget() {
  reader_.clear();
  companion_ = Companion::none;
}

bool Channel::belongs(std::string& line, const Wait& wait) {
  if (!wait.echo.empty() && line.starts_with(wait.echo)) {
    std::string_view rest = std::string_view{line}.substr(wait.echo.size());
    if (rest.starts_with(endOfText)) rest.remove_prefix(1);
    line = std::string{trimmed(rest)};
  }
  if (line.empty()) return false;
  heardMoreThanEcho_ = true;
  const Companion announced = companionOf(line);
  if (announced != Companion::none) {
    companion_ = announced;
    return false;
  }
  if (isUnsolicited(line, wait.prefix) && !finalResultIn(line)) return false;
  const Companion awaited = std::exchange(companion_, Companion::none);
  return awaited == Companion::none || (awaited == Companion::hexadecimal && !isHex(line));
}

Answer Channel::exchange(std::string_view bytes, const Wait& wait) {
  Answer answer;
  received_ = 0;
  if (!bytes.empty()) write(bytes);
  while (!gone_ && received_ <= mostBytes) {
    const std::int64_t left = wait.deadline - clock_.milliseconds();
    if (left <= 0) break;
    read(static_cast<int>(left));
    while (std::optional<std::string> line = reader_.next(wait.prefix)) {
      if (!belongs(*line, wait)) continue;
      // Until it is told otherwise, a modem may say its results in figures.
      if (wait.prefix.empty() && *line == "0") *line = "OK";
      if (wait.await == Await::prompt && line->starts_with('>')) return answerOf(Outcome::ok);
      if (std::optional<FinalResult> result = finalResultIn(*line)) {
        // OK is no invitation to send a text.
        const bool ok = result->ok && wait.await == Await::finalResult;
        answer.outcome = ok ? Outcome::ok : Outcome::refused;
        answer.result = std::move(*result);
        return answer;
      }
      if (answer.lines.size() == mostLines) return answerOf(Outcome::timedOut);
      answer.lines.push_back(std::move(*line));
    }
    if (wait.await == Await::prompt && reader_.takePrompt()) return answerOf(Outcome::ok);
  }
  heardMoreThanEcho_ = heardMoreThanEcho_ || !wait.echo.starts_with(reader_.begun());
  answer.outcome = gone_ ? Outcome::gone : Outcome::timedOut;
  return answer;
}

Answer Channel::probe(int milliseconds) {
  Answer answer = exchange("AT\r", {Await::finalResult, "AT", {}, after(milliseconds)});
  if (answer.outcome == Outcome::timedOut) ++overdue_;
  return answer;
}

void Channel::takeOverdue(int milliseconds) {
  const std::int64_t deadline = after(milliseconds);
  while (overdue_ > 0 && exchange({}, {Await::finalResult, "AT", {}, deadline}).outcome < Outcome::timedOut)
    --overdue_;
  overdue_ = 0;
  forget();
}

bool Channel::prepare() {
  stream_.discardInput();
  forget();
  if (overdue_ > 0) {
    if (probe(plainDeadline).outcome >= Outcome::timedOut) return false;
    takeOverdue(overduePatience);
  }
  return !gone_;
}

Answer Channel::command(std::string_view command, std::string_view prefix, int milliseconds) {
  if (gone_ || !prepare()) return answerOf(gone_ ? Outcome::gone : Outcome::timedOut);
  Answer answer =
      exchange(std::string{command} + '\r', {Await::finalResult, command, prefix, after(milliseconds)});
  if (answer.outcome == Outcome::timedOut) ++overdue_;
  return answer;
}

Answer Channel::commandWithText(std::string_view command, std::string_view text, std::string_view prefix,
                                int promptMilliseconds, int resultMilliseconds) {
  if (gone_ || !prepare()) return answerOf(gone_ ? Outcome::gone : Outcome::timedOut);
  Answer answer =
      exchange(std::string{command} + '\r', {Await::prompt, command, prefix, after(promptMilliseconds)});
  if (!answer.ok()) {
    if (answer.outcome == Outcome::timedOut) ++overdue_;
    callOff();
    return answer;
  }
  answer =
      exchange(std::string{text} + endOfText, {Await::finalResult, text, prefix, after(resultMilliseconds)});
  if (answer.outcome == Outcome::timedOut) ++overdue_;
  return answer;
}

void Channel::callOff() {
  if (gone_ || !write(std::string{escapeKey} + '\r')) return;
  drain();
}

}  // namespace handset::at
