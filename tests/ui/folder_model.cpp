#include "folder_model.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <ostream>

namespace model {
namespace {

// The characters, of which the tests use none beyond two bytes.
std::u32string characters(const std::string& utf8) {
  std::u32string found;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80)
      found += static_cast<char32_t>(byte);
    else
      found += static_cast<char32_t>((byte & 0x1Fu) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3Fu));
  }
  return found;
}

bool fitsCodePage(const std::string& text) {
  for (const char32_t c : characters(text))
    if (c >= 0x80 && (c < 0xA0 || c > 0xFF)) return false;
  return true;
}

std::u32string lowered(const std::string& text) {
  std::u32string folded = characters(text);
  for (char32_t& c : folded) {
    const bool capital =
        (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x410 && c <= 0x42F);
    if (capital) c += 0x20;
  }
  return folded;
}

std::string cleaned(const std::string& text, bool dropsReturns) {
  std::string clean;
  for (const char c : text)
    if (c == '\n' || (c == '\r' && !dropsReturns))
      clean += ' ';
    else if (c != '\r')
      clean += c;
  return clean;
}

std::string lines(const Message& m, const std::string& index) {
  std::string text;
  for (const auto& [key, value] :
       {std::pair{"Content", cleaned(m.content, false)}, std::pair{"Phone", m.phone},
        std::pair{"Time", m.time}, std::pair{"Index", index}})
    text += std::string(key) + " = " + value + " \r\n";
  return text;
}

std::string header(int folder) {
  return std::string(folder == pcInbox ? "[PCINBOX]" : folder == pcSent ? "[PCSENT]" : "[PCDRAFT]") + " \r\n";
}

Messages parsed(const std::string& text, bool& cut) {
  std::vector<std::string> values;
  for (const std::string& line : split(text, "\r\n")) {
    if (line.empty() || line[0] == '[') continue;
    cut = cut || line.find('=') != line.find_last_of('=');
    std::string value = line.substr(line.find_last_of('=') + 1);
    // The writer's blank on either side.
    if (!value.empty() && value.front() == ' ') value.erase(0, 1);
    if (!value.empty() && value.back() == ' ') value.pop_back();
    values.push_back(value);
  }
  Messages messages;
  for (std::size_t i = 0; i + 3 < values.size(); i += 4)
    messages.push_back({values[i], values[i + 1], values[i + 2], std::atoi(values[i + 3].c_str())});
  return messages;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Message& m) {
  return out << "{" << m.content << "|" << m.phone << "|" << m.time << "|" << m.index << "}";
}

std::vector<std::string> split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (std::size_t to; (to = text.find(separator, from)) != std::string::npos; from = to + separator.size())
    parts.push_back(text.substr(from, to - from));
  if (from < text.size()) parts.push_back(text.substr(from));
  return parts;
}

std::string shownTime(const std::string& t) {
  if (t.size() != 14) return t;
  return "20" + t.substr(0, 2) + "-" + t.substr(2, 2) + "-" + t.substr(4, 2) + " " + t.substr(6, 2) + ":" +
         t.substr(8, 2) + ":" + t.substr(10, 2);
}

std::string File::bytes() const {
  if (!exists || marked_) return exists ? "\xEF\xBB\xBF" + text : "";
  std::string narrow;
  for (const char32_t c : characters(text)) narrow += static_cast<char>(c);
  return narrow;
}

void File::append(const std::string& more) {
  exists = true;
  text += more;
  marked_ = marked_ || !fitsCodePage(more);
}

const Message& Folders::row(int i) const {
  return table(selected_).at(static_cast<std::size_t>(rows_.at(static_cast<std::size_t>(i))));
}

void Folders::read(int folder) {
  const auto place = static_cast<std::size_t>(folder);
  saysMore_[place] = false;
  at(folder) = isPc(folder) ? parsed(file(folder).text, saysMore_[place]) : handset.at(place);
  counts_[place] = static_cast<int>(at(folder).size());
  isRead_[place] = true;
}

