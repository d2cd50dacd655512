#include "handset/at/message_sender.h"

#include "handset/at/dialect.h"
#include "handset/at/fields.h"

namespace handset::at {
namespace {

constexpr int noServiceCentre = 330;

}  // namespace

Answer MessageSender::tried(const SubmitPdu& part) {
  return channel_.commandWithText("AT+CMGS=" + std::to_string(part.octets), part.hex,
                                  "+CMGS:", promptDeadline, sendDeadline);
}

// The service centre that the SIM names, written back, is what some handsets need to find it.
bool MessageSender::renewServiceCentre() {
  const Answer answer = channel_.command("AT+CSCA?", "+CSCA:", simDeadline);
  const std::optional<std::string_view> value = valueOf(answer.lines, "+CSCA:");
  if (!answer.ok() || !value || value->find_first_not_of("\"+,*#0123456789ABCDEFabcdef") != value->npos)
    return false;
  if (fieldsOf(*value).front().text.empty()) return false;
  return channel_.command("AT+CSCA=" + std::string{*value}, {}, simDeadline).ok();
}

std::optional<std::uint8_t> MessageSender::send(const SubmitPdu& part) {
  Answer answer = tried(part);
  // Without a service centre nothing has gone out.
  if (answer.outcome == Answer::Outcome::refused && answer.result.number == noServiceCentre &&
      renewServiceCentre())
    answer = tried(part);
  // Without a reference it is not known whether it went out; sending it again could send it twice.
  const std::optional<std::string_view> value = valueOf(answer.lines, "+CMGS:");
  if (answer.ok() && value)
    return static_cast<std::uint8_t>(numberOf(fieldsOf(*value).front().text).value_or(0));
  problem_ = answer.ok() ? "the handset does not confirm the message" : problemOf(answer);
  return std::nullopt;
}

}  // namespace handset::at
