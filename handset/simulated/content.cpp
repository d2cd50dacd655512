#include "handset/simulated/content.h"

#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "handset/simulated/storage_numbers.h"
#include "phonelink/entry_layouts.h"
#include "text/plain.h"
#include "text/unicode.h"

namespace handset {
namespace {

using text::trimmed;

constexpr const char* noSuchKey = "no such key in this section";

enum class Section { none, unknown, settings, message, contact };

struct SectionName {
  std::string_view name;
  Section section;
};

constexpr std::array sectionNames{SectionName{"settings", Section::settings},
                                  SectionName{"message", Section::message},
                                  SectionName{"contact", Section::contact}};

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, Number least, Number most) {
  Number value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc{} || stop != end || value < least || value > most) return std::nullopt;
  return value;
}

std::optional<std::uint16_t> statusOf(std::string_view value) {
  if (value == "received") return phonelink::statusReceivedRead;
  if (value == "unread") return phonelink::statusReceivedUnread;
  if (value == "outgoing") return phonelink::statusOutgoing;
  return wholeNumber<std::uint16_t>(value, 0, std::numeric_limits<std::uint16_t>::max());
}

// Reads a file line by line into a Content. Lives for one call of parseContent().
class Parser {
 public:
  explicit Parser(bool settingsOnly) : settingsOnly_(settingsOnly) {}
  Content parse(std::string_view file);

 private:
  void readLine(std::string_view line);
  void startSection(std::string_view name);
  void readValue(std::string_view key, std::string_view value);
  void readSetting(std::string_view key, std::string_view value);
  void readMessage(std::string_view key, std::string_view value);
  void readContact(std::string_view key, std::string_view value);
  void readSwitch(bool& target, std::string_view value);
  void readStore(Store& target, std::string_view value);
  void readField(std::string& target, std::string_view value, std::size_t capacity);
  std::string unescaped(std::string_view value);
  void giveNumbers();
  void report(std::string what);

  const bool settingsOnly_;  // the other sections are passed over
  Content content_;
  Section section_ = Section::none;
  std::size_t line_ = 0;
  std::vector<bool> numbered_;  // per message: the file names its storage number
};

Content Parser::parse(std::string_view file) {
  const bool tooLong = file.size() > maxContentSize;
  if (tooLong) {
    file = file.substr(0, maxContentSize);
    // The line that the limit cuts through is left out as a whole.
    const std::size_t lastBreak = file.rfind('\n');
    file = file.substr(0, lastBreak == std::string_view::npos ? 0 : lastBreak);
  }
  if (file.starts_with(text::byteOrderMark)) file.remove_prefix(text::byteOrderMark.size());
  while (!file.empty()) {
    const std::size_t end = file.find('\n');
    ++line_;
    readLine(trimmed(file.substr(0, end)));
    file.remove_prefix(end == std::string_view::npos ? file.size() : end + 1);
  }
  if (tooLong) {
    ++line_;
    report("the file is too long; the rest is left out");
  }
  giveNumbers();
  return std::move(content_);
}

