#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "phonelink/phone_link.h"
#include "store/folders.h"
#include "store/sms_record.h"
#include "store/write_result.h"

// Sending one text to several numbers and filing what became of it.
namespace dialogs {

// A message that has been sent, or could not be, and belongs into a folder.
struct Filing {
  store::Folder folder;  // PSent or PDraft
  store::SmsRecord message;
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

struct OutgoingResult {
  std::size_t total = 0;  // numbers given, whether they could be sent to or not
  std::size_t sent = 0;
  std::size_t filed = 0;
  std::vector<Filing> unfiled;   // what is not in its file; nowhere else is it kept
  store::WriteResult problem{};  // why the first of them is not
};

// Sends the text to every number in order, as 16-bit characters when it is wide. A number without a digit is
// skipped. What was sent is filed in PSent, what could not be sent in PDraft. An exception comes before the
// first is sent; lack of memory behind that counts as a failure of the step.
OutgoingResult sendToAll(std::span<const std::string> numbers, const std::string& text, bool wide,
                         const Outgoing& outgoing);

// Tries again to file what could not be filed; what still cannot stays in the list. The first problem, or a
// result that is ok.
store::WriteResult fileAgain(std::vector<Filing>& unfiled, store::Folders& folders);

}  // namespace dialogs
