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
  for (const char* number : {"1", "+31 (6) 123-45.6", "*100#"}) EXPECT_TRUE(canBeDialled(number)) << number;
  for (const char* number : {"", "+", "1;2", "0800ANNA", "12345678901234567", "3161234…", "3161234..."})
    EXPECT_FALSE(canBeDialled(number)) << number;
}

std::string sent, unreachable;

// What the handset answers stands in the number.
int sendSms(void* entry) {
  const std::string number = static_cast<const char*>(entry) + 16;
  sent += number + "; ";
  if (number == "0 no memory" && !unreachable.empty()) throw std::bad_alloc();
  return number == unreachable ? -1 : 0;
}

TEST(Outgoing, SendsToEachOnceAndFilesWhatBecameOfItOrKeepsIt) {
  const support::Latin1Page page;
  support::MemoryFileSystem files;
  store::Folders folders(files, page, "");
  phonelink::PhoneLink link(page);
  link.bind({.zelSendSMS = sendSms, .zelProblem = [](char* text, int) { return *text = '?', 1; }});
  unreachable = "0 unreachable";
  std::string log = sent = "";
  const auto progress = [&log](Outgoing::Step step, std::size_t index, std::size_t total,
                               const std::string&) {
    log += std::to_string(index + 1) + "/" + std::to_string(total) + "?+-"[static_cast<int>(step)];
  };
  const Outgoing outgoing{link, folders, [] { return "now"; }, progress};
  files.put("pcSent.dat", "");
  files.lock("pcSent.dat");
  Sending last;
  const auto problem =
      sendToAll(Texts{"1", "", "0 unreachable", "x", "0 no memory", "2"}, "a=h\r\ni", false, outgoing, last);
  EXPECT_EQ(log, "1/6?1/6+3/6?3/6-5/6?5/6-6/6?6/6+");
  EXPECT_EQ((std::vector{last.sent(), last.filed(), last.unfiled(), last.sentUnfiled()}),
            (std::vector<std::size_t>{2, 2, 2, 2}));
  EXPECT_EQ(last.deliveries[0].reason + last.deliveries[2].reason, "?");
  EXPECT_EQ(problem.code, files.lockedCode);
  EXPECT_EQ(fileAgain(last, folders).code, files.lockedCode);
  // Of what is not reached again nothing new is filed; what is reached keeps its draft until it is filed.
  unreachable = "nobody";
  last.replaced = last.deliveries[2].message;  // any other draft; it goes when all the rest is filed
  EXPECT_EQ(sendAgain(last, outgoing).code, files.lockedCode);
  folders.reload(store::Folder::PDraft);
  EXPECT_TRUE(takeOutDrafts(last, folders).ok() && folders[store::Folder::PDraft].size() == 2);
  files.unlock("pcSent.dat");
  EXPECT_TRUE(sendAgain(last, outgoing).ok() && last.unfiled() == 0);
  unreachable = "";
  EXPECT_TRUE(sendAgain(last, outgoing).ok() && last.anyLeft());
  EXPECT_EQ(sent, "1; 0 unreachable; 0 no memory; 2; 0 unreachable; 0 no memory; 0 no memory; 0 no memory; ");
  std::string filed;
  for (const auto folder : {store::Folder::PSent, store::Folder::PDraft}) {
    folders.reload(folder);
    for (const store::SmsRecord& record : folders[folder].records())
      filed += record.Phone + " " + record.Time + " " + record.Content + "; ";
  }
  EXPECT_EQ(filed,
            "1 now h i; 0 unreachable now h i; 2 now h i; 0 no memory now h i; "
            "0 unreachable now h  i; 0 no memory now h  i; ");
  EXPECT_TRUE(last.takeReport({"2", "on its way"}) && !last.takeReport({"3", "arrived"}));
  EXPECT_TRUE(last.takeReport({"2", "arrived"}));
  EXPECT_EQ(last.deliveries[5].report, "arrived");
  EXPECT_TRUE(takeOutDrafts(last, folders).ok() && !last.anyLeft());
  EXPECT_TRUE(folders[store::Folder::PDraft].empty());
}

}  // namespace
