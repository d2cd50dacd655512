#include <gtest/gtest.h>

#include "resources/resource_ids.h"
#include "running_app.h"
#include "store/folder_state.h"

namespace {

using store::Folder;
using Texts = std::vector<std::string>;

std::string storeOf(const std::string& section, const Texts& contents) {
  std::string bytes = "[" + section + "] \r\n";
  for (const std::string& content : contents)
    bytes += "Content = " + content + " \r\nPhone = 1 \r\nTime = 2005/01/02  09:05:07 \r\nIndex = 0 \r\n";
  return bytes;
}

// One message in the handset inbox, two in its outbox, one, two and three in the PC folders.
class Folders : public testing::Test {
 protected:
  void SetUp() override {
    putReceived(folder_.script(), entryOf("in", "+1", "26030211223304"));
    putSent(folder_.script(), entryOf("out 1", "+2", "26030211223304"));
    putSent(folder_.script(), entryOf("out 2", "+3", "26030211223304"));
    folder_.write("pcInbox.dat", storeOf("PCINBOX", {"pc in"}));
    folder_.write("pcSent.dat", storeOf("PCSENT", {"sent 1", "sent 2"}));
    folder_.write("pcDraft.dat", storeOf("PCDRAFT", {"draft 1", "draft 2", "draft 3"}));
    ASSERT_TRUE(app_.start());
    app_.settle();
  }

  void selectRow(int row) { ListView_SetItemState(app_.list().handle(), row, LVIS_SELECTED, LVIS_SELECTED); }

