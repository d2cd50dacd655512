#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/byte_stream.h"
#include "handset/handset.h"

namespace handset::at {

class Channel;
struct Dialect;

// UTF-16 code units up to which the parts of a long message are given as one.
inline constexpr std::size_t defaultJoinLimit = 4096;

// A GSM handset or modem that speaks standard AT commands, messages as PDUs. Owned by the library; the clock
// must outlive it. Every operation ends by its own deadline, whatever comes in, and at once when the line
// goes away; after that only open() helps, and it starts afresh.
class AtHandset : public Handset {
 public:
  AtHandset(OpenPort openPort, Clock& clock, std::size_t joinLimit = defaultJoinLimit);
  ~AtHandset() override;

  // Opens the port and looks for a modem on it; four and a half seconds at most once the port is open.
  bool open(int port, int baud) override;
  bool init() override;
  void close() override;
  bool offersUnicode() override;
  std::string describe() override;
  std::optional<std::vector<Message>> simReceived() override;
  std::optional<std::vector<Message>> simOutgoing() override;
  std::optional<std::vector<Message>> phoneMessages() override;
  // A text too long for one message goes out in parts; the first part that fails ends it.
  bool send(std::string_view number, std::string_view text) override;
  bool initPhonebook() override;
  std::optional<std::vector<Contact>> simContacts() override;
  std::optional<std::vector<Contact>> phoneContacts() override;

  // Why the last operation that failed did so, in words a person can read; empty when nothing has failed
  // since the last open. Valid until the next call.
  const std::string& lastProblem() const { return lastProblem_; }

 private:
  std::optional<std::vector<Message>> listStore(std::string_view store);
  std::optional<std::vector<Contact>> listContacts(std::string_view store);
  bool fail(std::string problem);

  OpenPort openPort_;
  Clock& clock_;
  std::size_t joinLimit_;
  std::unique_ptr<ByteStream> stream_;
  std::unique_ptr<Channel> channel_;  // uses the stream
  std::unique_ptr<Dialect> dialect_;
  std::optional<std::vector<Message>> simOutgoing_;  // seen while the received ones were listed
  int port_ = 0;
  std::uint8_t reference_ = 0;  // of the next long message
  std::string lastProblem_;
};

}  // namespace handset::at
