#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "handset/at/pdu.h"
#include "handset/handset.h"

namespace handset::at {

// A message as it lay in a store.
struct StoredPdu {
  Pdu pdu = {};
  std::string hex = {};
  std::string store = {};
  int index = -1;            // its place there; -1: not said
  std::uint16_t status = 0;  // as in handset::Message
};

// One message for each text, where the first of its parts was. The parts of a long text have reference,
// total, party and the hour in common. They become one when all are there and the text has at most `limit`
// UTF-16 code units; it is then unread if any part is, the rest is as in part 1. Otherwise each part is a
// message of its own that says which part it is, in the order of the parts. Where a reference was used again
// within the hour and not every part is there as often as the others, nobody knows which go together: they
// stay apart, in the order of the store.
std::vector<Message> joinedMessages(std::span<const StoredPdu> stored, std::size_t limit);

}  // namespace handset::at
