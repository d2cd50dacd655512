#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/byte_stream.h"
#include "handset/at/handed_over.h"
#include "handset/at/port_settings.h"
#include "handset/at/sent_messages.h"
#include "handset/handset.h"

namespace handset::at {

struct Dialect;
struct StoredPdu;

// UTF-16 code units up to which the parts of a long message are given as one.
inline constexpr std::size_t defaultJoinLimit = 4096;

// A GSM handset or modem that speaks standard AT commands, messages as PDUs. Owned by the library; clock and
// settings must outlive it. Every operation ends by its own deadline, whatever comes in, and at once when the
// line goes away; after that only open() helps, and it starts afresh.
class AtHandset : public Handset {
 public:
  AtHandset(OpenPort openPort, Clock& clock, PortSettings& settings,
            std::size_t joinLimit = defaultJoinLimit);
  ~AtHandset() override;

  // Opens the port and looks for a modem on it; eleven seconds when nobody answers there.
  bool open(int port, int baud) override;
  bool init() override;
  void close() override;
  bool offersUnicode() override;
  std::string describe() override;
  // Begins a reading: what follows of it fails at once after a list that was not answered.
  Listing<Message> simReceived() override;
  Listing<Message> simOutgoing() override;
  // Listed once in a reading, however often it is asked for.
  Listing<Message> phoneMessages() override;
  // A text too long for one message goes out in parts; the first part that fails ends it.
  bool send(std::string_view number, std::string_view text) override;
  bool remove(const Message& message) override;
  std::string simRoom() override { return simRoom_; }
  std::string nextDelivery() override;
  bool initPhonebook() override;
  Listing<Contact> simContacts() override;
  Listing<Contact> phoneContacts() override;
  const std::string& lastProblem() const override { return lastProblem_; }

 private:
  Listing<Message> listStore(std::string_view store);
  bool readStore(std::string_view store, std::vector<StoredPdu>& stored);
  bool keptRemoved(std::string_view store, const std::vector<StoredPdu>& listed);
  std::string phoneStore() const;
  void settleReports();
  Listing<Contact> listContacts(std::string_view store);
  void endReading();
  bool fail(std::string problem);

  OpenPort openPort_;
  Clock& clock_;
  PortSettings& settings_;
  std::size_t joinLimit_;
  std::unique_ptr<ByteStream> stream_;
  std::unique_ptr<Channel> channel_;  // uses the stream
  std::unique_ptr<Dialect> dialect_;
  std::optional<Listing<Message>> simOutgoing_;  // seen while the received ones were listed
  std::optional<Listing<Message>> phone_;        // as listed in this reading
  std::string stalled_;                          // why this reading has ended; empty: it has not
  std::string simRoom_;
  HandedOverMessages handedOver_;
  std::size_t settled_ = 0;  // of them, as far as reports go
  SentMessages sent_;
  std::vector<Place> removed_;           // since their store was listed
  std::vector<std::string> deliveries_;  // not told yet, the newest first
  int port_ = 0;                         // from which they came
  std::uint8_t reference_ = 0;           // of the next long message
  std::string lastProblem_;
};

}  // namespace handset::at
