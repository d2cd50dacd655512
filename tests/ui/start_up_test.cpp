#include <gtest/gtest.h>

#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "running_app.h"
#include "skin/skin_state.h"

namespace {

using store::Folder;
using Boxes = std::vector<std::string>;

const std::string noLibrary = "Quillet: DLL Not Found :SMS_DLL2.dll";
const std::string noConnection = "Quillet: Can not connect,Please Check Connection";

TEST(StartUp, AsksTheHandsetInTheFixedOrderAndClosesItAtExit) {
  ProgramFolder folder;
  ScriptedLink& script = folder.script();
  {
    RunningApp app(folder);
    ASSERT_TRUE(app.start());
    EXPECT_EQ(
        std::string(script.log),
        "zelUnicode(1) zelOpenSIM(3,115200) zelInitSMS zelGetReceiverSMS zelGetHandSetSMS zelGetSenderSMS "
        "zelGetHandSetSMS ");
    script.logLength = 0;
    EXPECT_EQ(app.end(), 0);
  }
  EXPECT_EQ(std::string(script.log, script.logLength), "zelCloseSIM ");
}

TEST(StartUp, ShowsTheHandsetInboxWithCountsAndTitle) {
  ProgramFolder folder;
  putReceived(folder.script(), entryOf("one", "+31600000001", "26030211223304"));
  putReceived(folder.script(), entryOf("", "", ""));
  putSent(folder.script(), entryOf("out", "5", "26030211223304"));
  for (const std::uint16_t status : std::initializer_list<std::uint16_t>{1, 3, 7, 2, 5, 0})
    putHandset(folder.script(), entryOf("status " + std::to_string(status), "7", "t", status));
  folder.write("pcDraft.dat", "[PCDRAFT] \r\nContent = d \r\nPhone = 1 \r\nTime = t \r\nIndex =  \r\n");

  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(app.frame()->text(), "Quillet");
  EXPECT_EQ(app.label(Folder::MInbox), "Inbox(4)");
  EXPECT_EQ(app.label(Folder::MOutbox), "Outbox(2)");
  EXPECT_EQ(app.label(Folder::PInbox), "Inbox(0)");
  EXPECT_EQ(app.label(Folder::PDraft), "Draft(1)");
  EXPECT_EQ(app.column(0), (Boxes{"one", "", "status 1", "status 3"}));
  EXPECT_EQ(app.column(1), (Boxes{"+31600000001", "", "7", "7"}));
  EXPECT_EQ(app.column(2)[0], "2026-03-02 11:22:33");
  EXPECT_EQ(app.status(), "Mobile\\Inbox: 4, Mobile\\Outbox: 2, PC\\Inbox: 0, PC\\Sent: 0, PC\\Draft: 1");
}

TEST(StartUp, EndsWithItsMessageWhenTheHandsetCannotBeOpened) {
  for (const bool openFails : {true, false}) {
    ProgramFolder folder;
    (openFails ? folder.script().openResult : folder.script().initResult) = 0;
    const BoxWatcher boxes;
    RunningApp app(folder);
    EXPECT_FALSE(app.start());
    EXPECT_EQ(app.frame(), nullptr);
    EXPECT_EQ(boxes.seen(), Boxes{noConnection});
    const std::string log = folder.script().log;
    EXPECT_EQ(log.find("zelInitSMS") != std::string::npos, !openFails) << log;
  }
}

TEST(StartUp, GoesOnWithoutALibrary) {
  ProgramFolder folder(ProgramFolder::Link::none);
  const BoxWatcher boxes;
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(boxes.seen(), Boxes{noLibrary});
  EXPECT_EQ(app.label(Folder::MInbox), "Inbox(0)");
  EXPECT_EQ(app.end(), 0);
}

TEST(StartUp, TakesALibraryWithHalfTheNamesForOneWithoutMessages) {
  ProgramFolder folder(ProgramFolder::Link::half);
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(app.label(Folder::MInbox), "Inbox(0)");
  EXPECT_EQ(app.label(Folder::MOutbox), "Outbox(0)");
}

TEST(StartUp, ReadsThePortAsLeadingNumber) {
  struct Case {
    const char* text;
    int port;
  };
  for (const Case& c :
       {Case{"[port]\r\ncom=12\r\n", 12}, Case{"[PORT]\nCom = 4x", 4}, Case{"[port]\ncom=words", 0},
        Case{"[port]\ncom=", 0}, Case{"", -1}, Case{"[com]\nport=3", -1}}) {
    ProgramFolder folder;
    folder.write("port.ini", c.text);
    RunningApp app(folder);
    ASSERT_TRUE(app.start());
    EXPECT_EQ(app.port(), c.port) << c.text;
  }
  ProgramFolder folder;
  folder.remove("port.ini");
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(app.port(), -1);
}

TEST(StartUp, TakesTextsFromTheResourceLibraryAndTheRestFromTheProgram) {
  ProgramFolder folder;
  folder.copy(framework::moduleDirectory() + "strings_only.dll", "zelSMS.dll");
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(app.frame()->text(), "Quillet (fr)");
  EXPECT_EQ(app.tree().itemText(store::folderState().mobileGroup), "Téléphone");
  EXPECT_EQ(app.heading(0), "Texte");
  EXPECT_EQ(app.heading(1), "Sender");
  EXPECT_EQ(framework::moduleWithResource(RT_DIALOG, IDD_ABOUT), GetModuleHandleW(nullptr));
  EXPECT_TRUE(app.canRun(ID_REFRESH));
}

TEST(StartUp, ReadsTheSkinFont) {
  ProgramFolder folder;
  folder.write("Skin\\Default\\SMS\\skin.ini", "[Font]\r\nfacename=Courier New\r\nfontsize=11pt\r\n");
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(skin::skinState().fontFace, "Courier New");
  EXPECT_EQ(skin::skinState().fontSize, 11);
}

TEST(StartUp, OpensWhateverTheSkinIsLike) {
  ProgramFolder folder;
  const auto imagesNow = [&folder] {
    RunningApp app(folder);
    EXPECT_TRUE(app.start());
    return ImageList_GetImageCount(TreeView_GetImageList(app.tree().handle(), TVSIL_NORMAL));
  };
  EXPECT_EQ(imagesNow(), 7);
  folder.write("Skin\\Default\\SMS\\pc.png", "not an image");
  EXPECT_EQ(imagesNow(), 6);
  folder.remove("Skin\\Default\\SMS\\mobile.png");
  EXPECT_EQ(imagesNow(), 5);
  folder.remove("Skin\\Default\\SMS\\skin.ini");
  EXPECT_EQ(imagesNow(), 0);
}

TEST(StartUp, SecondProgramOfTheSameFolderEndsAtOnce) {
  ProgramFolder folder;
  RunningApp first(folder);
  ASSERT_TRUE(first.start());
  folder.script().logLength = 0;
  {
    RunningApp second(folder);
    EXPECT_FALSE(second.start());
  }
  EXPECT_EQ(folder.script().logLength, 0U);
  ProgramFolder other;
  RunningApp independent(other);
  EXPECT_TRUE(independent.start());
}

}  // namespace