  ProgramFolder folder_;
  RunningApp app_{folder_};
};

TEST_F(Folders, SelectionFillsTheListButChangesColumnsOnlyAfterAClick) {
  app_.frame()->send(WM_SIZE);
  const int paneWidth = static_cast<int>(app_.list().clientRect().right);
  app_.selectFolder(Folder::PSent);
  EXPECT_EQ(app_.column(0), (Texts{"sent 1", "sent 2"}));
  EXPECT_EQ(app_.heading(1), "Sender");
  EXPECT_EQ(app_.width(2), paneWidth / 4);

  struct Case {
    Folder folder;
    const char* heading;
    int timeWidth;
    Texts contents;
  };
  for (const Case& c :
       {Case{Folder::MOutbox, "Receiver", 0, {"out 1", "out 2"}},
        Case{Folder::PDraft, "Receiver", 100, {"draft 1", "draft 2", "draft 3"}},
        Case{Folder::PInbox, "Sender", 100, {"pc in"}}, Case{Folder::MInbox, "Sender", 100, {"in"}},
        Case{Folder::PSent, "Receiver", 100, {"sent 1", "sent 2"}}}) {
    app_.clickFolder(c.folder);
    EXPECT_EQ(app_.column(0), c.contents);
    EXPECT_EQ(app_.heading(1), c.heading);
    EXPECT_EQ(app_.width(1), 200);
    EXPECT_EQ(app_.width(2), c.timeWidth);
  }
  EXPECT_EQ(app_.column(1), (Texts{"1", "1"}));  // the new column shows the rows' numbers
  EXPECT_EQ(app_.column(2)[0], "2005/01/02  09:05:07");
}

TEST_F(Folders, GroupsEmptyTheList) {
  for (const store::TreeItem group : {store::folderState().mobileGroup, store::folderState().pcGroup}) {
    app_.selectFolder(Folder::PDraft);
    EXPECT_EQ(app_.list().itemCount(), 3);
    app_.tree().selectItem(group);
    EXPECT_EQ(app_.list().itemCount(), 0);
    app_.settle();
    EXPECT_FALSE(app_.canRun(ID_DELETE_ALL));
  }
}

TEST_F(Folders, PathsNameGroupAndFolder) {
  app_.selectFolder(Folder::PDraft);
  EXPECT_EQ(store::folderState().selectedPath, "PC\\Draft(3)");
  EXPECT_EQ(app_.tree().itemPath(store::folderState().mobileGroup), "Mobile");
}

TEST_F(Folders, Platform98GoesByTheTextOfThePath) {
  store::folderState().windows98Mode = true;
  store::folderState().lastSelectedItem = nullptr;
  app_.clickFolder(Folder::PInbox);
  EXPECT_EQ(app_.column(0), Texts{"pc in"});
  EXPECT_EQ(app_.heading(1), "Receiver");  // there the heading does not follow the selection
  app_.tree().selectItem(store::folderState().pcGroup);
  EXPECT_EQ(app_.column(0), Texts{"pc in"});  // nor does a group empty the list
  folder_.write("pcInbox.dat", storeOf("PCINBOX", {"a", "b"}));
  EXPECT_EQ(app_.tree().refreshCount("PC\\Inbox(1)"), 1);
  EXPECT_EQ(app_.label(Folder::PInbox), "Inbox(2)");
  EXPECT_EQ(app_.tree().refreshCount("elsewhere"), 1);
}

TEST_F(Folders, CommandsFollowSelectionAndFolder) {
  for (const Folder folder : store::allFolders) {
    app_.selectFolder(folder);
    const bool onPc = store::isOnPc(folder);
    EXPECT_FALSE(app_.canRun(ID_SAVE));
    EXPECT_FALSE(app_.canRun(ID_DELETE));
    EXPECT_EQ(app_.canRun(ID_DELETE_ALL), onPc);
    selectRow(0);
    EXPECT_TRUE(app_.canRun(ID_SAVE));
    EXPECT_EQ(app_.canRun(ID_DELETE), onPc);
    app_.settle();
    EXPECT_TRUE(app_.frame()->toolBar().isEnabled(ID_SAVE));
    EXPECT_EQ(app_.frame()->toolBar().isEnabled(ID_DELETE), onPc);
    EXPECT_EQ(app_.frame()->toolBar().isEnabled(ID_DELETE_ALL), onPc);
  }
}

TEST_F(Folders, ScrollBarLeavesTheFoldersColumnsAlone) {
  folder_.write("pcSent.dat", storeOf("PCSENT", Texts(500, "many")));
  app_.press(app_.list().handle(), VK_F5);
  app_.clickFolder(Folder::PSent);
  ASSERT_TRUE(GetWindowLongW(app_.list().handle(), GWL_STYLE) & WS_VSCROLL);
  EXPECT_EQ(app_.width(1), 200);
  EXPECT_EQ(app_.width(2), 100);
  // Columns that only follow the pane make room for it.
  SetWindowPos(app_.list().handle(), nullptr, 0, 0, 700, 300, SWP_NOMOVE | SWP_NOZORDER);
  const int client = static_cast<int>(app_.list().clientRect().right);
  EXPECT_LT(client, 698);
  EXPECT_EQ(app_.width(0), client / 2);
  EXPECT_FALSE(GetWindowLongW(app_.list().handle(), GWL_STYLE) & WS_HSCROLL);
}

TEST_F(Folders, MinimisingLeavesTheColumnsAlone) {
  app_.clickFolder(Folder::MOutbox);
  ShowWindow(app_.frame()->handle(), SW_MINIMIZE);
  ShowWindow(app_.frame()->handle(), SW_RESTORE);
  EXPECT_EQ(app_.width(1), 200);
  EXPECT_EQ(app_.width(2), 0);
}

TEST_F(Folders, ColumnsFollowThePane) {
  SetWindowPos(app_.list().handle(), nullptr, 0, 0, 802, 300, SWP_NOMOVE | SWP_NOZORDER);
  const int client = static_cast<int>(app_.list().clientRect().right);
  ASSERT_EQ(client, 800);
  EXPECT_EQ((std::array{app_.width(0), app_.width(1), app_.width(2)}), (std::array{400, 200, 200}));
}

TEST_F(Folders, RefreshReadsEverythingAgainInOrder) {
  app_.selectFolder(Folder::PSent);
  folder_.write("pcSent.dat", storeOf("PCSENT", {"sent 1", "sent 2", "sent 3"}));
  putReceived(folder_.script(), entryOf("new", "+9", "26030211223304"));
  folder_.script().logLength = 0;
  app_.press(app_.list().handle(), VK_F5);
  EXPECT_EQ(std::string(folder_.script().log, folder_.script().logLength),
            "zelCloseSIM zelOpenSIM(3,115200) zelInitSMS zelGetReceiverSMS zelGetHandSetSMS zelGetSenderSMS "
            "zelGetHandSetSMS ");
  EXPECT_EQ(app_.label(Folder::MInbox), "Inbox(2)");
  EXPECT_EQ(app_.label(Folder::PSent), "Sent(3)");
  EXPECT_EQ(app_.column(0), (Texts{"sent 1", "sent 2", "sent 3"}));
}

TEST_F(Folders, FailedRefreshEmptiesTheListAndKeepsTheLabels) {
  folder_.script().initResult = 0;
  const BoxWatcher boxes;
  app_.press(app_.list().handle(), VK_F5);
  EXPECT_EQ(boxes.seen(), Texts{"Quillet: Can not connect,Please Check Connection"});
  EXPECT_EQ(app_.list().itemCount(), 0);
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(3)");
  app_.selectFolder(Folder::PDraft);
  EXPECT_EQ(app_.list().itemCount(), 0);
  folder_.script().initResult = 1;
  app_.press(app_.list().handle(), VK_F5);
  EXPECT_EQ(app_.list().itemCount(), 3);
}

TEST_F(Folders, StoreThatCannotBeReadIsToldAndLeftAlone) {
  const std::string path = folder_.path() + "pcDraft.dat";
  const HANDLE lock = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(lock, INVALID_HANDLE_VALUE);
  {
    const BoxWatcher boxes;
    app_.press(app_.list().handle(), VK_F5);
    ASSERT_EQ(boxes.seen().size(), 1U);
    EXPECT_NE(boxes.seen()[0].find("pcDraft.dat"), std::string::npos) << boxes.seen()[0];
  }
  CloseHandle(lock);
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(0)");
  app_.press(app_.list().handle(), VK_F5);
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(3)");
}

TEST_F(Folders, DamagedStoreIsNamedInTheStatusBar) {
  folder_.write("pcSent.dat", storeOf("PCSENT", {"whole"}) + "Content = half");
  app_.press(app_.list().handle(), VK_F5);
  EXPECT_EQ(app_.label(Folder::PSent), "Sent(2)");
  EXPECT_NE(app_.status().find("pcSent.dat"), std::string::npos) << app_.status();
}

TEST_F(Folders, ThousandsOfRowsAreAllShown) {
  folder_.write("pcInbox.dat", storeOf("PCINBOX", Texts(3000, "many")));
  app_.press(app_.list().handle(), VK_F5);
  app_.selectFolder(Folder::PInbox);
  EXPECT_EQ(app_.label(Folder::PInbox), "Inbox(3000)");
  EXPECT_EQ(app_.list().itemCount(), 3000);
  EXPECT_EQ(app_.list().itemData(2999), 2999);
}

TEST(RefreshWithoutLibrary, ShowsItsMessageAndReadsThePcFolders) {
  ProgramFolder folder(ProgramFolder::Link::none);
  const BoxWatcher boxes;
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  folder.write("pcDraft.dat", storeOf("PCDRAFT", {"kept"}));
  app.press(app.list().handle(), VK_F5);
  EXPECT_EQ(boxes.seen(), Texts(2, "Quillet: DLL Not Found :SMS_DLL2.dll"));
  EXPECT_EQ(app.label(Folder::PDraft), "Draft(1)");
}

}  // namespace
