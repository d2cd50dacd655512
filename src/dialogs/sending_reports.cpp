#include "dialogs/sending_reports.h"

#include <new>

#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "store/time_stamp.h"

namespace dialogs {
namespace {

using framework::formatText;
using framework::loadString;
using phonelink::SendResult;

std::string reasonOf(const Delivery& delivery) {
  switch (delivery.result) {
    case SendResult::notANumber:
      return loadString(IDS_NOT_A_NUMBER);
    case SendResult::numberTooLong:
      return loadString(IDS_NUMBER_TOO_LONG);
    case SendResult::textNotCarried:
      return loadString(IDS_TEXT_NOT_CARRIED);
    default:
      return delivery.reason.empty() ? loadString(IDS_REFUSED) : delivery.reason;
  }
}

}  // namespace

Outgoing outgoingWith(const ComposeServices& services) {
  const auto show = [showStatus = services.showStatus](Outgoing::Step step, std::size_t index,
                                                       std::size_t total, const std::string& number) {
    const UINT pattern = step == Outgoing::Step::sending ? IDS_SENDING
                         : step == Outgoing::Step::sent  ? IDS_SENT_TO
                                                         : IDS_NOT_SENT_TO;
    try {
      showStatus(formatText(loadString(pattern), {number, std::to_string(index + 1), std::to_string(total)}));
    } catch (const std::bad_alloc&) {
      // Nobody misses it who still gets the message sent.
    }
  };
  return {services.link, services.folders, [] { return store::timeStamp(framework::localTime()); }, show};
}

std::string outcomeText(const Delivery& delivery) {
  if (delivery.sent())
    return loadString(delivery.filed ? IDS_OUTCOME_SENT : IDS_OUTCOME_NOT_FILED) +
           (delivery.report.empty() ? "" : " ") + delivery.report;
  return formatText(loadString(IDS_OUTCOME_NOT_SENT), {reasonOf(delivery)});
}

std::string notSentText(const Sending& sending) {
  std::string numbers;
  for (const Delivery& delivery : sending.deliveries) {
    if (delivery.sent() || delivery.message.Phone.empty()) continue;
    if (!numbers.empty()) numbers += ", ";
    numbers += formatText(loadString(IDS_NUMBER_NOT_REACHED), {delivery.message.Phone, reasonOf(delivery)});
  }
  if (numbers.empty()) return {};
  return formatText(loadString(IDS_SEND_SUMMARY),
                    {std::to_string(sending.sent()), std::to_string(sending.deliveries.size()), numbers});
}

}  // namespace dialogs
