#include <gtest/gtest.h>

#include "framework/dialog.h"
#include "framework/tool_bar.h"
#include "resources/resource_ids.h"
#include "running_app.h"

namespace {

using framework::DockSide;

class Frame : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(app_.start());
    app_.settle();
  }

  RECT inFrame(HWND window) {
    RECT rect;
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, app_.frame()->handle(), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
  }

  ProgramFolder folder_;
  RunningApp app_{folder_};
};

TEST_F(Frame, CannotBecomeSmallerThanItsLeastSize) {
  MINMAXINFO info{};
  app_.frame()->send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
  EXPECT_EQ(info.ptMinTrackSize.x, 800);
  EXPECT_EQ(info.ptMinTrackSize.y, 580);
}

TEST_F(Frame, HasNoMenuAndFiveButtonsWithTips) {
  EXPECT_EQ(GetMenu(app_.frame()->handle()), nullptr);
  EXPECT_EQ(app_.frame()->toolBar().commands(),
            (std::vector<UINT>{ID_NEW, ID_SAVE, ID_DELETE, ID_DELETE_ALL, ID_REFRESH}));
  EXPECT_EQ(framework::CToolBar::tipOf("\nDeleteAll"), "DeleteAll");
  EXPECT_EQ(framework::CToolBar::tipOf("plain"), "plain");
}

TEST_F(Frame, SplitterStartsAt200AndStopsAt100) {
  framework::CSplitterWnd& splitter = app_.frame()->splitter();
  EXPECT_EQ(splitter.columnWidth(0), 200);
  const auto drag = [&](int from, int to) {
    splitter.send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 50));
    splitter.send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, 50));
    splitter.send(WM_LBUTTONUP, 0, MAKELPARAM(to, 50));
  };
  drag(202, 302);
  EXPECT_EQ(splitter.columnWidth(0), 300);
  drag(302, 5);
  EXPECT_EQ(splitter.columnWidth(0), 100);
  drag(102, 30000);
  EXPECT_GE(splitter.columnWidth(1), 100);
  // A move without the button held changes nothing.
  const int before = splitter.columnWidth(0);
  splitter.send(WM_MOUSEMOVE, 0, MAKELPARAM(150, 50));
  EXPECT_EQ(splitter.columnWidth(0), before);
}

TEST_F(Frame, SplitterMovesByKeyboard) {
  framework::CSplitterWnd& splitter = app_.frame()->splitter();
  SetFocus(app_.tree().handle());
  app_.press(app_.tree().handle(), VK_F8);
  ASSERT_EQ(GetFocus(), splitter.handle());
  app_.press(splitter.handle(), VK_RIGHT);
  EXPECT_GT(splitter.columnWidth(0), 200);
  app_.press(splitter.handle(), VK_ESCAPE);
  EXPECT_EQ(splitter.columnWidth(0), 200);
  EXPECT_EQ(GetFocus(), app_.tree().handle());
}

TEST_F(Frame, TabGoesFromPaneToPane) {
  SetFocus(app_.tree().handle());
  app_.press(app_.tree().handle(), VK_TAB);
  EXPECT_EQ(GetFocus(), app_.list().handle());
  app_.press(app_.list().handle(), VK_F6);
  EXPECT_EQ(GetFocus(), app_.tree().handle());
}

TEST_F(Frame, ToolBarDocksOnEverySideByItsGripper) {
  framework::CToolBar& bar = app_.frame()->toolBar();
  const auto dropAt = [&](POINT inFrameClient) {
    bar.send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    MapWindowPoints(app_.frame()->handle(), bar.handle(), &inFrameClient, 1);
    bar.send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(inFrameClient.x, inFrameClient.y));
    bar.send(WM_LBUTTONUP, 0, 0);
    app_.settle();
  };
  const RECT client = app_.frame()->clientRect();
  const LONG middleX = client.right / 2;
  const LONG middleY = client.bottom / 2;

  dropAt({3, middleY});
  EXPECT_EQ(bar.side(), DockSide::left);
  EXPECT_EQ(inFrame(bar.handle()).right, inFrame(app_.frame()->splitter().handle()).left);
  dropAt({middleX, client.bottom - 3});
  EXPECT_EQ(bar.side(), DockSide::bottom);
  EXPECT_EQ(inFrame(bar.handle()).bottom, inFrame(app_.frame()->statusBar().handle()).top);
  dropAt({client.right - 3, middleY});
  EXPECT_EQ(bar.side(), DockSide::right);
  dropAt({middleX, middleY});  // far from every side: stays
  EXPECT_EQ(bar.side(), DockSide::right);
  dropAt({middleX, 3});
  EXPECT_EQ(bar.side(), DockSide::top);
  EXPECT_EQ(inFrame(app_.frame()->splitter().handle()).top, inFrame(bar.handle()).bottom);
}

TEST_F(Frame, AcceleratorsReachTheirCommandsAndNothingElse) {
  EXPECT_FALSE(app_.canRun(ID_OPEN));
  folder_.script().logLength = 0;
  app_.press(app_.tree().handle(), 'O', true);
  EXPECT_EQ(folder_.script().logLength, 0U);
  app_.press(app_.tree().handle(), VK_F5);
  EXPECT_NE(folder_.script().logLength, 0U);
}

TEST_F(Frame, AboutNamesTheProgramAndItsVersion) {
  const BoxWatcher boxes;
  app_.frame()->send(WM_SYSCOMMAND, ID_APP_ABOUT);
  ASSERT_EQ(boxes.seen().size(), 1U);
  EXPECT_NE(boxes.seen()[0].find("Quillet 1."), std::string::npos) << boxes.seen()[0];
}

TEST_F(Frame, ClosingEndsTheProgram) {
  app_.frame()->send(WM_CLOSE);
  MSG message;
  bool quit = false;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) quit = quit || message.message == WM_QUIT;
  EXPECT_TRUE(quit);
  EXPECT_EQ(app_.frame()->handle(), nullptr);
}

}  // namespace
