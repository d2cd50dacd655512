#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace handset::at {

// One message on its way out. `octets` is its length as the modem wants to know it before: without the
// service centre's part.
struct SubmitPdu {
  std::string hex;
  std::size_t octets = 0;

  bool operator==(const SubmitPdu&) const = default;
};

// A number as it is dialled, what only makes it readable (spaces, hyphens, dots, parentheses) taken out.
// nullopt when it is none: 1 to 20 digits, "*" and "#", a "+" before them at most.
std::optional<std::string> dialledNumber(std::string_view number);

// The messages that carry a UTF-8 text, in order: one where it fits, else parts that share `reference`.
// Characters of the default alphabet go in it, any other turns the text into UCS-2; `report` asks for word of
// their delivery. nullopt when the number is none or the text takes more than 255 parts.
std::optional<std::vector<SubmitPdu>> submitPdus(std::string_view number, std::string_view text,
                                                 std::uint16_t reference, bool report = false);

}  // namespace handset::at
