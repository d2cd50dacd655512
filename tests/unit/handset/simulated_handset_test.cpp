#include "handset/simulated/simulated_handset.h"

#include <gtest/gtest.h>

#include "fakes.h"

namespace handset {
namespace {

class SimulatedHandsetTest : public testing::Test {
 protected:
  bool reopen() {
    handset.close();
    return handset.open(0, 115200) && handset.init();
  }

  World world{.file = "", .time = {2026, 11, 21, 17, 15, 4, 4}, .pauses = {}, .reports = {}};
  SimulatedHandset handset{std::make_unique<FakeEnvironment>(world)};
};

TEST_F(SimulatedHandsetTest, DoesWhatItsSettingsSay) {
  struct Case {
    std::optional<std::string> file;
    bool open, init, phonebook, unicode;
  };
  const Case cases[] = {
      {"", true, true, true, true},
      {"[settings]\nopen = no", false, true, true, true},
      {"[settings]\ninit = no", true, false, true, true},
      {"[settings]\nphonebook = no", true, true, false, true},
      {"[settings]\nunicode = no", true, true, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(*c.file);
    world.file = c.file;
    EXPECT_EQ(handset.offersUnicode(), c.unicode);  // also before it was ever opened
    EXPECT_EQ(handset.open(0, 115200), c.open);
    EXPECT_EQ(handset.init(), c.init);
    EXPECT_EQ(handset.initPhonebook(), c.phonebook);
    EXPECT_EQ(handset.simContacts().has_value(), c.phonebook);
    EXPECT_EQ(handset.phoneContacts().has_value(), c.phonebook);
  }
}

TEST_F(SimulatedHandsetTest, IsNotThereWithoutItsFile) {
  world.file.reset();
  EXPECT_TRUE(handset.offersUnicode());
  EXPECT_FALSE(handset.open(0, 115200));
  EXPECT_EQ(world.reports.size(), 1U);
}

TEST_F(SimulatedHandsetTest, SortsItsContentByStoreAndStatus) {
  const auto texts = [](const std::optional<std::vector<Message>>& messages) {
    std::string all;
    for (const Message& message : messages.value()) all += message.text;
    return all;
  };
  for (const char* store : {"sim", "phone"})
    for (const char* status : {"received", "unread", "outgoing", "2"})
      world.file->append("[message]\nstore=")
          .append(store)
          .append("\nstatus=")
          .append(status)
          .append("\ntext=" + std::string{store}.substr(0, 1) + status[0] + "\n");
  world.file->append("[contact]\nname=S\n[contact]\nstore=phone\nname=P\n");
  ASSERT_TRUE(reopen());
  EXPECT_EQ(texts(handset.simReceived()), "srsu");
  EXPECT_EQ(texts(handset.simOutgoing()), "so");
  EXPECT_EQ(texts(handset.phoneMessages()), "prpupop2");
  EXPECT_EQ(handset.simContacts().value(), (std::vector<Contact>{{"S", ""}}));
  EXPECT_EQ(handset.phoneContacts().value(), (std::vector<Contact>{{"P", ""}}));
}

TEST_F(SimulatedHandsetTest, ReadsItsFileAnewAtEachOpen) {
  ASSERT_TRUE(reopen());
  world.file = "[message]\ntext = new\nwrong\n";
  EXPECT_TRUE(handset.simReceived()->empty());
  ASSERT_TRUE(reopen());
  EXPECT_EQ(handset.simReceived()->size(), 1U);
  ASSERT_EQ(world.reports.size(), 1U);
  EXPECT_TRUE(world.reports[0].starts_with("line 3: ")) << world.reports[0];
}

TEST_F(SimulatedHandsetTest, KeepsWhatWasSentInTheOutbox) {
  world.file = "[message]\nstatus = outgoing\nindex = 1\ntext = old\n[message]\nindex = 2\n";
  ASSERT_TRUE(reopen());
  EXPECT_TRUE(handset.send("+31600000001", "één 🎉"));
  world.time.second = 5;
  EXPECT_TRUE(handset.send("5550142", "two"));
  const Message first{"+31600000001", "26112117150404", "één 🎉", 7, 3};
  const Message second{"5550142", "26112117150504", "two", 7, 4};
  const Message old{"", "", "old", 7, 1};
  EXPECT_EQ(handset.simOutgoing().value(), (std::vector{old, first, second}));
  ASSERT_TRUE(reopen());
  EXPECT_EQ(handset.simOutgoing().value(), (std::vector{old, first, second}));

  // Meanwhile somebody has put a message in the file where the first one was stored.
  world.file = "[message]\nindex = 3\n";
  ASSERT_TRUE(reopen());
  const std::vector<Message> outbox = handset.simOutgoing().value();
  ASSERT_EQ(outbox.size(), 2U);
  EXPECT_EQ(outbox[0].text, first.text);
  EXPECT_EQ(outbox[0].storageNumber, 1);
  EXPECT_EQ(outbox[1], second);
}

TEST_F(SimulatedHandsetTest, SendsOnlyToNumbersItCanReach) {
  world.file = "[settings]\nunreachable = +15550100199\n";
  ASSERT_TRUE(reopen());
  EXPECT_FALSE(handset.send("+15550100199", "x"));
  EXPECT_FALSE(handset.send("", "x"));
  EXPECT_FALSE(handset.send("+abc", "x"));
  EXPECT_TRUE(handset.simOutgoing()->empty());
  EXPECT_TRUE(handset.send("+1555010019", "x"));
  EXPECT_EQ(handset.simOutgoing()->size(), 1U);
}

TEST_F(SimulatedHandsetTest, TakesItsTimeForEveryCall) {
  world.file = "[settings]\ndelay = 30\n";
  ASSERT_TRUE(handset.open(0, 115200));
  handset.init();
  handset.simReceived();
  handset.simOutgoing();
  handset.phoneMessages();
  handset.send("1", "x");
  handset.initPhonebook();
  handset.simContacts();
  handset.phoneContacts();
  handset.close();
  EXPECT_EQ(world.pauses, std::vector<int>(10, 30));
}

TEST(HandsetTime, IsFourteenCharacters) {
  struct Case {
    LocalTime time;
    const char* text;
  };
  const Case cases[] = {
      {{2026, 11, 21, 17, 15, 4, 32}, "26112117150432"},  {{2026, 1, 2, 3, 4, 5, 0}, "26010203040500"},
      {{2026, 12, 31, 23, 59, 59, 56}, "26123123595956"}, {{2026, 7, 1, 0, 0, 0, -4}, "26070100000084"},
      {{2026, 7, 1, 0, 0, 0, -32}, "260701000000B2"},     {{2100, 7, 1, 0, 0, 0, -48}, "000701000000C8"},
  };
  for (const Case& c : cases) EXPECT_EQ(handsetTime(c.time), c.text);
}

}  // namespace
}  // namespace handset
