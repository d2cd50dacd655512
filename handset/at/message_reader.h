#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/channel.h"
#include "handset/at/dialect.h"
#include "handset/at/joined_messages.h"

namespace handset::at {

// How full a store is.
struct Counts {
  int used = 0;
  int all = 0;
};

// Whether what was found is the message that was listed; it may be written differently.
bool sameMessage(const StoredPdu& found, const Place& listed);

// Reads a handset's message stores and removes what lies there. Made for one operation; borrows what it is
// given. What fails leaves its reason in problem().
class MessageReader {
 public:
  MessageReader(Channel& channel, Clock& clock, const Dialect& dialect)
      : channel_{channel}, clock_{clock}, dialect_{dialect} {}

  // All that the store holds, or what came of it when there is a problem() then. Where the handset lists
  // nothing, each place is asked for.
  std::vector<StoredPdu> read(std::string_view store);

  // What lies at one place; nullopt when nothing does or there is a problem().
  std::optional<StoredPdu> readPlace(std::string_view store, int index);

  // Removes the parts of one message, after all of them were read again. False as soon as a place holds
  // anything else than it did, and when the handset keeps what it has said to remove.
  bool remove(std::span<const Place> parts);

  const std::string& problem() const { return problem_; }
  // The handset did not answer; asking on would only take as long again.
  bool stalled() const { return stalled_; }
  // Of the store that was selected last; nullopt when the handset has not told.
  const std::optional<Counts>& counts() const { return counts_; }

 private:
  enum class Found { same, other, unknown };

  bool select(std::string_view store);
  std::vector<StoredPdu> placeByPlace(const std::string& whyNotListed);
  Found look(const Place& part);
  bool removePart(const Place& part);
  bool fail(const std::string& problem);
  bool fail(const Answer& answer);

  Channel& channel_;
  Clock& clock_;
  const Dialect& dialect_;
  std::string store_;
  std::optional<Counts> counts_;
  std::string problem_;
  bool stalled_ = false;
};

}  // namespace handset::at
