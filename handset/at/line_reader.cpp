#include "handset/at/line_reader.h"

#include <algorithm>
#include <utility>

#include "handset/at/fields.h"

namespace handset::at {
namespace {

// Where `prefix` stands behind something else; npos when nowhere.
std::size_t gluedAt(std::string_view line, std::string_view prefix) {
  if (prefix.empty()) return line.npos;
  bool quoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '"') quoted = !quoted;
    if (at > 0 && !quoted && line[at] == prefix.front() && line.substr(at).starts_with(prefix)) return at;
  }
  return line.npos;
}

}  // namespace

void LineReader::add(std::string_view bytes) {
  bytes_.erase(0, std::exchange(scanned_, 0));
  bytes_ += bytes;
}

bool LineReader::completeLine() {
  const std::size_t end = std::min(bytes_.find_first_of("\r\n", scanned_), bytes_.size());
  const std::size_t room = longestLine - begun_.size();
  begun_.append(bytes_, scanned_, std::min(end - scanned_, room));
  scanned_ = std::min(end + 1, bytes_.size());
  if (end == bytes_.size()) return false;
  whole_ = trimmed(begun_);
  given_ = 0;
  begun_.clear();
  return true;
}

std::optional<std::string> LineReader::next(std::string_view prefix) {
  while (given_ == whole_.size())
    if (!completeLine()) return std::nullopt;
  const std::string_view rest = std::string_view{whole_}.substr(given_);
  const std::string_view line = rest.substr(0, gluedAt(rest, prefix));
  given_ += line.size();
  return std::string{trimmed(line)};
}

bool LineReader::takePrompt() {
  const std::string_view line = trimmed(begun_);
  if (!line.starts_with('>')) return false;
  begun_ = std::string{line.substr(1)};
  return true;
}

void LineReader::clear() {
  bytes_.clear();
  scanned_ = 0;
  begun_.clear();
  whole_.clear();
  given_ = 0;
}

}  // namespace handset::at
