#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace handset::at {

// Makes lines of the bytes that come in, however they are cut. Empty lines do not count; NULs and spaces
// around a line are taken off. What a line has beyond `longestLine` is lost, so that endless bytes take no
// memory.
class LineReader {
 public:
  static constexpr std::size_t longestLine = 16'384;

  void add(std::string_view bytes);

  // The next whole line; nullopt when none has come. Where `prefix` is glued to the end of a line, outside
  // quotes, it begins the next one.
  std::optional<std::string> next(std::string_view prefix);

  // Takes the sign that a text may follow, ">" at the beginning of a line that has no end yet. To be asked
  // when next() has nothing more.
  bool takePrompt();

  // Of the line that has no end yet; valid until the next call.
  std::string_view begun() const { return begun_; }

  void clear();

 private:
  bool completeLine();

  std::string bytes_;  // not looked at yet, from scanned_ on
  std::size_t scanned_ = 0;
  std::string begun_;  // of the line that has no end yet
  std::string whole_;  // a line that has one, from given_ on not given out yet
  std::size_t given_ = 0;
};

}  // namespace handset::at