void Parser::readLine(std::string_view line) {
  if (line.empty() || line.front() == '#' || line.front() == ';') return;
  if (line.front() == '[' && line.back() == ']') {
    startSection(trimmed(line.substr(1, line.size() - 2)));
    return;
  }
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) {
    report("neither a section nor \"key = value\"");
  } else {
    readValue(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
}

void Parser::startSection(std::string_view name) {
  section_ = Section::unknown;
  for (const SectionName& known : sectionNames)
    if (known.name == name) section_ = known.section;
  if (settingsOnly_ && section_ != Section::settings) {
    section_ = Section::unknown;
    return;
  }

  const bool full = (section_ == Section::message && content_.messages.size() == maxContentItems) ||
                    (section_ == Section::contact && content_.contacts.size() == maxContentItems);
  if (full) {
    section_ = Section::unknown;
    report("too many; left out");
  } else if (section_ == Section::unknown) {
    report("no such section; left out");
  } else if (section_ == Section::message) {
    content_.messages.emplace_back().message.status = phonelink::statusReceivedRead;
    numbered_.push_back(false);
  } else if (section_ == Section::contact) {
    content_.contacts.emplace_back();
  }
}

void Parser::readValue(std::string_view key, std::string_view value) {
  switch (section_) {
    case Section::none:
      report("a value before the first section");
      break;
    case Section::unknown:
      break;  // the section itself has been reported
    case Section::settings:
      readSetting(key, value);
      break;
    case Section::message:
      readMessage(key, value);
      break;
    case Section::contact:
      readContact(key, value);
      break;
  }
}

void Parser::readSetting(std::string_view key, std::string_view value) {
  Settings& settings = content_.settings;
  if (key == "open") {
    readSwitch(settings.open, value);
  } else if (key == "init") {
    readSwitch(settings.init, value);
  } else if (key == "phonebook") {
    readSwitch(settings.phonebook, value);
  } else if (key == "unicode") {
    readSwitch(settings.unicode, value);
  } else if (key == "unreachable") {
    settings.unreachable.emplace_back(value);
  } else if (key == "delay") {
    const auto delay = wholeNumber<int>(value, 0, maxContentDelay);
    if (!delay) return report("not a number of milliseconds up to " + std::to_string(maxContentDelay));
    settings.delay = *delay;
  } else {
    report(noSuchKey);
  }
}

void Parser::readMessage(std::string_view key, std::string_view value) {
  Message& message = content_.messages.back().message;
  if (key == "store") {
    readStore(content_.messages.back().store, value);
  } else if (key == "number") {
    readField(message.number, value, phonelink::phoneCapacity);
  } else if (key == "time") {
    readField(message.time, value, phonelink::timeCapacity);
  } else if (key == "text") {
    message.text = unescaped(value);
  } else if (key == "status") {
    const auto status = statusOf(value);
    if (!status) return report("neither received, unread, outgoing nor a number up to 65535");
    message.status = *status;
  } else if (key == "index") {
    using Limits = std::numeric_limits<std::int16_t>;
    const auto number = wholeNumber<std::int16_t>(value, Limits::min(), Limits::max());
    if (!number) return report("not a number from -32768 to 32767");
    message.storageNumber = *number;
    numbered_.back() = true;
  } else {
    report(noSuchKey);
  }
}

void Parser::readContact(std::string_view key, std::string_view value) {
  StoredContact& contact = content_.contacts.back();
  if (key == "store") {
    readStore(contact.store, value);
  } else if (key == "name") {
    contact.contact.name = value;
  } else if (key == "number") {
    readField(contact.contact.number, value, phonelink::wideContactNumberCapacity);
  } else {
    report(noSuchKey);
  }
}

void Parser::readSwitch(bool& target, std::string_view value) {
  if (value != "yes" && value != "no") return report("neither yes nor no");
  target = value == "yes";
}

void Parser::readStore(Store& target, std::string_view value) {
  if (value != "sim" && value != "phone") return report("neither sim nor phone");
  target = value == "sim" ? Store::sim : Store::phone;
}

// The text is kept as it is; the entry that takes it later ends it at `capacity` bytes.
void Parser::readField(std::string& target, std::string_view value, std::size_t capacity) {
  target = value;
  if (value.size() > capacity)
    report("longer than " + std::to_string(capacity) + ": the rest will not be seen");
}

std::string Parser::unescaped(std::string_view value) {
  if (value.find('\\') == std::string_view::npos) return std::string{value};
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char next = i + 1 < value.size() ? value[i + 1] : '\0';
    if (value[i] == '\\' && (next == 'n' || next == '\\')) {
      text.push_back(next == 'n' ? '\n' : '\\');
      ++i;
    } else {
      if (value[i] == '\\') report("a backslash that begins neither \\n nor \\\\ stays as it is");
      text.push_back(value[i]);
    }
  }
  return text;
}

// Numbers that the file names are kept, even twice; the others are filled in around them.
void Parser::giveNumbers() {
  std::array<StorageNumbers, 2> numbers;
  const auto of = [&numbers](Store store) -> StorageNumbers& { return numbers[store == Store::sim ? 0 : 1]; };
  for (const StoredMessage& stored : content_.messages) of(stored.store).take(stored.message.storageNumber);
  for (std::size_t i = 0; i < numbered_.size(); ++i) {
    StoredMessage& stored = content_.messages[i];
    if (!numbered_[i]) stored.message.storageNumber = of(stored.store).takeFree();
  }
}

void Parser::report(std::string what) {
  if (content_.problems.size() < maxContentProblems) content_.problems.push_back({line_, std::move(what)});
}

}  // namespace

Content parseContent(std::string_view file) {
  return Parser{false}.parse(file);
}

Settings parseSettings(std::string_view file) {
  return Parser{true}.parse(file).settings;
}

}  // namespace handset
