#include "handset/at/channel.h"

#include <algorithm>
#include <utility>

#include "handset/at/fields.h"
#include "handset/at/hex.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;

constexpr char escapeKey = '\x1B';
constexpr char endOfText = '\x1A';
constexpr int plainDeadline = 3000;
constexpr int quietTime = 100;
constexpr int longestDrain = 300;

// Every modem knows this one, its answer begins like no other, and it asks nothing of the SIM.
constexpr std::string_view question = "AT+CSCS=?";
constexpr std::string_view questionPrefix = "+CSCS:";
constexpr int shortestGrace = 1000;  // for an answer that may be owed
constexpr std::int64_t longestSlowness = 20'000;

Answer answerOf(Outcome outcome) {
  Answer answer;
  answer.outcome = outcome;
  return answer;
}

}  // namespace

bool Channel::write(std::string_view bytes) {
  if (!since_) since_ = clock_.milliseconds();
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

std::int64_t Channel::after(int milliseconds) {
  return clock_.milliseconds() + milliseconds;
}

// Takes what comes, but for messages throws it away, until nothing has come for a while.
void Channel::drain(int quiet) {
  const std::int64_t deadline = after(longestDrain);
  received_ = 0;
  while (read(quiet) && clock_.milliseconds() < deadline && received_ <= mostBytes) {
    while (std::optional<std::string> line = reader_.next({}))
      if (*line != std::string_view{&escapeKey, 1}) belongs(*line, {});
  }
  forget();
}

// The rest of a message may be on its way; nothing else that has begun is wanted.
void Channel::forget() {
  const std::string_view begun = reader_.begun();
  for (const std::string_view name : {"+CMT:", "+CDS:"})
    if (!begun.empty() && name.starts_with(begun)) return;
  if (companion_ == Companion::hexadecimal ? begun.empty() || isHex(begun)
                                           : companionOf(begun) != Companion::none)
    return;
  reader_.clear();
  companion_ = Companion::none;
}

void Channel::take(const std::string& body) {
  HandedOver message{std::exchange(announced_, {}), body};
  if (message.header.starts_with("+CBM:")) return;  // meant for everybody
  if (handedOver_.size() < mostHandedOver && std::ranges::find(handedOver_, message) == handedOver_.end())
    handedOver_.push_back(std::move(message));
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
    announced_ = line;
    return false;
  }
  if (isUnsolicited(line, wait.prefix) && !finalResultIn(line)) {
    if (line.starts_with("+CDSI:") && storedReports_.size() < mostHandedOver) storedReports_.push_back(line);
    return false;
  }
  const Companion awaited = std::exchange(companion_, Companion::none);
  if (awaited == Companion::none || (awaited == Companion::hexadecimal && !isHex(line))) return true;
  take(line);
  return false;
}

Answer Channel::exchange(std::string_view bytes, const Wait& wait) {
  Answer answer;
  received_ = 0;
  if (!bytes.empty()) write(bytes);
  std::int64_t patience = clock_.milliseconds() + wait.silence;
  while (!gone_ && received_ <= mostBytes) {
    const std::int64_t left = std::min(wait.deadline, patience) - clock_.milliseconds();
    if (left <= 0) break;
    read(static_cast<int>(left));
    while (std::optional<std::string> line = reader_.next(wait.prefix)) {
      if (!belongs(*line, wait)) continue;
      patience = clock_.milliseconds() + wait.silence;
      // Until it is told otherwise, a modem may say its results in figures.
      if (wait.figures && *line == "0") *line = "OK";
      if (wait.figures && *line == "4") *line = "ERROR";
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

// Remembers what an answer that did not come may still do.
Answer Channel::counted(Answer answer) {
  if (answer.outcome == Outcome::timedOut) ++overdue_;
  return answer;
}

Answer Channel::probe(int milliseconds) {
  Wait wait{Await::finalResult, "AT", {}, after(milliseconds)};
  wait.figures = true;
  return counted(exchange("AT\r", wait));
}

Answer Channel::synchronize(int milliseconds) {
  ++overdue_;
  ++questions_;
  std::string bytes = std::string{question} + '\r';
  Answer best;
  Wait wait{Await::finalResult, question, questionPrefix, after(milliseconds)};
  wait.figures = true;
  while (overdue_ > 0) {
    Answer answer = exchange(std::exchange(bytes, {}), wait);
    if (gone_) return answer;
    if (answer.outcome == Outcome::timedOut) break;
    --overdue_;
    const std::int64_t now = clock_.milliseconds();
    slowness_ = std::max(slowness_, static_cast<int>(std::min(2 * (now - *since_), longestSlowness)));
    since_ = now;
    const bool recognized = valueOf(answer.lines, questionPrefix).has_value();
    if (recognized && --questions_ == 0) overdue_ = 0;
    if (!best.ok() || recognized) best = std::move(answer);
    wait.deadline = after(std::max(slowness_, shortestGrace));
  }
  if (best.outcome == Outcome::timedOut) return best;
  // What has not come by now never will.
  overdue_ = 0;
  questions_ = 0;
  forget();
  return best;
}

bool Channel::prepare() {
  drain(0);
  since_.reset();
  if (gone_ || overdue_ == 0) return !gone_;
  return synchronize(plainDeadline + slowness_).outcome < Outcome::timedOut;
}

Answer Channel::command(std::string_view command, std::string_view prefix, int milliseconds) {
  if (gone_ || !prepare()) return answerOf(gone_ ? Outcome::gone : Outcome::timedOut);
  Wait wait{Await::finalResult, command, prefix, after(milliseconds + slowness_)};
  wait.figures = prefix.empty();
  return counted(exchange(std::string{command} + '\r', wait));
}

Answer Channel::commandWithText(std::string_view command, std::string_view text, std::string_view prefix,
                                int promptMilliseconds, int resultMilliseconds) {
  if (gone_ || !prepare()) return answerOf(gone_ ? Outcome::gone : Outcome::timedOut);
  Answer answer = counted(exchange(std::string{command} + '\r',
                                   {Await::prompt, command, prefix, after(promptMilliseconds + slowness_)}));
  if (!answer.ok()) {
    callOff();
    return answer;
  }
  const int patience = resultMilliseconds + slowness_;
  return counted(
      exchange(std::string{text} + endOfText, {Await::finalResult, text, prefix, after(patience), patience}));
}

void Channel::callOff() {
  if (gone_ || !write(std::string{escapeKey} + '\r')) return;
  ++overdue_;  // it may be answered, and late
  drain(quietTime);
}

}  // namespace handset::at
