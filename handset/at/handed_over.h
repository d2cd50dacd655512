#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "handset/at/channel.h"
#include "handset/handset.h"

namespace handset::at {

// The messages that a handset has handed over unasked. It does not keep them, so they stay here.
class HandedOverMessages {
 public:
  // Takes what has come over the channel, each once.
  void take(Channel& channel);

  // Appends those from the given one on that are not among the messages yet, long ones joined up to `limit`.
  void appendTo(std::vector<Message>& messages, std::size_t from, std::size_t limit) const;

  // Forgets those that were removed where the handset had stored them all the same.
  void forget(std::span<const Place> removed);

  const std::vector<HandedOver>& all() const { return all_; }
  void clear() { all_.clear(); }

 private:
  std::vector<HandedOver> all_;
};

}  // namespace handset::at
