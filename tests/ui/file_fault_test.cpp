#include "running_app.h"

// A message sent and a message moved in the window, with a fault in every single step of the file system.
namespace {

class FileFaults : public testing::Test {
 protected:
  void SetUp() override {
    folder_.memory = files_;
    ASSERT_TRUE(app_.start());
  }
  // The stores as they are at first, read anew, and the folder shown with a row selected.
  void prepare(Place shown) {
    for (const Place folder : {pInbox, pSent}) folder_.put(folder, {{"pear"}, {"apple"}, {"fig"}});
    app_.command(ID_REFRESH);
    app_.choose(shown, {1});
    folder_.script().sentCount = 0;
  }
  // Moves what is selected from the inbox to Sent; in Sent writes a message and sends it again and again
  // until the dialog goes. The boxes that told of something.
  Texts perform(Place shown) {
    Texts told;
    const Answerer person({}, [&](HWND dialog) {
      if (const HWND button = GetDlgItem(dialog, IDC_SEND)) {
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
    else
      app_.dragTo(pSent);
    app_.settle();
    return told;
  }
  std::string stores() {
    return joined(folder_.values(pInbox, "Content"), ",") + "|" +
           joined(folder_.values(pSent, "Content"), ",");
  }

  ProgramFolder folder_;
  support::MemoryFileSystem* const files_ = new support::MemoryFileSystem;
  RunningApp app_{folder_, RunningApp::Files(files_)};
};

TEST_F(FileFaults, AreToldLoseNothingAndSendNothingTwice) {
  const std::string reason = framework::systemErrorText(support::MemoryFileSystem::faultCode);
  for (const Place shown : {pInbox, pSent}) {
    prepare(shown);
    const std::string before = stores();
    const std::size_t first = files_->steps().size();
    EXPECT_EQ(perform(shown), Texts());
    const std::size_t steps = files_->steps().size() - first;
    const std::string after = stores();
    ASSERT_TRUE(steps > 4 && before != after);
    for (std::size_t step = 0; step < steps; ++step) {
      SCOPED_TRACE(folder_.file(shown) + ": step " + std::to_string(step) + " of " + std::to_string(steps));
      prepare(shown);
      files_->inject(support::MemoryFileSystem::Fault::fail, step);
      const Texts told = perform(shown);
      EXPECT_TRUE(told.size() == 1 || stores() == after);
      for (const std::string& words : told) EXPECT_NE(words.find(reason), std::string::npos) << words;
      EXPECT_EQ(folder_.script().sentCount, shown == pSent ? 1 : 0);
      // Filed, but not read again: the folder is shown without messages until it has been read.
      if (shown == pSent && !told.empty()) app_.command(ID_REFRESH);
      app_.look();
      EXPECT_TRUE(stores() == before || stores() == after);
    }
  }
}

}  // namespace
