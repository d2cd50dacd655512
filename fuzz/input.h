#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

// What the targets share.
namespace fuzz {

// Where this does not hold, an input has found a fault.
inline void require(bool holds) {
  if (!holds) std::abort();
}

inline void requireUtf8(const std::string& text) {
  require(text::utf8FromUtf16(text::utf16FromUtf8(text)) == text);
}

inline std::vector<std::string> split(std::string_view input, char separator) {
  constexpr std::size_t most = 2000;
  std::vector<std::string> pieces;
  for (std::size_t end = 0; end != input.npos && pieces.size() < most; input.remove_prefix(end + 1)) {
    end = input.find(separator);
    pieces.emplace_back(input.substr(0, end));
    if (end == input.npos) break;
  }
  return pieces;
}

// Takes numbers and texts off the front of an input; zeros and nothing when it is used up.
class Source {
 public:
  explicit Source(std::string_view input) : rest_{input} {}

  unsigned byte() {
    if (rest_.empty()) return 0;
    const auto value = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return value;
  }

  // Up to the separator, which is left out.
  std::string_view textUpTo(char separator) {
    const std::string_view text = rest_.substr(0, rest_.find(separator));
    rest_.remove_prefix(text.size() + (text.size() < rest_.size() ? 1 : 0));
    return text;
  }

  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

}  // namespace fuzz
