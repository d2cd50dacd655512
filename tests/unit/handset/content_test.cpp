#include "handset/simulated/content.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "fakes.h"

namespace handset {
namespace {

const std::string sample =
    "# a comment\n"
    "[settings]\n"
    "open = no\n"
    "init = no\n"
    "phonebook=no\n"
    "unicode = no\n"
    "delay = 250\n"
    "unreachable = +15550100199\n"
    "unreachable = 5550199\n"
    "\n"
    "[message]\n"
    "store = phone\n"
    "status = unread\n"
    "number = +31600000001\n"
    "time = 26112106171504\n"
    "index = 7\n"
    "text = a = b\\nüber \\\\n 🎉\n"
    "; another comment\n"
    "[message]\n"
    "status = 2\n"
    "[contact]\n"
    "store = phone\n"
    "name = 김하늘\n"
    "number = +82000000058\n";

void expectSample(const Content& content) {
  const Settings& settings = content.settings;
  EXPECT_FALSE(settings.open || settings.init || settings.phonebook || settings.unicode);
  EXPECT_EQ(settings.delay, 250);
  EXPECT_EQ(settings.unreachable, (std::vector<std::string>{"+15550100199", "5550199"}));
  ASSERT_EQ(content.messages.size(), 2U);
  EXPECT_EQ(content.messages[0].store, Store::phone);
  EXPECT_EQ(content.messages[0].message,
            (Message{"+31600000001", "26112106171504", "a = b\nüber \\n 🎉", 3, 7}));
  EXPECT_EQ(content.messages[1].store, Store::sim);
  EXPECT_EQ(content.messages[1].message, (Message{"", "", "", 2, 1}));
  ASSERT_EQ(content.contacts.size(), 1U);
  EXPECT_EQ(content.contacts[0].store, Store::phone);
  EXPECT_EQ(content.contacts[0].contact, (Contact{"김하늘", "+82000000058"}));
  EXPECT_TRUE(content.problems.empty());
}

std::string withLineEnds(std::string text, const std::string& end) {
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += end.size())
    text.replace(at, 1, end);
  return text;
}

TEST(Content, IsReadWhateverEditorSavedIt) {
  expectSample(parseContent(sample));
  expectSample(parseContent("\xEF\xBB\xBF" + sample));
  expectSample(parseContent(withLineEnds(sample, "\r\n")));
  expectSample(parseContent(withLineEnds(sample, "  \t\r\n  ")));
  expectSample(parseContent(sample.substr(0, sample.size() - 1)));
}

TEST(Content, NamesTheLineOfEachMistakeAndGoesOn) {
  struct Case {
    std::string mistake;
    std::string said;
  };
  const Case cases[] = {
      {"hello", "neither a section"},
      {"[message", "neither a section"},
      {"colour = red", "no such key"},
      {"delay = 5", "no such key"},  // of another section
      {"status = seen", "neither received"},
      {"status = 65536", "neither received"},
      {"status = -1", "neither received"},
      {"store = pc", "neither sim"},
      {"index = 32768", "not a number"},
      {"index = 3a", "not a number"},
      {"index =", "not a number"},
      {"number = 01234567890123456", "longer than 16"},
      {"time = 0123456789012345", "longer than 15"},
      {"text = a\\tb", "backslash"},
      {"text = end\\", "backslash"},
      {"[settings]\n delay = 60001", "not a number"},
      {"[settings]\n open = maybe", "neither yes"},
      {"[contact]\n text = x", "no such key"},
      {"[mesage]", "no such section"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mistake);
    const Content content = parseContent("[message]\n" + c.mistake + "\n[message]\ntext = after\n");
    ASSERT_EQ(content.problems.size(), 1U);
    EXPECT_EQ(content.problems[0].line, c.mistake.find('\n') == std::string::npos ? 2U : 3U);
    EXPECT_NE(content.problems[0].what.find(c.said), std::string::npos) << content.problems[0].what;
    ASSERT_EQ(content.messages.size(), 2U);
    EXPECT_EQ(content.messages[0].message.status, 1);
    EXPECT_EQ(content.messages[1].message.text, "after");
  }
  EXPECT_EQ(parseContent("open = no\n").problems.at(0).line, 1U);
}

TEST(Content, FillsInMissingStorageNumbersOfEachStore) {
  const Content content = parseContent(
      "[message]\n[message]\nindex = 1\n[message]\nindex = -5\n[message]\nindex = 3\n[message]\n"
      "[message]\nstore = phone\n[message]\nindex = 3\n");
  std::vector<int> numbers;
  for (const StoredMessage& stored : content.messages) numbers.push_back(stored.message.storageNumber);
  EXPECT_EQ(numbers, (std::vector<int>{2, 1, -5, 3, 4, 1, 3}));
}

TEST(Content, CutOffAnywhereIsReadUpToThere) {
  const Content whole = parseContent(sample);
  std::size_t messages = 0;
  for (std::size_t length = 0; length <= sample.size(); ++length) {
    const std::unique_ptr<char[]> exact{new char[length]};  // so that a step too far is seen
    sample.copy(exact.get(), length);
    const Content content = parseContent({exact.get(), length});
    EXPECT_GE(content.messages.size(), messages) << length;
    EXPECT_LE(content.messages.size(), whole.messages.size()) << length;
    EXPECT_LE(content.problems.size(), 1U) << length;
    messages = content.messages.size();
  }
  EXPECT_EQ(messages, whole.messages.size());
}

TEST(Content, IsBoundedWhateverTheFileHolds) {
  const Content crowd = parseContent(repeated("[message]\n", maxContentItems + 2) +
                                     repeated("[contact]\nname = x\n", maxContentItems + 1));
  EXPECT_EQ(crowd.messages.size(), maxContentItems);
  EXPECT_EQ(crowd.contacts.size(), maxContentItems);
  EXPECT_EQ(crowd.problems.size(), 3U);

  EXPECT_EQ(parseContent(repeated("nonsense\n", maxContentProblems + 50)).problems.size(),
            maxContentProblems);

  const std::string before = "[message]\nnumber = 5550142\n";
  const Content longLine = parseContent(before + "text = " + std::string(2 * maxContentSize, 'x'));
  ASSERT_EQ(longLine.messages.size(), 1U);
  EXPECT_EQ(longLine.messages[0].message.number, "5550142");
  EXPECT_EQ(longLine.messages[0].message.text, "");
  EXPECT_EQ(longLine.problems.size(), 1U);

  const std::string atLimit = before + "text = ";
  const Content full = parseContent(atLimit + std::string(maxContentSize - atLimit.size(), 'x'));
  EXPECT_EQ(full.messages.at(0).message.text.size(), maxContentSize - atLimit.size());
  EXPECT_TRUE(full.problems.empty());

  // A reader stops one byte past the limit; a byte-order mark does not hide that.
  EXPECT_EQ(parseContent("\xEF\xBB\xBF" + std::string(maxContentSize - 2, '#')).problems.size(), 1U);
}

TEST(ShippedContent, IsReadWithoutComplaint) {
  std::ifstream file{HANDSET_SHIPPED_CONTENT, std::ios::binary};
  ASSERT_TRUE(file);
  const Content content = parseContent(std::string{std::istreambuf_iterator<char>{file}, {}});
  for (const Problem& problem : content.problems) ADD_FAILURE() << problem.line << ": " << problem.what;
  std::vector<std::size_t> ofStatus(8);
  for (const StoredMessage& stored : content.messages) {
    ++ofStatus.at(stored.message.status);
    EXPECT_EQ(stored.message.time.size(), 14U) << stored.message.text;
    EXPECT_TRUE(stored.message.time.starts_with("26")) << stored.message.text;
  }
  EXPECT_EQ(ofStatus[1] + ofStatus[3], 25U);
  EXPECT_EQ(ofStatus[7], 6U);
  EXPECT_EQ(ofStatus[2], 1U);
  EXPECT_EQ(content.contacts.size(), 14U);
}

}  // namespace
}  // namespace handset
