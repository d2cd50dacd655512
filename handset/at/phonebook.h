#pragma once

#include <optional>
#include <string>
#include <vector>

#include "handset/handset.h"

// The answers of a phonebook, whatever a handset makes of them.
namespace handset::at {

// How a handset writes names while it is asked for them.
enum class CharacterSet { ucs2, gsm, ira };

struct IndexRange {
  int first = 0;
  int last = 0;  // at least `first`

  bool operator==(const IndexRange&) const = default;
};

// The places of a phonebook, from the answer to "AT+CPBR=?".
std::optional<IndexRange> rangeIn(const std::vector<std::string>& lines);

// The places of a phonebook, from the answer to "AT+CPBS?".
std::optional<IndexRange> capacityIn(const std::vector<std::string>& lines);

// The entries in the answer to "AT+CPBR=...", empty ones left out, in their order. `hexNumbers`: the handset
// writes every quoted text in digits, four a character, numbers too.
struct PhonebookEntry {
  int index = 0;
  Contact contact;

  bool operator==(const PhonebookEntry&) const = default;
};
std::vector<PhonebookEntry> entriesIn(const std::vector<std::string>& lines, CharacterSet set,
                                      bool hexNumbers);

}  // namespace handset::at
