#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "handset/code_page.h"
#include "handset/simulated/environment.h"
#include "handset/simulated/simulated_handset.h"

namespace handset {

// What a simulated handset finds outside, and what it did there. Owned by the test.
struct World {
  std::optional<std::string> file;
  LocalTime time{2026, 11, 21, 17, 15, 4, 4};
  std::vector<int> pauses;
  std::vector<std::string> reports;
};

class FakeEnvironment : public Environment {
 public:
  explicit FakeEnvironment(World& world) : world_{world} {}
  std::optional<std::string> readContent(std::size_t limit) override {
    return world_.file ? std::optional{world_.file->substr(0, limit)} : std::nullopt;
  }
  LocalTime now() override { return world_.time; }
  void pause(int milliseconds) override { world_.pauses.push_back(milliseconds); }
  void report(const std::string& line) override { world_.reports.push_back(line); }

 private:
  World& world_;
};

// A page with one-byte and two-byte characters: ASCII, é as E9, 한 as C7 D1.
class FakeCodePage : public CodePage {
 public:
  std::string encode(std::u16string_view character) const override {
    if (character == u"é") return "\xE9";
    if (character == u"한") return "\xC7\xD1";
    return character[0] < 0x80 ? std::string(1, static_cast<char>(character[0])) : std::string{};
  }
  std::u16string decode(std::string_view bytes) const override {
    std::u16string units;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const auto byte = static_cast<unsigned char>(bytes[i]);
      if (byte < 0x80) {
        units.push_back(byte);
      } else if (byte == 0xC7 && bytes.substr(i, 2) == "\xC7\xD1") {
        units.push_back(u'한');
        ++i;
      } else {
        units.push_back(byte == 0xE9 ? u'é' : u'\xFFFD');
      }
    }
    return units;
  }
};

inline std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

}  // namespace handset
