#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "handset/at/channel.h"
#include "handset/at/submit.h"

namespace handset::at {

// Sends the parts of one message. Made for one operation; borrows the channel. What fails leaves its reason
// in problem().
class MessageSender {
 public:
  explicit MessageSender(Channel& channel) : channel_{channel} {}

  // The reference that the modem has given the part; nullopt when it was not sent, or nobody knows.
  std::optional<std::uint8_t> send(const SubmitPdu& part);

  const std::string& problem() const { return problem_; }

 private:
  Answer tried(const SubmitPdu& part);
  bool renewServiceCentre();

  Channel& channel_;
  std::string problem_;
};

}  // namespace handset::at
