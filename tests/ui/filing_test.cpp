#include "running_app.h"

// What the commands and the mouse do with the messages of a folder.
namespace {

const Message delta{"delta", "4", "26030211223304", 7};
const Message bravo{"Bravo", "3", "2005/01/02  09:05:07", 5};
const Message alpha{"alpha", "2", "2005/01/02  09:05:08", 9};
const Message again{"bravo", "1", "2004/12/24", 1};
const Message echo{"echo", "5", "z", 2};

class Filing : public Program {
 protected:
  void SetUp() override {
    for (const char* text : {"in 2", "in 1", "in 3"}) folder_.receive(text);
    folder_.put(pInbox, {delta, bravo, alpha, again, echo});
    folder_.put(pSent, {echo});
    ASSERT_TRUE(app_.start());
    app_.show(pInbox);
  }
};

TEST_F(Filing, SortingAPcFolderIsKeptAndAHandsetFolderStaysAsItIs) {
  app_.clickHeading(0);
  EXPECT_EQ(app_.look(), "3 0 5 1 0: alpha,Bravo,bravo,delta,echo");
  const Message sorted[] = {alpha, bravo, again, {"delta", "4", "2026-03-02 11:22:33"}, echo};
  std::string bytes = "[PCINBOX] \r\n";
  for (int i = 0; i < 5; ++i) bytes += groupOf({sorted[i].content, sorted[i].phone, sorted[i].time, i});
  EXPECT_EQ(folder_.read(pInbox), bytes);
  app_.clickHeading(1);
  EXPECT_EQ(app_.look(), "3 0 5 1 0: bravo,alpha,Bravo,delta,echo");
  app_.clickHeading(2);
  EXPECT_EQ(app_.look(), "3 0 5 1 0: bravo,Bravo,alpha,delta,echo");
  app_.show(mInbox);
  app_.clickHeading(0);
  EXPECT_EQ(app_.look(), "3 0 5 1 0: in 1,in 2,in 3");
  select(app_.list(), {0});  // the row stands for its own message
  app_.dragTo(pDraft);
  app_.show(pDraft);
  EXPECT_EQ(app_.look(), "3 0 5 1 1: in 1");
}

TEST_F(Filing, DeletesWhatIsSelectedAndConsentedTo) {
  const std::string before = folder_.read(pInbox);
  app_.with(pInbox, {0}, ID_DELETE, {shows({IDC_DELETE_QUESTION}, "Delete?"), end(IDCANCEL)});
  app_.with(pInbox, {0}, ID_DELETE_ALL, {shows({IDC_DELETE_QUESTION}, "Delete All?"), press(IDCANCEL)});
  const Step stop = [this](HWND dialog) {
    PostMessageW(app_.list(), WM_KEYDOWN, VK_ESCAPE, 0), EndDialog(dialog, IDOK);
  };
  EXPECT_TRUE(app_.with(pInbox, {0, 1}, ID_DELETE, {stop}).ends_with(" | 0 message(s) deleted."));
  EXPECT_EQ(folder_.read(pInbox), before);
  EXPECT_EQ(app_.with(pInbox, {1, 3}, ID_DELETE, {press(IDOK)}),
            "3 0 3 1 0: delta,alpha,echo | 2 message(s) deleted. Ctrl+Z takes it back.");
  EXPECT_EQ(folder_.read(pInbox), folder_.storeOf(pInbox, {delta, alpha, echo}));
  EXPECT_EQ(ListView_GetNextItem(app_.list(), -1, LVNI_FOCUSED), 1);
  // Only Cancel refuses.
  EXPECT_EQ(app_.with(pInbox, {}, ID_DELETE_ALL, {end(7)}),
            "3 0 0 1 0:  | 3 message(s) deleted. Ctrl+Z takes it back.");
  for (int times = 0; times < 2; ++times) {  // once
    app_.key(app_.list(), 'Z', {VK_CONTROL});
    EXPECT_EQ(app_.look() + " | " + app_.status(), "3 0 3 1 0: delta,alpha,echo | Taken back: PC\\Inbox");
  }
  app_.with(pInbox, {}, ID_DELETE_ALL, {end(7)});
  EXPECT_EQ(folder_.read(pInbox), folder_.storeOf(pInbox, {}));
  app_.with(pInbox, {}, ID_DELETE_ALL);
  app_.with(mInbox, {0}, ID_DELETE);
}

TEST_F(Filing, RemovesFromTheHandsetWhatIsKeptOrConsentedTo) {
  app_.with(pInbox, {0}, ID_REMOVE);
  const std::string question = "1 of 1 message(s) have no copy on the PC";
  app_.with(mInbox, {2}, ID_REMOVE, {[&](HWND box) {
              EXPECT_NE(wordsOf(box).find(question), std::string::npos);
              EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDCANCEL);
              EndDialog(box, IDCANCEL);
            }});
  EXPECT_EQ(app_.with(mInbox, {2}, ID_REMOVE, {answer(question)}),
            "2 0 5 1 0: in 2,in 1 | 1 of 1 message(s) removed from the handset.");
  app_.with(mInbox, {0, 1}, pDraft);
  EXPECT_EQ(app_.with(mInbox, {1}, ID_REMOVE),
            "1 0 5 1 2: in 2 | 1 of 1 message(s) removed from the handset.");
  strcpy(folder_.script().unreachable, "+1");
  EXPECT_EQ(app_.with(mInbox, {0}, ID_REMOVE),
            "1 0 5 1 2: in 2 | 0 of 1 message(s) removed from the handset. Not removed: refused.");
}

