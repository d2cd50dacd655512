#include "handset/at/phonebook.h"

#include <algorithm>

#include "handset/at/alphabet.h"
#include "handset/at/fields.h"
#include "handset/at/hex.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

constexpr std::string_view prefix = "+CPBR:";
constexpr std::size_t longestEntry = 4096;
constexpr int internationalType = 145;

bool isDialled(char16_t unit) {
  return unit < 0x80 && std::u16string_view{u"0123456789+*#pPwW,;"}.find(unit) != std::u16string_view::npos;
}

// Bytes of a handset that does not keep to its character set: UTF-8 if they can be, else Latin-1.
std::string foreignText(std::string_view bytes) {
  const std::u16string units = text::utf16FromUtf8(bytes);
  if (units.find(u'\xFFFD') == units.npos) return std::string{bytes};
  std::u16string latin;
  for (const char byte : bytes) latin += static_cast<unsigned char>(byte);
  return text::utf8FromUtf16(latin);
}

std::string nameOf(std::string_view raw, CharacterSet set) {
  const bool foreign = std::ranges::any_of(raw, [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
  if (set == CharacterSet::gsm && !foreign) {
    const Septets septets{raw.begin(), raw.end()};  // "@" is a NUL here
    return text::utf8FromUtf16(textFromSeptets(septets));
  }
  raw = raw.substr(0, raw.find('\0'));
  if (const std::optional<std::u16string> units = unitsFromHex(raw); units && set == CharacterSet::ucs2)
    return text::utf8FromUtf16(units->substr(0, units->find(u'\0')));
  return foreignText(raw);
}

std::string numberIn(std::string_view raw, CharacterSet set, bool hexNumbers) {
  // Three digits that happen to look like one number in code are no proof.
  constexpr std::size_t shortestProof = 12;
  if (set == CharacterSet::ucs2 && (hexNumbers || raw.size() >= shortestProof)) {
    const std::optional<std::u16string> units = unitsFromHex(raw);
    if (units && std::ranges::all_of(*units, isDialled)) return text::utf8FromUtf16(*units);
  }
  std::string number;
  for (const char c : raw)
    if (c != '\0') number += c;
  return foreignText(number);
}

// Puts the lines of each entry together again: a quote that is open at a line's end goes on in the next.
std::vector<std::string> wholeEntries(const std::vector<std::string>& lines) {
  std::vector<std::string> entries;
  bool open = false;
  for (const std::string& line : lines) {
    if (line.starts_with(prefix)) {
      entries.push_back(line);
    } else if (!open || entries.back().size() + line.size() > longestEntry) {
      continue;
    } else {
      entries.back() += line;
    }
    open = std::ranges::count(entries.back(), '"') % 2 != 0;
  }
  return entries;
}

// The numbers in a text, whatever stands between them; -1 for one that is too large.
std::vector<int> numbersIn(std::string_view text) {
  constexpr std::string_view digits = "0123456789";
  std::vector<int> numbers;
  for (std::size_t at = text.find_first_of(digits); at != text.npos; at = text.find_first_of(digits, at)) {
    const std::size_t end = std::min(text.find_first_not_of(digits, at), text.size());
    numbers.push_back(numberOf(text.substr(at, end - at)).value_or(-1));
    at = end;
  }
  return numbers;
}

}  // namespace

std::optional<IndexRange> rangeIn(const std::vector<std::string>& lines) {
  const std::optional<std::string_view> value = valueOf(lines, prefix);
  if (!value) return std::nullopt;
  const std::vector<int> numbers = numbersIn(firstGroupOf(*value));
  if (numbers.size() < 2 || numbers[0] < 0 || numbers[1] < numbers[0]) return std::nullopt;
  return IndexRange{numbers[0], numbers[1]};
}

std::optional<IndexRange> capacityIn(const std::vector<std::string>& lines) {
  const std::optional<std::string_view> value = valueOf(lines, "+CPBS:");
  if (!value) return std::nullopt;
  const std::vector<Field> fields = fieldsOf(*value);  // store, used, all
  const int places = fields.size() < 3 ? 0 : numberOf(fields[2].text).value_or(0);
  if (places < 1) return std::nullopt;
  return IndexRange{1, places};
}

std::vector<PhonebookEntry> entriesIn(const std::vector<std::string>& lines, CharacterSet set,
                                      bool hexNumbers) {
  std::vector<PhonebookEntry> entries;
  for (const std::string& whole : wholeEntries(lines)) {
    const std::vector<Field> fields = fieldsOf(std::string_view{whole}.substr(prefix.size()));
    const auto text = [&fields](std::size_t at) {
      return at < fields.size() ? fields[at].text : std::string_view{};
    };
    PhonebookEntry entry;
    entry.index = numberOf(text(0)).value_or(0);
    entry.contact.number = numberIn(text(1), set, hexNumbers);
    entry.contact.name = nameOf(text(3), set);
    std::string& number = entry.contact.number;
    if (numberOf(text(2)) == internationalType && !number.empty() && number.front() != '+')
      number.insert(number.begin(), '+');
    if (!number.empty() || !entry.contact.name.empty()) entries.push_back(std::move(entry));
  }
  return entries;
}

}  // namespace handset::at
