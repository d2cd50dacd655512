#include "handset/at/joined_messages.h"

#include <gtest/gtest.h>

#include "handset/at/submit.h"

namespace handset::at {
namespace {

// A part as it lies in a store. `text` is the whole message, of which this is one part.
StoredPdu part(const std::string& text, std::size_t number, std::uint16_t reference, std::int16_t place,
               std::uint16_t status = 1, const std::string& party = "+31600000001") {
  StoredPdu stored;
  stored.hex = submitPdus(party, text, reference)->at(number - 1).hex;
  stored.pdu = decodePdu(stored.hex);
  stored.storageNumber = place;
  stored.status = status;
  return stored;
}

struct Row {
  std::string text;
  std::int16_t place;
  std::uint16_t status = 1;

  bool operator==(const Row&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
  return out << row.place << '/' << row.status << '/' << row.text;
}

TEST(JoinedMessages, PutsPartsTogetherOnlyWhenAllAreThere) {
  const std::string a(153, 'a'), b(153, 'b'), c(20, 'c');
  const std::string text = a + b + c;
  const std::string other = b + a + c;
  const std::string party = "+49000000001";
  struct Case {
    const char* name;
    std::vector<StoredPdu> stored;
    std::vector<Row> rows;
    std::size_t limit = 1000;
  };
  const Case cases[] = {
      {"in order", {part(text, 1, 0, 5), part(text, 2, 0, 6), part(text, 3, 0, 7)}, {{text, 5}}},
      {"mixed up, one unread",
       {part(text, 3, 9, 1), part("x", 1, 0, 2), part(text, 1, 9, 3, 3), part(text, 2, 9, 4)},
       {{text, 3, 3}, {"x", 2}}},
      {"one lacks",
       {part(text, 3, 9, 1), part("x", 1, 0, 2), part(text, 1, 9, 3)},
       {{a, 3}, {c, 1}, {"x", 2}}},
      {"just fits", {part(text, 2, 9, 1), part(text, 1, 9, 2), part(text, 3, 9, 3)}, {{text, 2}}, 326},
      {"too long",
       {part(text, 2, 9, 1), part(text, 1, 9, 2), part(text, 3, 9, 3)},
       {{a, 2}, {b, 1}, {c, 3}},
       325},
      {"two parties",
       {part(text, 1, 9, 1), part(text, 2, 9, 2, 1, party), part(text, 3, 9, 3)},
       {{a, 1}, {c, 3}, {b, 2}}},
      {"two directions",
       {part(text, 1, 9, 1), part(text, 2, 9, 2, 7), part(text, 3, 9, 3)},
       {{a, 1}, {c, 3}, {b, 2, 7}}},
      {"two lengths", {part(text, 1, 9, 1), part(a + c, 2, 9, 2)}, {{a, 1}, {c, 2}}},
      {"a reference used twice",
       {part(text, 1, 9, 1), part(text, 2, 9, 2), part(text, 3, 9, 3), part(other, 1, 9, 4),
        part(other, 2, 9, 5), part(other, 3, 9, 6)},
       {{text, 1}, {other, 4}}},
      {"used twice, a part lacks",
       {part(text, 1, 9, 1), part(text, 3, 9, 2), part(other, 1, 9, 3), part(other, 2, 9, 4),
        part(other, 3, 9, 5)},
       {{a, 1}, {c, 2}, {b, 3}, {a, 4}, {c, 5}}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    std::vector<Row> rows;
    for (const Message& message : joinedMessages(one.stored, one.limit))
      rows.push_back({message.text, message.storageNumber, message.status});
    EXPECT_EQ(rows, one.rows);
  }
}

TEST(JoinedMessages, MendsCharactersSpreadOverParts) {
  StoredPdu first = part(std::string(161, 'x'), 1, 1, 1);
  StoredPdu second = part(std::string(161, 'x'), 2, 1, 2);
  first.pdu.data = {Coding::ucs2, {0xD8, 0x3C}};
  second.pdu.data = {Coding::ucs2, {0xDF, 0x89}};
  EXPECT_EQ(joinedMessages(std::vector{first, second}, 10).at(0).text, "🎉");
  EXPECT_EQ(joinedMessages(std::vector{first, second}, 1).at(1).text, "\xEF\xBF\xBD");
  first.pdu.data = {Coding::septets, {0x1B}};
  second.pdu.data = {Coding::septets, {0x65}};
  EXPECT_EQ(joinedMessages(std::vector{second, first}, 10).at(0).text, "€");
  first.pdu.data = {Coding::ucs2, {0x04, 0x16, 0x04}};  // half a character too much stays in its part
  EXPECT_EQ(joinedMessages(std::vector{first, second}, 10).at(0).text, "Жe");
  // One that is damaged is shown as such, not joined.
  second.pdu.kind = PduKind::undecodable;
  EXPECT_EQ(joinedMessages(std::vector{first, second}, 10).size(), 2U);
}

}  // namespace
}  // namespace handset::at
