#include "handset/at/sent_messages.h"

#include <algorithm>
#include <utility>

namespace handset::at {
namespace {

std::string digitsOf(const std::string& number) {
  std::string digits;
  std::ranges::copy_if(number, std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
  return digits;
}

// A report may name the country where the sender has not.
bool sameNumber(const std::string& left, const std::string& right) {
  constexpr std::size_t enough = 7;
  const std::string one = digitsOf(left);
  const std::string other = digitsOf(right);
  if (one.size() < enough || other.size() < enough) return one == other;
  return one.substr(one.size() - enough) == other.substr(other.size() - enough);
}

}  // namespace

void SentMessages::add(std::string number, std::vector<std::uint8_t> references) {
  awaited_.push_back({std::move(number), std::move(references)});
}

std::string SentMessages::settle(const Pdu& report) {
  if (report.kind != PduKind::statusReport) return {};
  const auto sent = std::ranges::find_if(awaited_, [&report](const Sent& one) {
    return std::ranges::find(one.references, report.reference) != one.references.end() &&
           sameNumber(one.number, report.number);
  });
  if (sent == awaited_.end()) return {};
  std::string words = sent->number + '\t' + textOf(report, {});
  if (report.reportStatus < deliveredBelow) {
    std::erase(sent->references, report.reference);
    if (!sent->references.empty()) return {};
  }
  // The network goes on trying in between.
  if (report.reportStatus < deliveredBelow || report.reportStatus >= triedBelow) awaited_.erase(sent);
  return words;
}

}  // namespace handset::at
