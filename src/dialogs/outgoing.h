#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "phonelink/phone_link.h"
#include "store/folders.h"
#include "store/sms_record.h"
#include "store/write_result.h"

// Sending one text to several numbers and filing what became of it.
namespace dialogs {

// What became of the message to one receiver. One without a digit is passed over: neither sent nor filed.
struct Delivery {
  store::SmsRecord message;  // what is filed of it; its Phone is the receiver
  phonelink::SendResult result = phonelink::SendResult::notANumber;
  std::string reason;                     // the library's own words for a refusal; may be empty
  std::string report;                     // its words for what became of it on its way; may be empty
  bool filed = false;                     // in PSent when it was sent, else in PDraft
  std::optional<store::SmsRecord> draft;  // what of a message sent later is still in PDraft

  bool sent() const { return result == phonelink::SendResult::sent; }
};

// A text and what became of it. What of it is not filed is kept nowhere else.
struct Sending {
  std::string text;
  bool wide = false;  // as 16-bit characters
  std::vector<Delivery> deliveries;
  std::optional<store::SmsRecord> replaced{};  // the draft that leaves PDraft when all of this is filed

  std::size_t sent() const;
  std::size_t filed() const;
  // Those that are still to be filed, sent ones or all.
  std::size_t sentUnfiled() const;
  std::size_t unfiled() const;
  // Takes word of what became of a message on its way; false when none was sent to that number.
  bool takeReport(const phonelink::PhoneLink::Delivered& delivered);
  // Whether sendAgain or takeOutDrafts has anything to do.
  bool anyLeft() const;
};

// What sending works with.
struct Outgoing {
  phonelink::PhoneLink& link;
  store::Folders& folders;
  std::function<std::string()> now;  // the time text of a message filed now

  enum class Step { sending, sent, notSent };
  // Before each number (number `index` of `total`, from 0) and after it; must not throw.
  std::function<void(Step step, std::size_t index, std::size_t total, const std::string& number)> progress;
};

// All of these answer the first problem with a file, or a result that is ok.

// Sends the text to every number in order and puts into `last` what becomes of it. What was sent is filed in
// PSent, what could not be sent in PDraft. An exception comes before the first is sent, and `last` is then as
// it was; lack of memory behind that counts as a failure of the step.
store::WriteResult sendToAll(std::span<const std::string> numbers, const std::string& text, bool wide,
                             const Outgoing& outgoing, Sending& last);

// Tries again to file what could not be filed.
store::WriteResult fileAgain(Sending& sending, store::Folders& folders);

// Files what was sent and is not filed yet, and sends what was not. What is sent now is filed in PSent; where
// it fails, its draft stays and nothing is filed. Exceptions are those of sendToAll.
store::WriteResult sendAgain(Sending& sending, const Outgoing& outgoing);

// Takes the drafts of what has been sent and filed since out of PDraft, whose table must be as its file is.
store::WriteResult takeOutDrafts(Sending& sending, store::Folders& folders);

}  // namespace dialogs
