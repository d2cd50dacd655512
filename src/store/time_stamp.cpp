#include "store/time_stamp.h"

#include <array>
#include <cstddef>

namespace store {

namespace {

constexpr std::size_t handsetTimeLength = 14;  // characters; the last two are not shown

bool startsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0u) != 0x80u;
}

}  // namespace

std::string displayTime(std::string_view time) {
  std::array<std::size_t, handsetTimeLength> starts{};
  std::size_t count = 0;
  for (std::size_t i = 0; i < time.size(); ++i) {
    if (!startsCharacter(time[i])) continue;
    if (count < handsetTimeLength) starts[count] = i;
    ++count;
  }
  if (count != handsetTimeLength) return std::string(time);

  const auto pair = [&](std::size_t first) {
    return time.substr(starts[first], starts[first + 2] - starts[first]);
  };
  std::string shown = "20";
  shown.append(pair(0)).append("-").append(pair(2)).append("-").append(pair(4)).append(" ");
  shown.append(pair(6)).append(":").append(pair(8)).append(":").append(pair(10));
  return shown;
}

std::string timeStamp(const std::tm& time) {
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y/%m/%d  %H:%M:%S", &time);
  return std::string(text.data(), length);
}

}  // namespace store
