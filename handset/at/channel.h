#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "handset/at/byte_stream.h"
#include "handset/at/line_reader.h"
#include "handset/at/result_codes.h"

namespace handset::at {

// What came back for a command.
struct Answer {
  enum class Outcome {
    ok,
    refused,   // a final result other than OK
    timedOut,  // no final result by the deadline, or bytes without end
    gone       // the line is gone
  };

  Outcome outcome = Outcome::timedOut;
  std::vector<std::string>
      lines;           // between command and final result; neither the echo nor what was unsolicited
  FinalResult result;  // when ok or refused

  bool ok() const { return outcome == Outcome::ok; }
};

// A message or a report that a modem handed over of its own accord.
struct HandedOver {
  std::string header;  // the unsolicited line
  std::string body;    // the line behind it

  bool operator==(const HandedOver&) const = default;
};

// Commands and answers on a line. Borrows the line and the clock. Deadlines are absolute: nothing that comes
// in moves them; for a modem that was slow to answer synchronize() they are later. An answer of many lines is
// given up earlier when no line of it has come for half a minute. Once the line is gone every call returns at
// once.
class Channel {
 public:
  // Bounds for a line that never stops talking.
  static constexpr std::size_t mostBytes = 8U << 20U;
  static constexpr std::size_t mostLines = 20'000;
  static constexpr std::size_t mostHandedOver = 1000;
  static constexpr int longestSilence = 30'000;  // milliseconds

  Channel(ByteStream& stream, Clock& clock) : stream_{stream}, clock_{clock} {}

  // Sends a command without its CR and waits for its final result. Values in the answer begin with `prefix`
  // (as in "+CPMS:"; empty: none is expected).
  Answer command(std::string_view command, std::string_view prefix, int milliseconds);

  // Sends a command that asks for a text, then, when it is asked for, the text and its end; waits for the
  // final result without sending anything else. When it is not asked for, the command is called off.
  Answer commandWithText(std::string_view command, std::string_view text, std::string_view prefix,
                         int promptMilliseconds, int resultMilliseconds);

  // Calls off whatever waits for a text and listens until the line is quiet.
  void callOff();

  // Asks whether somebody is there: a command that means nothing, answered or not.
  Answer probe(int milliseconds);

  // Asks a question whose answer looks like no other, so that every overdue answer is told from it, and
  // learns how long the modem takes. Times out when nothing answers within `milliseconds`; one that does not
  // know the question is waited for until all answers have come that it may owe. The answer is OK if any was.
  Answer synchronize(int milliseconds);

  // Takes what has come while nothing was asked.
  void listen() { drain(0); }

  bool gone() const { return gone_; }
  // What has come in since the channel was made.
  bool heardAnything() const { return heardAnything_; }
  bool heardMoreThanEcho() const { return heardMoreThanEcho_; }
  // What came unasked since the last call, each once.
  std::vector<HandedOver> takeHandedOver() { return std::exchange(handedOver_, {}); }
  // The lines that tell where a report was stored, since the last call.
  std::vector<std::string> takeStoredReports() { return std::exchange(storedReports_, {}); }

 private:
  enum class Await { finalResult, prompt };
  struct Wait {
    Await await;
    std::string_view echo;
    std::string_view prefix;
    std::int64_t deadline;
    std::int64_t silence = longestSilence;
    bool figures = false;  // results may be said in figures
  };

  bool write(std::string_view bytes);
  bool read(int milliseconds);
  // False when the line is gone or the modem does not answer at all.
  bool prepare();
  Answer exchange(std::string_view bytes, const Wait& wait);
  Answer counted(Answer answer);
  bool belongs(std::string& line, const Wait& wait);
  void take(const std::string& body);
  void drain(int quiet);
  void forget();
  std::int64_t after(int milliseconds);

  ByteStream& stream_;
  Clock& clock_;
  LineReader reader_;
  Companion companion_ = Companion::none;  // of the unsolicited line that came last
  std::string announced_;                  // that line
  std::vector<HandedOver> handedOver_;
  std::vector<std::string> storedReports_;
  std::size_t received_ = 0;           // bytes, in this exchange
  int overdue_ = 0;                    // answers that may still come
  int questions_ = 0;                  // of them those to synchronize()
  int slowness_ = 0;                   // milliseconds that every deadline is later
  std::optional<std::int64_t> since_;  // when the first bytes went out that may not be answered yet
  bool gone_ = false;
  bool heardAnything_ = false;
  bool heardMoreThanEcho_ = false;
};

}  // namespace handset::at
