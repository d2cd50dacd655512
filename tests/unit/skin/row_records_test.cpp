#include "skin/row_records.h"

#include <gtest/gtest.h>

namespace {

using skin::RowRecord;
using skin::RowRecords;

TEST(RowRecords, KeepColoursInStepWithColumns) {
  RowRecords records;
  records.insertColumn(0);
  records.insertColumn(99);  // behind the last
  RowRecord& row = records.add(7);
  ASSERT_EQ(row.colors.size(), 2U);
  EXPECT_FALSE(row.colors[0].text || row.colors[0].background);
  row.colors[0].text = 1;
  row.colors[1].background = 2;

  records.insertColumn(1);
  ASSERT_EQ(row.colors.size(), 3U);
  EXPECT_EQ(row.colors[0].text, 1U);
  EXPECT_FALSE(row.colors[1].text || row.colors[1].background);
  EXPECT_EQ(row.colors[2].background, 2U);

  records.deleteColumn(0);
  records.deleteColumn(2);  // there is none
  ASSERT_EQ(row.colors.size(), 2U);
  EXPECT_EQ(row.colors[1].background, 2U);
  EXPECT_EQ(records.add(8).colors.size(), 2U);
}

TEST(RowRecords, RemoveInAnyOrder) {
  RowRecords records;
  std::vector<RowRecord*> rows;
  for (int value = 0; value < 6; ++value) rows.push_back(&records.add(value));
  for (const std::size_t gone : {1U, 5U, 0U, 3U}) records.remove(*rows[gone]);
  EXPECT_EQ(records.size(), 2U);
  EXPECT_EQ(rows[2]->value, 2);
  EXPECT_EQ(rows[4]->value, 4);
  records.remove(*rows[4]);
  records.remove(*rows[2]);
  EXPECT_EQ(records.size(), 0U);
}

}  // namespace
