#include "dialogs/outgoing.h"

#include <algorithm>
#include <new>
#include <utility>

#include "dialogs/recipients.h"

namespace dialogs {
namespace {

using phonelink::SendResult;

bool isReceiver(const Delivery& delivery) {
  return hasDigit(delivery.message.Phone);
}

bool isUnfiled(const Delivery& delivery) {
  return isReceiver(delivery) && !delivery.filed;
}

bool isUnsent(const Delivery& delivery) {
  return isReceiver(delivery) && !delivery.sent();
}

std::size_t count(const Sending& sending, auto which) {
  return static_cast<std::size_t>(std::ranges::count_if(sending.deliveries, which));
}

// Calls `change` for those and keeps the first problem.
template <class Which, class Change>
store::WriteResult forEach(Sending& sending, Which which, Change change) {
  store::WriteResult problem;
  for (Delivery& delivery : sending.deliveries) {
    if (!which(delivery)) continue;
    store::WriteResult written = change(delivery);
    if (!written.ok() && problem.ok()) problem = std::move(written);
  }
  return problem;
}

void handOver(const Sending& sending, Delivery& delivery, const Outgoing& outgoing) {
  const std::string& number = delivery.message.Phone;
  const auto report = [&](Outgoing::Step step) {
    outgoing.progress(step, static_cast<std::size_t>(&delivery - sending.deliveries.data()),
                      sending.deliveries.size(), number);
  };
  report(Outgoing::Step::sending);
  delivery.result = SendResult::refused;
  delivery.reason.clear();
  try {
    delivery.result = outgoing.link.send(number, sending.text, sending.wide);
    if (delivery.result == SendResult::refused) delivery.reason = outgoing.link.problem();
  } catch (const std::bad_alloc&) {
    // Unless it has been sent, it counts as refused.
  }
  report(delivery.sent() ? Outgoing::Step::sent : Outgoing::Step::notSent);
}

void stamp(store::SmsRecord& message, const Outgoing& outgoing) {
  try {
    message.Time = outgoing.now();
  } catch (const std::bad_alloc&) {
    // The time at which it was made ready will do.
  }
}

store::WriteResult file(Delivery& delivery, store::Folders& folders) {
  store::WriteResult written =
      folders.append(delivery.sent() ? store::Folder::PSent : store::Folder::PDraft, delivery.message);
  delivery.filed = written.ok();
  return written;
}

}  // namespace

std::size_t Sending::sent() const {
  return count(*this, [](const Delivery& delivery) { return delivery.sent(); });
}

std::size_t Sending::filed() const {
  return count(*this, [](const Delivery& delivery) { return delivery.filed; });
}

std::size_t Sending::sentUnfiled() const {
  return count(*this, [](const Delivery& delivery) { return delivery.sent() && !delivery.filed; });
}

std::size_t Sending::unfiled() const {
  return count(*this, isUnfiled);
}

bool Sending::takeReport(const phonelink::PhoneLink::Delivered& delivered) {
  // Of two to one number the first that has no word yet. What was still on its way gets a second word.
  const auto find = [&](bool silent) {
    return std::ranges::find_if(deliveries, [&, silent](const Delivery& delivery) {
      return delivery.sent() && delivery.report.empty() == silent &&
             delivery.message.Phone == delivered.number;
    });
  };
  auto found = find(true);
  if (found == deliveries.end()) found = find(false);
  if (found == deliveries.end()) return false;
  found->report = delivered.words;
  return true;
}

bool Sending::anyLeft() const {
  return count(*this, [](const Delivery& delivery) {
           return isUnsent(delivery) || isUnfiled(delivery) || delivery.draft;
         }) > 0;
}

store::WriteResult sendToAll(std::span<const std::string> numbers, const std::string& text, bool wide,
                             const Outgoing& outgoing, Sending& last) {
  // What is to be filed is ready before anything leaves: a message that was sent is never forgotten.
  Sending prepared{text, wide, std::vector<Delivery>(numbers.size())};
  for (std::size_t i = 0; i < numbers.size(); ++i)
    prepared.deliveries[i].message = {.Content = text, .Time = outgoing.now(), .Phone = numbers[i]};
  last = std::move(prepared);
  return forEach(last, isReceiver, [&](Delivery& delivery) {
    handOver(last, delivery, outgoing);
    stamp(delivery.message, outgoing);
    return file(delivery, outgoing.folders);
  });
}

store::WriteResult fileAgain(Sending& sending, store::Folders& folders) {
  return forEach(sending, isUnfiled, [&](Delivery& delivery) { return file(delivery, folders); });
}

store::WriteResult sendAgain(Sending& sending, const Outgoing& outgoing) {
  // As above: the copies of what may be sent are ready first.
  std::vector<store::SmsRecord> copies;
  for (const Delivery& delivery : sending.deliveries) {
    copies.push_back(delivery.message);
    if (isUnsent(delivery)) copies.back().Time = outgoing.now();
  }
  const auto unsentOrUnfiled = [](const Delivery& delivery) {
    return isUnsent(delivery) || (delivery.sent() && !delivery.filed);
  };
  return forEach(sending, unsentOrUnfiled, [&](Delivery& delivery) {
    if (!delivery.sent()) {
      handOver(sending, delivery, outgoing);
      if (!delivery.sent()) return store::WriteResult{};
      if (std::exchange(delivery.filed, false)) delivery.draft = std::move(delivery.message);
      delivery.message = std::move(copies[static_cast<std::size_t>(&delivery - sending.deliveries.data())]);
      stamp(delivery.message, outgoing);
    }
    return file(delivery, outgoing.folders);
  });
}

store::WriteResult takeOutDrafts(Sending& sending, store::Folders& folders) {
  if (sending.replaced && sending.unfiled() == 0) {
    const store::WriteResult erased = folders.erase(store::Folder::PDraft, *sending.replaced);
    if (!erased.ok()) return erased;
    sending.replaced.reset();
  }
  const auto isOver = [](const Delivery& delivery) { return delivery.filed && delivery.draft; };
  return forEach(sending, isOver, [&](Delivery& delivery) {
    store::WriteResult erased = folders.erase(store::Folder::PDraft, *delivery.draft);
    if (erased.ok()) delivery.draft.reset();
    return erased;
  });
}

}  // namespace dialogs
