#include "dialogs/outgoing.h"

#include <utility>

#include "dialogs/recipients.h"

namespace dialogs {

OutgoingResult sendToAll(std::span<const std::string> numbers, const std::string& text,
                         const OutgoingSteps& steps) {
  OutgoingResult result;
  result.total = numbers.size();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::string& number = numbers[i];
    if (!hasDigit(number)) continue;
    if (steps.sending) steps.sending(i, numbers.size(), number);
    const bool sent = steps.send(number, text);
    if (steps.done) steps.done(i, numbers.size(), number, sent);
    if (sent) ++result.sent;

    Filing filing{sent ? store::Folder::PSent : store::Folder::PDraft, {}};
    filing.message.Content = text;
    filing.message.Phone = number;
    filing.message.Time = steps.now();
    const store::WriteResult written = steps.file(filing.folder, filing.message);
    if (written.ok()) {
      ++result.filed;
      continue;
    }
    if (result.unfiled.empty()) result.problem = written;
    result.unfiled.push_back(std::move(filing));
  }
  return result;
}

store::WriteResult fileAgain(std::vector<Filing>& unfiled, const OutgoingSteps& steps) {
  store::WriteResult problem;
  std::vector<Filing> left;
  for (Filing& filing : unfiled) {
    const store::WriteResult written = steps.file(filing.folder, filing.message);
    if (written.ok()) continue;
    if (left.empty()) problem = written;
    left.push_back(std::move(filing));
  }
  unfiled = std::move(left);
  return problem;
}

}  // namespace dialogs
