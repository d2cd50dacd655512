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
// written for reads, and -1 less that number for a read that failed after as many. Until open and init have
// both succeeded, reads and send give -1. A read writes as many whole entries as fit, 1000 at most, and
// leaves the rest of the buffer, and the head of a phonebook buffer, as it was.
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

  // Removes a message by an entry that the last read of its list has given. 1: it is gone. 2: it takes more
  // than this entry, and goes with the last of them. 0: it is still there.
  int remove(phonelink::MessageBytes entry);
  // How full the SIM was when it was read; empty when that is not known.
  const std::string& room() const { return room_; }
  // As Handset::nextDelivery().
  std::string delivered();
  // Why the last call that failed did so, in UTF-8; empty when none has since the last open.
  const std::string& problem() const { return problem_; }

  int initPhonebook();
  int contacts(std::span<std::byte> buffer);
  int wideContacts(std::span<std::byte> buffer);

 private:
  // A message that a read has given, with its entries and whether each was asked to be removed. It stays
  // known when the link is closed, until the same list is read again.
  struct Listed {
    Message message;
    std::vector<phonelink::MessageEntry> entries;
    std::vector<bool> unwanted;
  };

  std::vector<phonelink::MessageEntry> entriesOf(const Message& message) const;
  std::string narrowField(const std::string& text, std::size_t capacity) const;
  std::string numberField(const std::string& number, std::size_t capacity) const;
  std::string ellipsis() const;
  std::string textOf(const phonelink::MessageEntry& entry) const;
  bool sameEntry(const phonelink::MessageEntry& left, const phonelink::MessageEntry& right) const;
  int removeEntry(Listed& listed, std::size_t entry);
  template <std::size_t Size, typename Encode>
  int fillMessages(Listing<Message> (Handset::*list)(), std::vector<Listed>& known,
                   std::span<std::byte> buffer, Encode encode);
  template <std::size_t Size, typename Encode>
  int fillContacts(Listing<Contact> (Handset::*list)(), std::span<std::byte> buffer, Encode encode);
  int counted(std::size_t entries, bool complete);
  int answer(bool done, int yes, int no);

  std::unique_ptr<Handset> simulated_;
  std::unique_ptr<Handset> real_;
  std::unique_ptr<text::CodePage> codePage_;
  Handset* opened_ = nullptr;  // one of the two, while it is open
  std::vector<Listed> received_, outgoing_, phone_;
  std::string problem_;
  std::string room_;
  bool ready_ = false;
  bool unicode_ = false;
};

}  // namespace handset
