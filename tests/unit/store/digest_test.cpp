#include "store/digest.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using store::digestOf;

std::string sample(std::size_t size) {
  std::string text;
  for (int i = 1; text.size() < size; ++i) text += std::to_string(7919 * i * i) + ' ';
  return text.substr(0, size);
}

TEST(DigestTest, EveryChangedBitAndEveryTwoHighBitsTell) {
  for (std::size_t size = 1; size <= 200; ++size) {
    std::string bytes = sample(size);
    const store::Digest before = digestOf(bytes);
    ASSERT_EQ(digestOf(std::string(bytes)), before);
    for (std::size_t bit = 0; bit < 8 * size; ++bit) {
      const auto flip = [&](std::size_t at, char mask) { bytes[at] = static_cast<char>(bytes[at] ^ mask); };
      flip(bit / 8, static_cast<char>(1 << bit % 8));
      ASSERT_NE(digestOf(bytes), before) << size << " bytes, bit " << bit;
      // Together with the high bit of any other byte: letters that differ by it are all over a code page.
      if (bit % 8 == 7) {
        for (std::size_t other = 0; other < bit / 8; ++other) {
          flip(other, '\x80');
          ASSERT_NE(digestOf(bytes), before) << size << " bytes, " << other << " and " << bit / 8;
          flip(other, '\x80');
        }
      }
      flip(bit / 8, static_cast<char>(1 << bit % 8));
    }
  }
}

TEST(DigestTest, PiecesMakeNoDifference) {
  const std::string text = sample(200);
  for (std::size_t first = 0; first <= text.size(); ++first) {
    for (std::size_t second = first; second <= text.size(); second += 1 + first % 7) {
      store::Digester digester;
      digester.take(std::string_view(text).substr(0, first));
      digester.take(std::string_view(text).substr(first, second - first));
      digester.take(std::string_view(text).substr(second));
      ASSERT_EQ(digester.digest(), digestOf(text)) << first << ", " << second;
    }
  }
  EXPECT_EQ(store::Digester{}.digest(), digestOf(""));
}

TEST(DigestTest, OrderTells) {
  const std::string bytes = sample(400);
  constexpr std::size_t word = 8;
  for (std::size_t left = 0; left + word <= bytes.size(); left += word) {
    for (std::size_t right = left + word; right + word <= bytes.size(); right += word) {
      std::string swapped = bytes;
      swapped.replace(left, word, bytes, right, word).replace(right, word, bytes, left, word);
      ASSERT_NE(swapped, bytes);
      ASSERT_NE(digestOf(swapped), digestOf(bytes)) << left << " and " << right;
    }
  }
}

TEST(DigestTest, LengthTellsEvenOfNothingButZeros) {
  for (std::size_t size = 0; size < 200; ++size) {
    EXPECT_NE(digestOf(std::string(size, '\0')), digestOf(std::string(size + 1, '\0'))) << size;
    EXPECT_NE(digestOf(sample(size)), digestOf(sample(size + 1))) << size;
    EXPECT_NE(digestOf(std::string(size, '\0')).lanes, digestOf(std::string(size + 64, '\0')).lanes) << size;
  }
}

}  // namespace
