#include "dialogs/outgoing.h"

#include <cstdint>
#include <new>
#include <utility>

#include "dialogs/recipients.h"

namespace dialogs {

namespace {

constexpr std::uint32_t notEnoughMemory = 8;  // the system's code for it

// What a step answers, or `otherwise` when memory did not last for it.
template <class Step, class Answer>
Answer attempt(Step step, Answer otherwise) {
  try {
    return step();
  } catch (const std::bad_alloc&) {
    return otherwise;
  }
}

store::WriteResult file(const Filing& filing, const OutgoingSteps& steps) {
  return attempt(
      [&] { return steps.file(filing.folder, filing.message); },
      store::failure({store::FileOutcome::failed, store::FileOperation::write, notEnoughMemory}, {}));
}

}  // namespace

OutgoingResult sendToAll(std::span<const std::string> numbers, const std::string& text,
                         const OutgoingSteps& steps) {
  OutgoingResult result;
  result.total = numbers.size();
  // What is to be filed is ready before anything leaves: a message that was sent is never forgotten.
  std::vector<Filing> filings(numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i)
    filings[i].message = {.Content = text, .Time = steps.now(), .Phone = numbers[i]};
  result.unfiled.reserve(numbers.size());

  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::string& number = numbers[i];
    if (!hasDigit(number)) continue;
    steps.sending(i, numbers.size(), number);
    const bool sent = attempt([&] { return steps.send(number, text); }, false);
    steps.done(i, numbers.size(), number, sent);
    if (sent) ++result.sent;

    Filing& filing = filings[i];
    filing.folder = sent ? store::Folder::PSent : store::Folder::PDraft;
    filing.message.Time = attempt(steps.now, std::move(filing.message.Time));
    store::WriteResult written = file(filing, steps);
    if (written.ok()) {
      ++result.filed;
      continue;
    }
    if (result.unfiled.empty()) result.problem = std::move(written);
    result.unfiled.push_back(std::move(filing));
  }
  return result;
}

store::WriteResult fileAgain(std::vector<Filing>& unfiled, const OutgoingSteps& steps) {
  store::WriteResult problem;
  std::erase_if(unfiled, [&](const Filing& filing) {
    store::WriteResult written = file(filing, steps);
    if (!written.ok() && problem.ok()) problem = std::move(written);
    return written.ok();
  });
  return problem;
}

}  // namespace dialogs
