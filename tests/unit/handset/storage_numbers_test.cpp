#include "handset/simulated/storage_numbers.h"

#include <gtest/gtest.h>

namespace handset {
namespace {

TEST(StorageNumbers, AreGivenOutOnceUntilTheStoreIsFull) {
  StorageNumbers numbers;
  numbers.take(2);
  numbers.take(0);
  numbers.take(-7);
  EXPECT_TRUE(numbers.isTaken(2));
  EXPECT_FALSE(numbers.isTaken(-7));
  EXPECT_EQ(numbers.takeFree(), 1);
  EXPECT_EQ(numbers.takeFree(), 3);
  for (int expected = 4; expected <= 32767; ++expected) ASSERT_EQ(numbers.takeFree(), expected);
  EXPECT_EQ(numbers.takeFree(), 0);
  EXPECT_EQ(numbers.takeFree(), 0);
}

}  // namespace
}  // namespace handset
