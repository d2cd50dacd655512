#include <gtest/gtest.h>

#include "dialog_visit.h"
#include "framework/text.h"
#include "list/list_state.h"
#include "resources/resource_ids.h"
#include "running_app.h"
#include "store/folder_state.h"

namespace {

using store::Folder;
using Texts = std::vector<std::string>;

struct Message {
  const char* content;
  const char* phone;
  const char* time;
  int index;
};

std::string group(const Message& m) {
  return std::string("Content = ") + m.content + " \r\nPhone = " + m.phone + " \r\nTime = " + m.time +
         " \r\nIndex = " + std::to_string(m.index) + " \r\n";
}

std::string storeOf(const std::string& section, std::initializer_list<Message> messages) {
  std::string bytes = "[" + section + "] \r\n";
  for (const Message& m : messages) bytes += group(m);
  return bytes;
}

const Message delta{"delta", "4", "26030211223304", 7};
const Message bravo{"Bravo", "3", "2005/01/02  09:05:07", 5};
const Message alpha{"alpha", "2", "x", 9};
const Message again{"bravo", "1", "y", 1};
const Message echo{"echo", "5", "z", 2};

class Filing : public testing::Test {
 protected:
  void SetUp() override {
    list::listState() = {};
    for (const char* text : {"in 2", "in 1", "in 3"})
      putReceived(folder_.script(), entryOf(text, "+1", "26030211223304"));
    folder_.write("pcInbox.dat", storeOf("PCINBOX", {delta, bravo, alpha, again, echo}));
    ASSERT_TRUE(app_.start());
    app_.selectFolder(Folder::PInbox);
  }

  void select(std::initializer_list<int> rows) {
    app_.selectRows(rows);
    app_.settle();
  }
  void command(UINT id, UINT answer) {
    const DialogVisit visit({endWith(static_cast<INT_PTR>(answer))});
    app_.frame()->send(WM_COMMAND, id);
    app_.settle();
  }