void Folders::show() {
  rows_.clear();
  if (selected_ >= folderCount) return;
  for (std::size_t slot = 0; slot < table(selected_).size(); ++slot) rows_.push_back(static_cast<int>(slot));
}

void Folders::rewrite(int folder) {
  File& file = files_.at(static_cast<std::size_t>(folder - pcInbox));
  file = {};
  std::string text = header(folder);
  for (const Message& m : table(folder)) text += lines(m, std::to_string(m.index));
  file.append(text);
  saysMore_.at(static_cast<std::size_t>(folder)) = false;
  counts_.at(static_cast<std::size_t>(folder)) = static_cast<int>(table(folder).size());
}

void Folders::refresh() {
  for (Messages& table : tables_) table.clear();
  isRead_ = {};
  rows_.clear();
  if (!answers) return;
  for (int folder = 0; folder < folderCount; ++folder) read(folder);
  show();
}

void Folders::select(int place, bool byMouse) {
  clicked_ = clicked_ || byMouse;
  if (place == selected_) return;
  selected_ = place;
  if (clicked_ && place < folderCount) headedSender_ = place == mobileInbox || place == pcInbox;
  show();
}

void Folders::sort(int column) {
  if (rows_.empty()) return;
  const Messages& messages = table(selected_);
  const auto key = [&](int slot) {
    const Message& m = messages.at(static_cast<std::size_t>(slot));
    return lowered(column == 0 ? m.content : column == 1 ? m.phone : shownTime(m.time));
  };
  std::stable_sort(rows_.begin(), rows_.end(), [&](int a, int b) { return key(a) < key(b); });
  if (!isPc(selected_)) return;
  Messages sorted;
  for (const int slot : rows_) {
    sorted.push_back(messages.at(static_cast<std::size_t>(slot)));
    sorted.back().time = shownTime(sorted.back().time);
    sorted.back().index = static_cast<int>(sorted.size()) - 1;
  }
  at(selected_) = std::move(sorted);
  show();
  rewrite(selected_);
}

void Folders::remove(std::vector<int> rows) {
  std::sort(rows.begin(), rows.end(), std::greater<>());
  for (const int row : rows) at(selected_).erase(at(selected_).begin() + row);
  show();
  rewrite(selected_);
}

bool Folders::drop(std::vector<int> rows, int target) {
  if (!isPc(target) || target == selected_ || selected_ >= folderCount) return true;
  if (!isRead_.at(static_cast<std::size_t>(target))) return false;
  std::sort(rows.begin(), rows.end(), std::greater<>());
  for (const int i : rows) at(target).push_back(row(i));
  rewrite(target);
  if (isPc(selected_)) remove(rows);
  return true;
}

std::string Folders::savedLines(std::vector<int> rows) const {
  std::sort(rows.begin(), rows.end(), std::greater<>());
  std::string text;
  for (const int i : rows) text += lines(row(i), std::to_string(row(i).index));
  return text;
}

Folders::Sending Folders::send(const std::string& receivers, const std::string& text,
                               const std::string& unreachable) {
  Sending sending;
  for (const std::string& number : split(receivers, ";")) {
    ++sending.total;
    if (number.find_first_of("0123456789") == std::string::npos) continue;
    const bool went = number != unreachable && number.size() <= 16 && fitsCodePage(text);
    sending.sent += went;
    sending.filed.push_back({went ? pcSent : pcDraft, {cleaned(text, went), number, "", 0}});
  }
  return sending;
}

void Folders::fileAll(const std::vector<std::pair<Place, Message>>& messages) {
  for (const auto& [folder, message] : messages) {
    File& file = files_.at(static_cast<std::size_t>(folder - pcInbox));
    file.append((file.exists ? "" : header(folder)) + lines(message, ""));
  }
  for (const int folder : {pcSent, pcDraft}) {
    read(folder);
    if (selected_ == folder) show();
  }
}

void Folders::loseHandset() {
  at(mobileInbox).clear();
  at(mobileOutbox).clear();
  rows_.clear();
}

}  // namespace model
