#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "handset/handset.h"
#include "handset/simulated/content.h"
#include "handset/simulated/environment.h"
#include "handset/simulated/storage_numbers.h"

namespace handset {

// A handset that exists only as a text file. The file is read anew at every open, so that it can be edited
// in between; what was sent through this object stays in the SIM's outbox behind the file's own messages.
class SimulatedHandset : public Handset {
 public:
  explicit SimulatedHandset(std::unique_ptr<Environment> environment);

  bool open(int port, int baud) override;
  bool init() override;
  void close() override;
  bool offersUnicode() override;
  std::string describe() override;
  std::optional<std::vector<Message>> simReceived() override;
  std::optional<std::vector<Message>> simOutgoing() override;
  std::optional<std::vector<Message>> phoneMessages() override;
  bool send(std::string_view number, std::string_view text) override;
  bool initPhonebook() override;
  std::optional<std::vector<Contact>> simContacts() override;
  std::optional<std::vector<Contact>> phoneContacts() override;

 private:
  std::optional<std::string> readFile();
  void numberSentMessages();
  StorageNumbers fileNumbers() const;  // those that the file's messages in the SIM's store have
  std::vector<Message> messagesIn(Store store, bool (*wanted)(const Message&)) const;
  std::optional<std::vector<Contact>> contactsIn(Store store);
  void takeTime();

  std::unique_ptr<Environment> environment_;
  Content content_;
  std::vector<Message> sent_;  // oldest first; bounded by the storage numbers there are
};

// The time as a handset gives it: yyMMddhhmmss and the zone in quarter hours, two digits; west of Greenwich
// the top bit of the first is set, as it is on the air (four quarters behind: "84", thirty-two: "B2").
std::string handsetTime(const LocalTime& time);

}  // namespace handset
