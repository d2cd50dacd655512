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
// in between; what was sent through this object stays in the SIM's outbox behind the file's own messages, and
// what was removed stays away.
class SimulatedHandset : public Handset {
 public:
  explicit SimulatedHandset(std::unique_ptr<Environment> environment);

  bool open(int port, int baud) override;
  bool init() override;
  void close() override;
  bool offersUnicode() override;
  std::string describe() override;
  Listing<Message> simReceived() override;
  Listing<Message> simOutgoing() override;
  Listing<Message> phoneMessages() override;
  bool send(std::string_view number, std::string_view text) override;
  // For as long as this object lives; the file keeps its message.
  bool remove(const Message& message) override;
  std::string simRoom() override { return {}; }
  std::string nextDelivery() override { return {}; }
  bool initPhonebook() override;
  Listing<Contact> simContacts() override;
  Listing<Contact> phoneContacts() override;
  const std::string& lastProblem() const override { return problem_; }

 private:
  std::optional<std::string> readFile();
  void numberSentMessages();
  StorageNumbers fileNumbers() const;  // those that the file's messages in the SIM's store have
  std::vector<Message> messagesIn(Store store, bool (*wanted)(const Message&)) const;
  bool takeOut(const StoredMessage& message);
  bool fail(std::string problem);
  Listing<Contact> contactsIn(Store store);
  void takeTime();

  std::unique_ptr<Environment> environment_;
  Content content_;
  std::vector<StoredMessage> removed_;
  std::string problem_;
  std::vector<Message> sent_;  // oldest first; bounded by the storage numbers there are
};

// The time as a handset gives it: yyMMddhhmmss and the zone in quarter hours, two digits; west of Greenwich
// the top bit of the first is set, as it is on the air (four quarters behind: "84", thirty-two: "B2").
std::string handsetTime(const LocalTime& time);

}  // namespace handset
