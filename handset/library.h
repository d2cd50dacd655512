#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "handset/handset.h"
#include "phonelink/entry_layouts.h"
#include "text/code_page.h"

namespace handset {

// The port at which the simulated handset answers.
inline constexpr int simulatedPort = 0;

// The operations behind the exported functions, on the caller's raw buffers. One per loaded library; used by
// one thread at a time. The simulated port opens one handset, every other port the real one. Results are
// those of the exported functions: nonzero for success of open, init and initPhonebook, the number of entries
// written for reads. Until open and init have both succeeded, reads give 0 and send gives -1. A read writes
// as many whole entries as fit, 1000 at most, and leaves the rest of the buffer, and the head of a phonebook
// buffer, as it was.
class Library {
 public:
  Library(std::unique_ptr<Handset> simulated, std::unique_ptr<Handset> real,
          std::unique_ptr<text::CodePage> codePage);

  int open(int port, int baud);
  int init();
  void close();

  // Asks for 16-bit texts, or ends them. Nonzero when texts are 16-bit from now on: an entry whose coding
  // is 8 then carries UTF-16LE, both ways, and every text that the code page cannot hold is given so.
  int setUnicode(int on);

  // Writes who the open handset is, ended by a NUL within the buffer; the length, 0 when there is nobody.
  int describe(std::span<char> text);

  int receivedMessages(std::span<std::byte> entries);
  int outgoingMessages(std::span<std::byte> entries);
  int handsetMessages(std::span<std::byte> entries);

  // 1 when sent, -1 when not.
  int send(phonelink::MessageBytes entry);

  int initPhonebook();
  int contacts(std::span<std::byte> buffer);
  int wideContacts(std::span<std::byte> buffer);

 private:
  std::vector<phonelink::MessageEntry> entriesOf(const Message& message) const;
  std::string narrowField(const std::string& text, std::size_t capacity) const;
  template <std::size_t Size, typename Encode>
  int fillMessages(const std::optional<std::vector<Message>>& messages, std::span<std::byte> buffer,
                   Encode encode) const;

  std::unique_ptr<Handset> simulated_;
  std::unique_ptr<Handset> real_;
  std::unique_ptr<text::CodePage> codePage_;
  Handset* opened_ = nullptr;  // one of the two, while it is open
  bool ready_ = false;
  bool unicode_ = false;
};

}  // namespace handset
