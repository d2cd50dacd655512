#include <gtest/gtest.h>

#include "dialogs/message_counter.h"
#include "dialogs/outgoing.h"
#include "dialogs/reader_position.h"
#include "dialogs/recipients.h"

namespace {

using namespace dialogs;
using store::Folder;
using Texts = std::vector<std::string>;

TEST(MessageCounter, SwitchesBetween160And70AndCutsAt70) {
  const std::u16string face = u"\U0001F600";
  const auto wide = [](std::size_t count) { return std::u16string(count, u'ж'); };
  struct Case {
    std::u16string text;
    const char* shown;
    std::optional<std::u16string> cut;
  };
  for (const Case& c : {
           Case{u"", "0/160", {}},
           Case{u"hello", "5/160", {}},
           Case{u"a\r\nb", "4/160", {}},
           Case{std::u16string(160, u'x'), "160/160", {}},
           Case{u"é", "1/70", {}},
           Case{u"\x7F", "1/160", {}},
           Case{wide(70), "70/70", {}},
           Case{wide(100), "70/70", wide(70)},
           Case{wide(68) + face, "70/70", {}},
           Case{wide(68) + face + u"y", "70/70", wide(68) + face},
           Case{wide(69) + face, "69/70", wide(69)},  // half of a pair is nothing
           Case{u"a\xD83D", "1/160", u"a"},  // what is left of a character when half of it is deleted
           Case{std::u16string(u"\xDE00") + u"é" + face, "3/70", u"é" + face},
           Case{std::u16string(100, u'x') + u"ж", "70/70", std::u16string(70, u'x')},
       }) {
    const MessageCount count = countMessage(c.text);
    EXPECT_EQ(counterText(count), c.shown);
    EXPECT_EQ(count.isCut, c.cut.has_value()) << c.shown;
    EXPECT_EQ(count.cut, c.cut.value_or(u""));
  }
}

TEST(Recipients, SplitAtEverySemicolon) {
  struct Case {
    const char* text;
    Texts parts;
  };
  for (const Case& c : {Case{"", {}}, Case{"123", {"123"}}, Case{"123;456", {"123", "456"}},
                        Case{"123;;456", {"123", "", "456"}}, Case{"123;", {"123"}}, Case{";", {""}},
                        Case{";;", {"", ""}}, Case{" 1 ; 2", {" 1 ", " 2"}}}) {
    EXPECT_EQ(splitRecipients(c.text), c.parts) << c.text;
  }
  EXPECT_EQ(joinRecipients(Texts{"123", "456"}), "123;456;");
  EXPECT_EQ(joinRecipients(Texts{}), "");
  EXPECT_TRUE(hasDigit("+3"));
  EXPECT_FALSE(hasDigit("+-."));
}

TEST(ReaderPosition, EnablesItsButtonsInTheDeliberateOrder) {
  // Steps back (<), forward (>) and to a message by its number; after each the position and the buttons that
  // are enabled, first of all as the reader opens.
  const auto walk = [](ReaderPosition reader, std::string_view steps) {
    const auto seen = [&reader] {
      return std::to_string(reader.position()) + (reader.previousEnabled() ? "<" : "") +
             (reader.nextEnabled() ? ">" : "");
    };
    std::string all = seen();
    for (const char step : steps) {
      if (step == '<')
        reader.stepBack();
      else if (step == '>')
        reader.stepForward();
      else
        reader.choose(step - '0');
      all += ' ' + seen();
    }
    return all;
  };
  EXPECT_EQ(walk({0, 1}, "0<>"), "0 0< 0> 0<");
  EXPECT_EQ(walk({1, 3}, ">>0<2<"), "1<> 2< 2< 0> 0> 2< 1<>");
  EXPECT_EQ(walk({2, 3}, ""), "2<");
}

// A handset that refuses some numbers and files that refuse to be written.
class OutgoingTest : public testing::Test {
 protected:
  OutgoingSteps steps() {
    OutgoingSteps steps;
    steps.send = [this](const std::string& number, const std::string&) {
      log_ += "send " + number + "; ";
      return number != unreachable_;
    };
    steps.file = [this](Folder folder, const store::SmsRecord& message) {
      if (message.Phone == memoryTaker_) throw std::bad_alloc();
      if (folder == broken_)
        return store::failure({store::FileOutcome::failed, store::FileOperation::write, 112}, "f");
      log_ += (folder == Folder::PSent ? "sent " : "draft ") + message.Phone + " " + message.Time + "; ";
      return store::WriteResult{};
    };
    steps.now = [] { return "now"; };
    steps.sending = [this](std::size_t index, std::size_t total, const std::string&) {
      log_ += std::to_string(index + 1) + "/" + std::to_string(total) + " ";
    };
    steps.done = [](std::size_t, std::size_t, const std::string&, bool) {};
    return steps;
  }

  OutgoingResult sendTo(const char* receivers) {
    const Texts numbers = splitRecipients(receivers);
    return sendToAll(numbers, "text", steps());
  }

  std::string unreachable_;
  std::string memoryTaker_;
  std::optional<Folder> broken_;
  std::string log_;
};

TEST_F(OutgoingTest, SendsToEachAndFilesWhatBecameOfIt) {
  unreachable_ = "2";
  const OutgoingResult result = sendTo("1;;2;x;3");
  EXPECT_EQ(log_, "1/5 send 1; sent 1 now; 3/5 send 2; draft 2 now; 5/5 send 3; sent 3 now; ");
  EXPECT_EQ(result.sent, 2U);
  EXPECT_EQ(result.total, 5U);
  EXPECT_EQ(result.filed, 3U);
  EXPECT_TRUE(result.unfiled.empty());
}

TEST_F(OutgoingTest, KeepsWhatCannotBeFiledAndFilesItLaterWithoutSendingAgain) {
  unreachable_ = "2";
  broken_ = Folder::PSent;
  OutgoingResult result = sendTo("1;2;3");
  EXPECT_EQ(result.sent, 2U);
  EXPECT_EQ(result.problem.status.code, 112U);
  ASSERT_EQ(result.unfiled.size(), 2U);
  EXPECT_EQ(result.unfiled[1].message.Phone, "3");

  log_.clear();
  EXPECT_FALSE(fileAgain(result.unfiled, steps()).ok());
  EXPECT_EQ(result.unfiled.size(), 2U);
  broken_.reset();
  EXPECT_TRUE(fileAgain(result.unfiled, steps()).ok());
  EXPECT_TRUE(result.unfiled.empty());
  EXPECT_EQ(log_, "sent 1 now; sent 3 now; ");
}

TEST_F(OutgoingTest, ForgetsNothingThatWasSentWhenMemoryRunsOut) {
  memoryTaker_ = "2";
  OutgoingResult result = sendTo("1;2;3");
  EXPECT_EQ(log_, "1/3 send 1; sent 1 now; 2/3 send 2; 3/3 send 3; sent 3 now; ");
  EXPECT_EQ(result.sent, 3U);
  EXPECT_EQ(result.problem.status.code, 8U);
  ASSERT_EQ(result.unfiled.size(), 1U);
  EXPECT_FALSE(fileAgain(result.unfiled, steps()).ok());
  memoryTaker_.clear();
  log_.clear();
  EXPECT_TRUE(fileAgain(result.unfiled, steps()).ok());
  EXPECT_EQ(log_, "sent 2 now; ");
}

}  // namespace
