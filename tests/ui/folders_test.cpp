#include "app/sought_text.h"
#include "running_app.h"

// What is shown of the folders, and the window around them.
namespace {

// One message in the handset inbox, two in its outbox, one, two and three in the PC folders.
class Folders : public Program {
 protected:
  void SetUp() override {
    folder_.receive("in");
    for (const char* text : {"out 1", "out 2"})
      folder_.add(folder_.script().sender, folder_.script().senderResult, text);
    folder_.put(pInbox, {{"pc in", "7", "2005/01/02  09:05:07"}});
    folder_.put(pSent, {{"sent 1"}, {"sent 2"}});
    folder_.put(pDraft, {{"draft 1"}, {"draft 2"}, {"draft 3"}});
    ASSERT_TRUE(app_.start());
    folder_.log();
  }
  void refresh(Steps steps = {}) { app_.command(ID_REFRESH, std::move(steps)); }
  // Of Save, Delete and Delete All those that the toolbar offers.
  std::string offered() {
    app_.settle();
    std::string all;
    for (const UINT command : {ID_SAVE, ID_DELETE, ID_DELETE_ALL})
      all += SendMessageW(app_.toolBar(), TB_ISBUTTONENABLED, command, 0) ? "1" : "0";
    return all;
  }
  std::string columnsOfPane(const std::string& phone) {
    const auto width = static_cast<int>(app_.frame()->list().clientRect().right);
    const std::string half = std::to_string(width / 2), quarter = std::to_string(width / 4);
    return "Content " + half + " " + phone + " " + quarter + " Time " + quarter;
  }
};

TEST_F(Folders, FillTheListAndGiveItTheirColumnsAfterAClick) {
  app_.show(pSent);
  EXPECT_EQ(app_.look() + " " + app_.columns(), "1 2 1 2 3: sent 1,sent 2 " + columnsOfPane("Sender"));
  const std::tuple<Place, const char*, std::string> folders[] = {
      {mOutbox, "out 1,out 2", "Receiver 200 Time 0"},
      {pDraft, "draft 1,draft 2,draft 3", "Receiver 200 Time 100"},
      {pInbox, "pc in", "Sender 200 Time 100"},
      {mInbox, "in", "Sender 200 Time 100"},
      {pSent, "sent 1,sent 2", "Receiver 200 Time 100"},
  };
  for (const auto& [folder, rows, columns] : folders) {
    app_.show(mobile);
    app_.show(folder, true);
    EXPECT_EQ(app_.look(), std::string("1 2 1 2 3: ") + rows);
    EXPECT_TRUE(app_.columns().ends_with(columns)) << rows << app_.columns();
    EXPECT_EQ(offered(), folder < pInbox ? "000" : "001");
    select(app_.list(), {0});
    EXPECT_EQ(offered(), folder < pInbox ? "100" : "111");
  }
  app_.show(pc);
  EXPECT_EQ(app_.look() + offered(), "1 2 1 2 3: 000");
}

TEST_F(Folders, TellTheWholeMessageInATip) {
  app_.show(pInbox);
  PostMessageW(app_.list(), WM_MOUSEMOVE, 0, MAKELPARAM(20, 30));
  app_.settle();
  NMTTDISPINFOW asked{.hdr = {.code = TTN_GETDISPINFOW}};
  SendMessageW(app_.list(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
  EXPECT_STREQ(asked.lpszText, L"pc in\r\n7\r\n2005/01/02  09:05:07");
}

TEST_F(Folders, OnPlatform98GoByTheTextOfThePath) {
  store::folderState().windows98Mode = true;
  store::folderState().lastSelectedItem = nullptr;
  app_.show(pInbox, true);
  EXPECT_EQ(app_.look(), "1 2 1 2 3: pc in");
  EXPECT_TRUE(
      app_.columns().ends_with("Receiver 200 Time 100"));  // the heading does not follow the selection
  app_.show(pc);
  EXPECT_EQ(app_.rows(), "pc in");  // nor does a group empty the list
  app_.show(pInbox);
  folder_.put(pInbox, {{"a"}, {"b"}});
  refresh();
  EXPECT_EQ(app_.look(), "1 2 2 2 3: a,b");
}

TEST_F(Folders, WidthsStayWithTheFolderUntilThePaneChanges) {
  folder_.put(pSent, std::vector<Message>(500, {"many"}));
  refresh();
  app_.show(pSent, true);
  ASSERT_TRUE(GetWindowLongW(app_.list(), GWL_STYLE) & WS_VSCROLL);
  ShowWindow(app_.window(), SW_MINIMIZE);
  ShowWindow(app_.window(), SW_RESTORE);
  EXPECT_TRUE(app_.columns().ends_with("Receiver 200 Time 100"));
  for (const Place folder : {pSent, mInbox}) {  // with a scroll bar and without
    app_.show(folder);
    SetWindowPos(app_.list(), nullptr, 0, 0, 700 + folder, 300, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(app_.columns(), columnsOfPane(folder == pSent ? "Receiver" : "Sender"));
    EXPECT_EQ(GetWindowLongW(app_.list(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL),
              folder == pSent ? WS_VSCROLL : 0);
  }
}

TEST_F(Folders, RefreshReadsEverythingAgainAndSaysWhatItCannot) {
  app_.show(pSent);
  folder_.put(pSent, {{"sent 3"}});
  folder_.receive("new");
  app_.key(app_.list(), VK_F5);
  EXPECT_EQ(app_.look(), "2 2 1 1 3: sent 3");
  {
    const auto held = folder_.hold("pcDraft.dat", 0);
    refresh({answer("pcDraft.dat")});
    EXPECT_EQ(app_.label(pDraft), "Draft");
  }
  folder_.write("pcSent.dat", folder_.storeOf(pSent, {{"whole"}}) + "rubbish");
  refresh();
  EXPECT_EQ(app_.label(pDraft) + app_.label(pSent), "Draft(3)Sent(2)");
  EXPECT_EQ(app_.status().substr(0, 67),
            "pcSent.dat holds lines that could not be read. Mobile\\Inbox: 2, Mob");
  app_.show(pSent);
  app_.command(ID_DELETE_ALL, {end(IDOK)});
  EXPECT_TRUE(app_.status().starts_with("Lines that could not be read are kept in ")) << app_.status();
  folder_.script().initResult = 0;
  refresh({answer("Can not connect,Please Check Connection")});
  EXPECT_EQ(app_.status(), "Not connected. Your messages are safe and come back with the next Refresh.");
  for (const Place folder : {mInbox, pDraft}) {
    app_.show(folder);
    EXPECT_EQ(app_.rows() + app_.label(pDraft), "Draft(3)");
  }
  folder_.script().initResult = 1;
  refresh();
  EXPECT_EQ(app_.look(), "2 2 1 0 3: draft 1,draft 2,draft 3");
}

TEST_F(Folders, TheToolbarShowsAllItsButtonsOnEverySide) {
  using framework::DockSide;
  for (const DockSide side : {DockSide::left, DockSide::bottom, DockSide::right, DockSide::top}) {
    app_.frame()->toolBar().setSide(side);
    app_.frame()->recalcLayout();
    RECT room{}, part{}, buttons[5]{};
    GetClientRect(app_.toolBar(), &room);
    for (RECT& button : buttons) {
      SendMessageW(app_.toolBar(), TB_GETITEMRECT, &button - buttons, reinterpret_cast<LPARAM>(&button));
      EXPECT_TRUE(IntersectRect(&part, &room, &button) && EqualRect(&part, &button));
      for (const RECT* other = buttons; other < &button; ++other)
        EXPECT_FALSE(IntersectRect(&part, other, &button));
    }
  }
}

TEST_F(Folders, TheFrameHasItsSizesAndKeys) {
  MINMAXINFO info{};
  SendMessageW(app_.window(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
  EXPECT_EQ(info.ptMinTrackSize.x * 1000 + info.ptMinTrackSize.y, 800580);
  SetFocus(app_.list());
  app_.key(app_.list(), VK_F6);
  EXPECT_EQ(GetFocus(), app_.tree());
  app_.key(app_.list(), VK_F1);
  EXPECT_EQ(app_.status(), "The manual is not beside the program.");
  for (const BOOL there : {FALSE, TRUE}) {
    if (there) folder_.write("manual.html", "");
    const Step look = [=](HWND about) { EXPECT_EQ(IsWindowVisible(item(about, IDC_MANUAL)), there); };
    app_.watch({look, press(IDOK)}, [this] { SendMessageW(app_.window(), WM_SYSCOMMAND, ID_APP_ABOUT, 0); });
  }
}

TEST(SoughtText, IsFoundInAnyLetterCaseAndWithoutAccentsUnlessTheCaseMatters) {
  const store::SmsRecord message{.Content = "Réunion à 9 h, ÉTÉ", .Time = "26030211223304", .Phone = "+31 6"};
  const std::tuple<const char*, bool, bool> rows[] = {
      {"REUNION A", false, true}, {"réunion", true, false},     {"Réunion", true, true}, {"eté", false, true},
      {"+31", false, true},       {"02 11:22:33", false, true}, {"9 H", true, false},    {"", false, false}};
  for (const auto& [text, matchCase, found] : rows)
    EXPECT_EQ(app::SoughtText(text, matchCase).isIn(message), found) << text;
}

}  // namespace
