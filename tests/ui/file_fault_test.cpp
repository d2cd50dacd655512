#include "running_app.h"

// What a person does to the stores in the window, with a fault in every single step of the file system.
namespace {

using Fault = support::MemoryFileSystem::Fault;

struct Action {
  const char* name;
  Place shown;
  UINT command;  // 0 = a click on a heading or, with a target, a drag
  Place target = mobile;
  UINT button = 0;  // of the New message dialog
  std::string text = "plain";
  Rows rows{1};
};

const Action actions[] = {
    {"sort", pInbox, 0},
    {"delete", pInbox, ID_DELETE},
    {"delete three", pInbox, ID_DELETE, mobile, 0, "", {0, 1, 3}},
    {"delete all", pInbox, ID_DELETE_ALL},
    {"move", pInbox, 0, pSent},
    {"copy from the handset", mInbox, 0, pDraft},
    {"send", pSent, ID_NEW, mobile, IDC_SEND},
    {"send in vain", pDraft, ID_NEW, mobile, IDC_SEND, "unreachable"},
    {"keep a draft", pDraft, ID_NEW, mobile, IDC_MESSAGE_CANCEL},
    {"keep what the code page lacks", pDraft, ID_NEW, mobile, IDC_MESSAGE_CANCEL, "中"},
};

class FileFaults : public testing::Test {
 protected:
  void SetUp() override {
    folder_.memory = files_;
    for (const char* text : {"in 1", "in 2"}) folder_.receive(text);
    ASSERT_TRUE(app_.start());
  }
  // The stores as they are at first, read anew, and the folder shown with rows selected.
  void prepare(const Action& action) {
    for (const Place folder : {pInbox, pSent, pDraft})
      folder_.put(folder, {{"pear" + folder_.file(folder)}, {"apple"}, {"fig"}, {"cake"}, {"tart"}});
    app_.command(ID_REFRESH);
    app_.choose(action.shown, action.rows);
    strcpy(folder_.script().unreachable, action.text == "unreachable" ? "555" : "");
    folder_.script().sentCount = 0;
  }
  // Runs it as somebody who consents to what is asked, and writes and sends or keeps the message again and
  // again until the dialog goes. The boxes that told of something.
  Texts perform(const Action& action) {
    Texts told;
    const Answerer person({}, [&](HWND dialog) {
      if (const HWND button = GetDlgItem(dialog, action.button); action.button && button) {
        SetDlgItemTextW(dialog, IDC_RECEIVERS, L"555");
        SetDlgItemTextW(dialog, IDC_MESSAGE_CONTENT, toWide(action.text).c_str());
        PostMessageW(button, BM_CLICK, 0, 0);
        return;
      }
      const std::string words = wordsOf(dialog);
      if (!GetDlgItem(dialog, IDCANCEL) && words.find("sent.") == std::string::npos) told.push_back(words);
      EndDialog(dialog, IDOK);
    });
    if (action.command)
      SendMessageW(app_.window(), WM_COMMAND, action.command, 0);
    else if (action.target)
      app_.dragTo(action.target);
    else
      app_.clickHeading(0);
    app_.settle();
    return told;
  }
  // The bytes of all; the time of a message that is filed is that of the moment.
  std::string stores() {
    std::string all = folder_.read(pInbox) + folder_.read(pSent) + folder_.read(pDraft);
    for (std::size_t at = 0; (at = all.find("Time = 2", at)) != std::string::npos;) all.erase(at + 7, 20);
    return all;
  }

  ProgramFolder folder_;
  support::MemoryFileSystem* const files_ = new support::MemoryFileSystem;
  RunningApp app_{folder_, RunningApp::Files(files_)};
};

TEST_F(FileFaults, AreToldLoseNothingSendNothingTwiceAndCanBeRepeated) {
  const std::string reason = framework::systemErrorText(support::MemoryFileSystem::faultCode);
  for (const Action& action : actions) {
    prepare(action);
    const std::string before = stores();
    const std::size_t first = files_->steps().size();
    EXPECT_EQ(perform(action), Texts());
    const std::size_t steps = files_->steps().size() - first;
    const std::string after = stores();
    const int sent = folder_.script().sentCount;
    ASSERT_TRUE(steps > 4 && before != after) << action.name;
    for (std::size_t step = 0; step < 2 * steps; ++step) {
      SCOPED_TRACE(action.name + (": step " + std::to_string(step)) + " of " + std::to_string(steps));
      const bool fails = step < steps;
      prepare(action);
      files_->inject(fails ? Fault::fail : Fault::outOfMemory, step % steps);
      const Texts told = perform(action);
      EXPECT_TRUE(told.size() == 1 || stores() == after);
      for (const std::string& words : told) EXPECT_TRUE(!fails || words.find(reason) < words.size()) << words;
      EXPECT_EQ(folder_.script().sentCount, sent);
      // Filed, but not read again: the folder is shown without messages until it has been read.
      if (action.button && !told.empty()) app_.command(ID_REFRESH);
      app_.look();
      if (stores() != after && action.rows.size() == 1) {
        EXPECT_EQ(stores(), before);
        select(app_.list(), action.rows);
        EXPECT_EQ(perform(action), Texts());
        EXPECT_EQ(stores(), after);
        app_.look();
      }
      ASSERT_FALSE(HasFailure());  // one is enough to read
    }
  }
}

}  // namespace
