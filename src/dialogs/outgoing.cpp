#include "dialogs/outgoing.h"

#include <new>
#include <utility>

#include "dialogs/recipients.h"

namespace dialogs {
namespace {

// What a step answers, or `otherwise` when memory did not last for it.
template <class Step, class Answer>
Answer attempt(const Step& step, Answer otherwise) {
  try {
    return step();
  } catch (const std::bad_alloc&) {
    return otherwise;
  }
}

}  // namespace

OutgoingResult sendToAll(std::span<const std::string> numbers, const std::string& text, bool wide,
                         const Outgoing& outgoing) {
  OutgoingResult result;
  result.total = numbers.size();
  // What is to be filed is ready before anything leaves: a message that was sent is never forgotten.
  std::vector<Filing> filings(numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i)
    filings[i].message = {.Content = text, .Time = outgoing.now(), .Phone = numbers[i]};
  result.unfiled.reserve(numbers.size());

  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::string& number = numbers[i];
    if (!hasDigit(number)) continue;
    outgoing.progress(Outgoing::Step::sending, i, numbers.size(), number);
    const bool sent = attempt([&] { return outgoing.link.send(number, text, wide); }, false);
    outgoing.progress(sent ? Outgoing::Step::sent : Outgoing::Step::notSent, i, numbers.size(), number);
    if (sent) ++result.sent;

    Filing& filing = filings[i];
    filing.folder = sent ? store::Folder::PSent : store::Folder::PDraft;
    filing.message.Time = attempt(outgoing.now, std::move(filing.message.Time));
    store::WriteResult written = outgoing.folders.append(filing.folder, filing.message);
    if (written.ok()) {
      ++result.filed;
      continue;
    }
    if (result.unfiled.empty()) result.problem = std::move(written);
    result.unfiled.push_back(std::move(filing));
  }
  return result;
}

store::WriteResult fileAgain(std::vector<Filing>& unfiled, store::Folders& folders) {
  store::WriteResult problem;
  std::erase_if(unfiled, [&](const Filing& filing) {
    store::WriteResult written = folders.append(filing.folder, filing.message);
    if (!written.ok() && problem.ok()) problem = std::move(written);
    return written.ok();
  });
  return problem;
}

}  // namespace dialogs