  void beginDrag() {
    app_.beginDrag(0);
    ASSERT_TRUE(list::listState().drag.dragging);
  }
  void dragTo(POINT screen) {
    app_.dragTo(screen);
    EXPECT_FALSE(list::listState().drag.dragging);
    EXPECT_EQ(TreeView_GetDropHilight(app_.tree().handle()), nullptr);
  }
  HANDLE lock(const char* name) {
    return CreateFileA((folder_.path() + name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       0, nullptr);
  }
  // List, table, label and file of a folder agree when a fresh reading changes nothing.
  void expectAgreement(Folder folder) {
    app_.selectFolder(folder);
    const Texts shown = app_.column(0);
    EXPECT_EQ(app_.tree().tables()[folder].size(), shown.size());
    const std::string label = app_.label(folder);
    app_.tree().reload(folder);
    EXPECT_EQ(app_.label(folder), label);
    ASSERT_EQ(app_.tree().tables()[folder].size(), shown.size());
    for (std::size_t i = 0; i < shown.size(); ++i)
      EXPECT_EQ(app_.tree().tables()[folder][i].Content, shown[i]);
  }

  ProgramFolder folder_;
  RunningApp app_{folder_};
};

TEST_F(Filing, SortingAPcFolderStaysInTableAndFile) {
  app_.clickHeading(0);
  EXPECT_EQ(app_.column(0), (Texts{"alpha", "Bravo", "bravo", "delta", "echo"}));
  const std::string sorted = folder_.read("pcInbox.dat");
  EXPECT_EQ(sorted, storeOf("PCINBOX", {{"alpha", "2", "x", 0},
                                        {"Bravo", "3", "2005/01/02  09:05:07", 1},
                                        {"bravo", "1", "y", 2},
                                        {"delta", "4", "2026-03-02 11:22:33", 3},
                                        {"echo", "5", "z", 4}}));
  app_.clickHeading(0);
  EXPECT_EQ(folder_.read("pcInbox.dat"), sorted);
  app_.clickHeading(1);
  EXPECT_EQ(app_.column(1), (Texts{"1", "2", "3", "4", "5"}));
  EXPECT_EQ(list::listState().SortKind, "C");
  expectAgreement(Folder::PInbox);
}

// What no code page has comes last, when much of the new file has been written already.
TEST_F(Filing, SortingALargeFolderThatOnlyUtf8Holds) {
  const std::string last = "\xE8\xA8\x8A\xE6\x81\xAF \xE2\x82\xAC \xD0\x96";
  const std::string utf8 = "\xEF\xBB\xBF" + storeOf("PCINBOX", {{last.c_str(), "6", "t", 0}});
  std::string others;
  std::string sorted;
  for (int i = 0; i < 2000; ++i) {
    const std::string content = std::to_string(1000 + i / 2) + std::string(160, 'm');
    others += group({content.c_str(), "5", "t", 0});
    sorted += group({content.c_str(), "5", "t", i});
  }
  folder_.write("pcInbox.dat", utf8 + others);
  app_.selectFolder(Folder::PSent);
  app_.tree().reload(Folder::PInbox);
  app_.selectFolder(Folder::PInbox);
  app_.clickHeading(0);
  EXPECT_TRUE(folder_.read("pcInbox.dat") ==
              "\xEF\xBB\xBF" + storeOf("PCINBOX", {}) + sorted + group({last.c_str(), "6", "t", 2000}));
}

TEST_F(Filing, SortingAHandsetFolderLeavesItsTable) {
  app_.selectFolder(Folder::MInbox);
  app_.clickHeading(0);
  EXPECT_EQ(app_.column(0), (Texts{"in 1", "in 2", "in 3"}));
  EXPECT_EQ(app_.tree().tables()[Folder::MInbox][0].Content, "in 2");
  EXPECT_EQ(app_.list().itemData(0), 1);  // the row stands for its own message
  select({0});
  dragTo(app_.middleOf(Folder::PDraft));
  app_.selectFolder(Folder::PDraft);
  EXPECT_EQ(app_.column(0), Texts{"in 1"});
}

TEST_F(Filing, DeleteTakesTheSelectedAndKeepsTheirNumbers) {
  select({1, 3});
  command(ID_DELETE, IDOK);
  EXPECT_EQ(app_.column(0), (Texts{"delta", "alpha", "echo"}));
  EXPECT_EQ(folder_.read("pcInbox.dat"), storeOf("PCINBOX", {delta, alpha, echo}));
  EXPECT_EQ(app_.label(Folder::PInbox), "Inbox(3)");
  select({0});
  command(ID_DELETE, IDOK);  // rows and slots agree again
  expectAgreement(Folder::PInbox);
  EXPECT_EQ(app_.column(0), (Texts{"alpha", "echo"}));
}

TEST_F(Filing, OnlyCancelRefusesToDelete) {
  const std::string before = folder_.read("pcInbox.dat");
  select({0});
  command(ID_DELETE, IDCANCEL);
  command(ID_DELETE_ALL, IDCANCEL);
  EXPECT_EQ(folder_.read("pcInbox.dat"), before);
  EXPECT_EQ(app_.list().itemCount(), 5);
  command(ID_DELETE_ALL, 7);
  EXPECT_EQ(app_.list().itemCount(), 0);
  EXPECT_EQ(folder_.read("pcInbox.dat"), "[PCINBOX] \r\n");
  EXPECT_EQ(app_.label(Folder::PInbox), "Inbox(0)");
  const BoxWatcher boxes;
  app_.frame()->send(WM_COMMAND, ID_DELETE_ALL);
  EXPECT_TRUE(boxes.seen().empty());
}

TEST_F(Filing, KeysDeleteAndSelectAll) {
  app_.press(app_.list().handle(), 'A', true);
  EXPECT_EQ(app_.list().selectedCount(), 5);
  const DialogVisit visit({endWith(IDOK)});
  app_.press(app_.list().handle(), VK_DELETE);
  EXPECT_EQ(app_.list().itemCount(), 0);
}

TEST_F(Filing, DroppedRowsMoveInReverseOrder) {
  folder_.write("pcSent.dat", storeOf("PCSENT", {echo}));
  app_.tree().reload(Folder::PSent);
  select({0, 2, 3});
  dragTo(app_.middleOf(Folder::PSent));
  EXPECT_EQ(app_.column(0), (Texts{"Bravo", "echo"}));
  EXPECT_EQ(folder_.read("pcInbox.dat"), storeOf("PCINBOX", {bravo, echo}));
  EXPECT_EQ(folder_.read("pcSent.dat"), storeOf("PCSENT", {echo, again, alpha, delta}));
  EXPECT_EQ(app_.label(Folder::PInbox), "Inbox(2)");
  EXPECT_EQ(app_.label(Folder::PSent), "Sent(4)");
  expectAgreement(Folder::PSent);
}

TEST_F(Filing, RowsOfTheHandsetAreCopied) {
  app_.selectFolder(Folder::MInbox);
  select({0, 1});
  dragTo(app_.middleOf(Folder::PDraft));
  EXPECT_EQ(app_.list().itemCount(), 3);
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(2)");
  EXPECT_EQ(folder_.read("pcDraft.dat").find("[PCDRAFT] \r\nContent = in 1 "), 0U);
}

TEST_F(Filing, DropsThatChangeNothing) {
  const std::string before = folder_.read("pcInbox.dat");
  select({0});
  const store::FolderState& state = store::folderState();
  for (const POINT at :
       {app_.middleOf(Folder::PInbox), app_.middleOf(Folder::MInbox), app_.middleOf(Folder::MOutbox),
        app_.middleOf(state.mobileGroup), app_.middleOf(state.pcGroup)})
    dragTo(at);
  POINT overList{50, 50};
  ClientToScreen(app_.list().handle(), &overList);
  dragTo(overList);
  dragTo({1, 1});  // outside of everything
  select({});
  dragTo(app_.middleOf(Folder::PSent));
  EXPECT_EQ(folder_.read("pcInbox.dat"), before);
  EXPECT_EQ(folder_.read("pcSent.dat"), "");
  EXPECT_EQ(app_.list().itemCount(), 5);
}

TEST_F(Filing, EmptyTreeSpaceTakesTheItemLastHit) {
  select({0});
  beginDrag();
  app_.drag(WM_MOUSEMOVE, app_.middleOf(Folder::PDraft));
  EXPECT_EQ(TreeView_GetDropHilight(app_.tree().handle()),
            store::folderState().items[store::position(Folder::PDraft)]);
  POINT below{30, app_.tree().clientRect().bottom - 5};
  ClientToScreen(app_.tree().handle(), &below);
  app_.drag(WM_MOUSEMOVE, below);
  app_.drag(WM_LBUTTONUP, below);
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(1)");
}

TEST_F(Filing, LosingTheMouseEndsTheDrag) {
  select({0});
  const auto expectEnded = [this] {
    EXPECT_FALSE(list::listState().drag.dragging);
    EXPECT_NE(GetCapture(), app_.list().handle());
    app_.drag(WM_LBUTTONUP, app_.middleOf(Folder::PSent));
    EXPECT_EQ(app_.list().itemCount(), 5);
  };
  beginDrag();
  app_.drag(WM_MOUSEMOVE, app_.middleOf(Folder::PSent));
  app_.list().send(WM_KEYDOWN, VK_ESCAPE);
  expectEnded();
  beginDrag();
  SetCapture(app_.frame()->handle());
  expectEnded();
  ReleaseCapture();
}

TEST_F(Filing, ChangeOfFolderEndsTheDrag) {
  folder_.write("pcSent.dat", storeOf("PCSENT", {echo}));
  app_.tree().reload(Folder::PSent);
  const std::string before = folder_.read("pcInbox.dat");
  select({0});
  beginDrag();
  app_.selectFolder(Folder::PSent);
  EXPECT_FALSE(list::listState().drag.dragging);
  select({0});
  app_.drag(WM_LBUTTONUP, app_.middleOf(Folder::PDraft));
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(0)");
  EXPECT_EQ(folder_.read("pcInbox.dat"), before);
}

TEST_F(Filing, MoveThatFailsLosesNothing) {
  const std::string before = folder_.read("pcInbox.dat");
  folder_.write("pcSent.dat", storeOf("PCSENT", {echo}));
  app_.tree().reload(Folder::PSent);
  select({0, 1});
  const BoxWatcher boxes;
  // The target cannot be written: nothing leaves the source.
  HANDLE held = lock("pcSent.dat");
  dragTo(app_.middleOf(Folder::PSent));
  CloseHandle(held);
  EXPECT_EQ(boxes.seen().size(), 1U);
  EXPECT_EQ(app_.list().itemCount(), 5);
  EXPECT_EQ(folder_.read("pcInbox.dat"), before);
  EXPECT_EQ(folder_.read("pcSent.dat"), storeOf("PCSENT", {echo}));
  // The source cannot: they are taken out of the target again.
  held = lock("pcInbox.dat");
  dragTo(app_.middleOf(Folder::PSent));
  CloseHandle(held);
  EXPECT_EQ(boxes.seen().size(), 2U);
  EXPECT_EQ(app_.list().itemCount(), 5);
  EXPECT_EQ(folder_.read("pcSent.dat"), storeOf("PCSENT", {echo}));
  expectAgreement(Folder::PSent);
  expectAgreement(Folder::PInbox);
}

TEST_F(Filing, SaveAppendsTheSelectedFromTheLastRowUp) {
  const std::string path = folder_.path() + "saved.txt";
  const auto save = [&](std::vector<DialogVisit::Step> further) {
    further.insert(further.begin(), [&](HWND dialog) {
      const HWND combo = GetDlgItem(dialog, 0x47c);
      const HWND name = combo ? combo : GetDlgItem(dialog, 0x480);
      ASSERT_NE(name, nullptr);
      SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(framework::toWide(path).c_str()));
      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    const DialogVisit visit(std::move(further));
    app_.frame()->send(WM_COMMAND, ID_SAVE);
  };
  select({0, 2, 4});
  save({});
  EXPECT_EQ(folder_.read("saved.txt"), group(echo) + group(alpha) + group(delta));
  // Into the same file again, once it may be: behind what is there.
  select({1});
  save({endWith(IDYES)});
  EXPECT_EQ(folder_.read("saved.txt"), group(echo) + group(alpha) + group(delta) + group(bravo));
}

TEST_F(Filing, DeletingHalfOfAThousandIsDoneInSeconds) {
  std::string bytes = "[PCINBOX] \r\n";
  for (int i = 0; i < 1000; ++i) bytes += group({"many", "1", "t", i});
  folder_.write("pcInbox.dat", bytes);
  app_.press(app_.list().handle(), VK_F5);
  for (int row = 0; row < 1000; row += 2)
    ListView_SetItemState(app_.list().handle(), row, LVIS_SELECTED, LVIS_SELECTED);
  const ULONGLONG begin = GetTickCount64();
  command(ID_DELETE, IDOK);
  EXPECT_LT(GetTickCount64() - begin, 30'000U);
  EXPECT_EQ(app_.list().itemCount(), 500);
  EXPECT_EQ(app_.status(), "500 message(s) deleted.");
  expectAgreement(Folder::PInbox);
}

}  // namespace