TEST_F(Filing, DroppedRowsMoveOrAreCopiedFromTheLastUp) {
  EXPECT_EQ(app_.with(pInbox, {0, 2, 3}, pSent), "3 0 2 4 0: Bravo,echo | 3 message(s) moved to PC\\Sent.");
  EXPECT_EQ(folder_.read(pInbox), folder_.storeOf(pInbox, {bravo, echo}));
  EXPECT_EQ(folder_.read(pSent), folder_.storeOf(pSent, {echo, again, alpha, delta}));
  const std::string copied = " | 2 message(s) copied to PC\\Draft.";
  EXPECT_EQ(app_.with(mInbox, {0, 1}, pDraft), "3 0 2 4 2: in 2,in 1,in 3" + copied);
  EXPECT_EQ(app_.with(pDraft, {}, pSent), "3 0 2 4 2: in 1,in 2" + copied);
  for (const Place place : {mobile, mInbox, mOutbox, pc, pDraft})
    EXPECT_EQ(app_.with(pDraft, {0}, place), "3 0 2 4 2: in 1,in 2" + copied);
  app_.command(ID_MOVE_TO_DRAFT);
  EXPECT_EQ(app_.with(pDraft, {1}, ID_MOVE_TO_SENT), "3 0 2 5 1: in 1 | 1 message(s) moved to PC\\Sent.");
  app_.command(ID_UNDO);
  for (const POINT at : {framework::toScreen(app_.list(), {50, 50}), POINT{1, 1}}) app_.dragTo(at);
  EXPECT_EQ(app_.look(), "3 0 2 4 2: in 1,in 2");
}

TEST_F(Filing, ADragEndsWithTheMouseOrTheFolder) {
  app_.choose(pInbox, {0});
  const std::function<void()> ends[] = {
      [this] { SetCapture(app_.window()); },
      [this] { app_.choose(pSent, {0}); },
  };
  for (const auto& end : ends) {
    app_.beginDrag();
    app_.drag(WM_MOUSEMOVE, app_.middleOf(pDraft));
    EXPECT_EQ(TreeView_GetDropHilight(app_.tree()), app_.itemOf(pDraft));
    end();
    EXPECT_TRUE(GetCapture() != app_.list() && !TreeView_GetDropHilight(app_.tree()));
    app_.drag(WM_LBUTTONUP, app_.middleOf(pDraft));
    ReleaseCapture();
  }
  EXPECT_EQ(app_.look(), "3 0 5 1 0: echo");
  app_.beginDrag();
  app_.drag(WM_MOUSEMOVE, app_.middleOf(pDraft));
  const POINT below = framework::toScreen(app_.tree(), {30, app_.frame()->tree().clientRect().bottom - 5});
  app_.drag(WM_MOUSEMOVE, below);  // empty space of the tree takes the item last hit
  app_.drag(WM_LBUTTONUP, below);
  EXPECT_EQ(app_.look(), "3 0 5 0 1: ");
}

TEST_F(Filing, SavingAppendsTheSelectedFromTheLastRowUp) {
  const Step name = [this](HWND dialog) {
    constexpr UINT fileName = 0x47c;
    EXPECT_EQ(textOf(dialog), "Save");
    SetWindowTextW(item(dialog, fileName), (folder_.path / "saved").c_str());
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  };
  app_.with(pInbox, {0, 2, 4}, ID_SAVE, {name});
  EXPECT_EQ(app_.status(), "3 message(s) saved in " + folder_.name() + "saved.txt.");
  app_.with(pInbox, {1}, ID_SAVE, {name, end(IDYES)});  // behind what is there
  EXPECT_EQ(app_.status(), "1 message(s) added to " + folder_.name() + "saved.txt.");
  const auto held = folder_.hold("saved.txt");
  app_.command(ID_SAVE, {name, end(IDYES), answer("saved.txt")});
  app_.command(ID_SAVE, {end(IDCANCEL)});
  EXPECT_EQ(folder_.read("saved.txt"), groupOf(echo) + groupOf(alpha) + groupOf(delta) + groupOf(bravo));
}

}  // namespace
