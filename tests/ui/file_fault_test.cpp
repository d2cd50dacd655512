#include "running_app.h"

// A message sent, a message moved and a draft edited in the window, with a fault in every single step of the
// file system.
namespace {

class FileFaults : public testing::Test {
 protected:
  void SetUp() override {
    folder_.memory = files_;
    ASSERT_TRUE(app_.start());
  }
  // The stores as they are at first, read anew, and the folder shown with a row selected.
  void prepare(Place shown) {
    for (const Place folder : {pInbox, pSent, pDraft}) folder_.put(folder, {{"pear"}, {"apple"}, {"fig"}});
    app_.command(ID_REFRESH);
    app_.choose(shown, {1});
    folder_.script().sentCount = 0;
  }
  // Moves what is selected from the inbox to Sent, or edits it in Draft; there and in Sent writes a message
  // and sends it again and again until the dialog goes. The boxes that told of something.
  Texts perform(Place shown) {
    Texts told;
    const Answerer person({}, [&](HWND dialog) {
      if (const HWND button = GetDlgItem(dialog, IDC_EDIT_AS_NEW))
        return (void)SendMessageW(button, BM_CLICK, 0, 0);
      // Who ends the program cannot press a button.
      if (const HWND button = GetDlgItem(dialog, IDC_SEND); button && told.size() < 3) {
        SetDlgItemTextW(dialog, IDC_RECEIVERS, L"555");
        SetDlgItemTextW(dialog, IDC_MESSAGE_CONTENT, L"text");
        PostMessageW(button, BM_CLICK, 0, 0);
        return;
      }
      const std::string words = wordsOf(dialog);
      if (words.find("sent.") == std::string::npos) told.push_back(words);
      EndDialog(dialog, IDOK);
    });
    if (shown == pSent)
      SendMessageW(app_.window(), WM_COMMAND, ID_NEW, 0);
    else if (shown == pDraft)
      PostMessageW(app_.list(), WM_KEYDOWN, VK_RETURN, 0);
    else
      app_.dragTo(pSent);
    app_.settle();
    return told;
  }
  Texts stores() {
    Texts contents;
    for (const Place folder : {pInbox, pSent, pDraft})
      contents.push_back(joined(folder_.values(folder, "Content"), ","));
    return contents;
  }

  ProgramFolder folder_;
  support::MemoryFileSystem* const files_ = new support::MemoryFileSystem;
  RunningApp app_{folder_, RunningApp::Files(files_)};
};

TEST_F(FileFaults, AreToldLoseNothingAndSendNothingTwice) {
  const std::string reason = framework::systemErrorText(support::MemoryFileSystem::faultCode);
  using Fault = support::MemoryFileSystem::Fault;
  for (const Place shown : {pInbox, pSent, pDraft}) {
    prepare(shown);
    const Texts before = stores();
    const std::size_t first = files_->steps().size();
    EXPECT_EQ(perform(shown), Texts());
    const std::size_t steps = files_->steps().size() - first;
    const Texts after = stores();
    // What is taken out of one file stands in the other first.
    const Texts both{before[0], after[1], before[2]};
    ASSERT_TRUE(steps > 4 && before != after);
    for (std::size_t run = 0; run < (shown == pDraft ? 2 : 1) * steps; ++run) {
      const bool killed = run >= steps;
      SCOPED_TRACE(folder_.file(shown) + ": step " + std::to_string(run % steps) + " of " +
                   std::to_string(steps) + (killed ? ", killed" : ""));
      prepare(shown);
      files_->inject(killed ? Fault::killBefore : Fault::fail, run % steps);
      const Texts told = perform(shown);
      EXPECT_EQ(folder_.script().sentCount, shown == pInbox ? 0 : 1);
      if (!killed) {
        EXPECT_TRUE(told.size() == 1 || stores() == after);
        for (const std::string& words : told) EXPECT_NE(words.find(reason), std::string::npos) << words;
      } else {
        files_->restart();
      }
      // Filed, but not read again: the folder is shown without messages until it has been read.
      if (!told.empty() || killed) app_.command(ID_REFRESH);
      app_.look();
      EXPECT_TRUE(stores() == before || stores() == after || (stores() == both && shown == pDraft));
    }
  }
}

}  // namespace
