#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/input.h"
#include "handset/library.h"
#include "handset/simulated/content.h"
#include "handset/simulated/simulated_handset.h"
#include "phonelink/entry_layouts.h"

// What must hold for a simulated handset whose file has any bytes, seen through the functions of the library.
namespace fuzz {

// The file, a fixed time and no waiting.
class InputEnvironment : public handset::Environment {
 public:
  explicit InputEnvironment(std::string_view file) : file_{file} {}
  std::optional<std::string> readContent(std::size_t limit) override {
    return std::string{file_.substr(0, limit)};
  }
  handset::LocalTime now() override { return {2026, 11, 21, 17, 15, 4, 4}; }
  void pause(int milliseconds) override {
    require(milliseconds > 0 && milliseconds <= handset::maxContentDelay);
  }
  void report(const std::string& line) override { require(line.starts_with("line ")); }

 private:
  std::string_view file_;
};

class AsciiPage : public handset::CodePage {
 public:
  std::string encode(std::u16string_view character) const override {
    return character[0] < 0x80 ? std::string(1, static_cast<char>(character[0])) : std::string{};
  }
  std::u16string decode(std::string_view bytes) const override {
    std::u16string units;
    for (const char c : bytes)
      units.push_back(static_cast<unsigned char>(c) < 0x80 ? char16_t(c) : u'\xFFFD');
    return units;
  }
};

// Room for a few entries and not a byte more.
inline constexpr std::size_t fewEntries = 5;

template <std::size_t Size>
void requireEntries(int (handset::Library::*read)(std::span<std::byte>), handset::Library& library,
                    std::size_t head = 0) {
  const auto buffer = std::make_unique<std::array<std::byte, fewEntries * Size>>();
  const int count = (library.*read)(std::span{*buffer}.subspan(0, head + (fewEntries - 1) * Size + Size / 2));
  require(count >= 0 && static_cast<std::size_t>(count) < fewEntries);
}

inline void contents(std::string_view input) {
  const handset::Content content = handset::parseContent(input);
  require(content.messages.size() <= handset::maxContentItems);
  require(content.contacts.size() <= handset::maxContentItems);
  require(content.problems.size() <= handset::maxContentProblems);
  require(content.settings.delay >= 0 && content.settings.delay <= handset::maxContentDelay);
  const auto lines = std::ranges::count(input, '\n') + 1;
  for (const handset::Problem& problem : content.problems)
    require(problem.line >= 1 && problem.line <= static_cast<std::size_t>(lines));
  for (const handset::StoredMessage& stored : content.messages)
    require(stored.message.text.size() <= input.size());

  const auto simulated = [](std::string_view file) {
    return std::make_unique<handset::SimulatedHandset>(std::make_unique<InputEnvironment>(file));
  };
  handset::Library library{simulated(input), simulated({}), std::make_unique<AsciiPage>()};
  require((library.setUnicode(1) != 0) == content.settings.unicode);
  require((library.open(handset::simulatedPort, 115200) != 0) == content.settings.open);
  require((library.init() != 0) == (content.settings.open && content.settings.init));
  requireEntries<phonelink::messageEntrySize>(&handset::Library::receivedMessages, library);
  requireEntries<phonelink::handsetEntrySize>(&handset::Library::handsetMessages, library);
  // A message to the first of the numbers that cannot be reached, or to the beginning of the file.
  phonelink::MessageEntry entry;
  const std::vector<std::string>& unreachable = content.settings.unreachable;
  entry.phone =
      unreachable.empty() ? std::string{input.substr(0, phonelink::phoneCapacity)} : unreachable.front();
  std::array<std::byte, phonelink::messageEntrySize> bytes;
  phonelink::encodeMessage(entry, bytes);
  const bool sent = library.send(bytes) == 1;
  require(!sent || (content.settings.open && content.settings.init));
  if (!unreachable.empty() && unreachable.front().size() <= phonelink::phoneCapacity)
    require(!sent || unreachable.front().find('\0') != std::string::npos);
  requireEntries<phonelink::messageEntrySize>(&handset::Library::outgoingMessages, library);
  library.initPhonebook();
  requireEntries<phonelink::contactEntrySize>(&handset::Library::contacts, library,
                                              phonelink::contactHeadSize);
  requireEntries<phonelink::wideContactEntrySize>(&handset::Library::wideContacts, library,
                                                  phonelink::contactHeadSize);
}

}  // namespace fuzz
