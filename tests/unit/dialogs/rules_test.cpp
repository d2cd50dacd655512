#include <gtest/gtest.h>

#include "dialogs/message_counter.h"
#include "dialogs/outgoing.h"
#include "dialogs/recipients.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"

namespace {

using namespace dialogs;
using Texts = std::vector<std::string>;

TEST(MessageCounter, SwitchesBetween160And70AndCutsAt70) {
  const std::u16string face = u"\U0001F600";
  const auto wide = [](std::size_t count) { return std::u16string(count, u'ж'); };
  using Case = std::tuple<std::u16string, std::string, std::optional<std::u16string>>;
  for (const auto& [text, shown, cut] :
       {Case{u"", "0/160", {}}, Case{u"a\r\nb", "4/160", {}},
        Case{std::u16string(161, u'x'), "160/160", std::u16string(160, u'x')}, Case{u"\x7F", "1/160", {}},
        Case{u"\x80", "1/70", {}}, Case{wide(70), "70/70", {}}, Case{wide(71), "70/70", wide(70)},
        Case{wide(68) + face + u"y", "70/70", wide(68) + face},
        Case{u"x" + wide(68) + face, "69/70", u"x" + wide(68)}, Case{u"\uD7FF\U0010FFFF\uE000", "4/70", {}},
        Case{wide(69) + u"\r\n", "69/70", wide(69)},
        // Half a character, as a keyboard types it on the way to the other half
        Case{u"a\xD83D", "1/160", {}}, Case{std::u16string(u"\xDE00\xDE00é"), "1/70", {}},
        Case{u"\xD800\U00010000", "2/70", {}}, Case{u"\xDBFF\uE000\xDFFF", "1/70", {}}}) {
    const MessageCount count = countMessage(text);
    EXPECT_EQ(counterText(count), shown);
    EXPECT_EQ(count.cut, cut) << shown;
  }
}

TEST(Recipients, AreSplitAtEverySemicolon) {
  const std::pair<const char*, Texts> cases[]{
      {"", {}}, {"123;;456", {"123", "", "456"}}, {"123;", {"123"}}, {";", {""}}, {" 1 ; 2", {" 1 ", " 2"}}};
  for (const auto& [text, parts] : cases) EXPECT_EQ(splitRecipients(text), parts) << text;
  EXPECT_EQ(joinRecipients(Texts{"123", "456"}), "123;456;");
  EXPECT_TRUE(hasDigit("+0") && hasDigit("9") && isSingleNumber("1 2"));
  EXPECT_FALSE(hasDigit("+-.") || isSingleNumber("1;2"));
}

std::string sent;

// What the handset answers stands in the number.
int sendSms(void* entry) {
  const std::string number = static_cast<const char*>(entry) + 16;
  sent += number + "; ";
  if (number == "0 no memory") throw std::bad_alloc();
  return number == "0 unreachable" ? -1 : 0;
}

TEST(Outgoing, SendsToEachOnceAndFilesWhatBecameOfItOrKeepsIt) {
  const support::Latin1Page page;
  support::MemoryFileSystem files;
  store::Folders folders(files, page, "");
  phonelink::PhoneLink link(page);
  link.bind({.zelSendSMS = sendSms});
  std::string log = sent = "";
  const auto progress = [&log](Outgoing::Step step, std::size_t index, std::size_t total,
                               const std::string&) {
    log += std::to_string(index + 1) + "/" + std::to_string(total) + "?+-"[static_cast<int>(step)];
  };
  const Outgoing outgoing{link, folders, [] { return "now"; }, progress};
  files.put("pcSent.dat", "");
  files.lock("pcSent.dat");
  OutgoingResult result =
      sendToAll(Texts{"1", "", "0 unreachable", "x", "0 no memory", "2"}, "hi", false, outgoing);
  EXPECT_EQ(log, "1/6?1/6+3/6?3/6-5/6?5/6-6/6?6/6+");
  EXPECT_EQ((std::vector{result.sent, result.total, result.filed}), (std::vector<std::size_t>{2, 6, 2}));
  EXPECT_EQ(result.problem.code, files.lockedCode);
  EXPECT_EQ(fileAgain(result.unfiled, folders).code, files.lockedCode);
  EXPECT_EQ(result.unfiled.size(), 2U);
  files.unlock("pcSent.dat");
  EXPECT_TRUE(fileAgain(result.unfiled, folders).ok() && result.unfiled.empty());
  EXPECT_EQ(sent, "1; 0 unreachable; 0 no memory; 2; ");
  std::string filed;
  for (const auto folder : {store::Folder::PSent, store::Folder::PDraft}) {
    folders.reload(folder);
    for (const store::SmsRecord& record : folders[folder].records())
      filed += record.Phone + " " + record.Time + " " + record.Content + "; ";
  }
  EXPECT_EQ(filed, "1 now hi; 2 now hi; 0 unreachable now hi; 0 no memory now hi; ");
}

}  // namespace
