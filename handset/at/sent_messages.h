#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "handset/at/pdu.h"

namespace handset::at {

// The messages that were sent since the link was opened and of which no report has come yet.
class SentMessages {
 public:
  // `references` are those that the modem gave to the message's parts.
  void add(std::string number, std::vector<std::uint8_t> references);

  // What a report says of one of them: the number that it was sent to, a tab and what became of it. Empty
  // when it is about none of them, or other parts of the message are still on their way.
  std::string settle(const Pdu& report);

  void clear() { awaited_.clear(); }

 private:
  struct Sent {
    std::string number;
    std::vector<std::uint8_t> references;
  };

  std::vector<Sent> awaited_;
};

}  // namespace handset::at
