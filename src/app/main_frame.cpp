#include "app/main_frame.h"

#include <algorithm>

#include "app/toolbar_images.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"

namespace app {
namespace {

constexpr LONG leastWidth = 800;
constexpr LONG leastHeight = 580;
constexpr int treeWidth = 200;
constexpr int leastTreeWidth = 100;
constexpr int leastListWidth = 100;  // so that the bar cannot be pushed out of sight
constexpr SIZE initialPane{100, 100};

constexpr framework::CStatusBar::Indicator indicators[] = {
    {IDS_CAPS_LOCK, VK_CAPITAL},
    {IDS_NUM_LOCK, VK_NUMLOCK},
    {IDS_SCROLL_LOCK, VK_SCROLL},
};

}  // namespace

const framework::MessageMap* CMainFrame::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onMinMaxInfo<&CMainFrame::onMinMaxInfo>(),
  };
  static const framework::MessageMap map{entries, CFrameWnd::messageMap()};
  return &map;
}

const framework::CommandMap* CMainFrame::commandMap() const {
  static constexpr framework::CommandEntry entries[] = {
      framework::command<&CMainFrame::moveSplitter>(ID_MOVE_SPLITTER),
      framework::command<&CMainFrame::onFind>(ID_FIND),
      framework::command<&CMainFrame::onFindNext, &CMainFrame::canFindNext>(ID_FIND_NEXT),
      framework::command<&CMainFrame::onFindPrevious, &CMainFrame::canFindNext>(ID_FIND_PREVIOUS),
  };
  static const framework::CommandMap map{entries, CFrameWnd::commandMap()};
  return &map;
}

bool CMainFrame::onCreateClient(framework::CDocument& document) {
  if (!splitter_.createStatic(handle(), ID_CLIENT)) return false;
  auto list = std::make_unique<list::CQuilletView>();
  list::CQuilletView& shown = *list;
  if (!splitter_.createPane(1, std::move(list), initialPane, document) ||
      !splitter_.createPane(0, std::make_unique<tree::CLeftView>(services_, shown), initialPane, document)) {
    splitter_.destroy();
    return false;
  }
  splitter_.setColumnInfo(0, std::max(treeWidth, tree().wantedWidth()), leastTreeWidth);
  splitter_.setColumnInfo(1, 0, leastListWidth);
  static_cast<CQuilletDoc&>(document).listView = &shown;
  setActiveView(tree());
  return true;
}

bool CMainFrame::onCreateBars() {
  if (!toolBar().createBar(handle(), ID_TOOL_BAR, [this](framework::DockSide side) { dockToolBar(side); }) ||
      !toolBar().loadToolBar(IDR_MAINFRAME))
    return false;
  toolBar().setImageLists(loadToolBarImages(IDB_TOOLBAR_NORMAL), loadToolBarImages(IDB_TOOLBAR_DISABLED),
                          loadToolBarImages(IDB_TOOLBAR_HOT));
  if (!statusBar().createBar(handle(), ID_STATUS_BAR, indicators)) return false;
  statusBar().setMessage(framework::loadString(IDS_READY));
  dockToolBar(framework::DockSide::top);
  toolBar().setExtendedStyle(TBSTYLE_EX_DRAWDDARROWS);
  centerOnScreen();

  // Without a menu bar, the window's own menu is where About can be reached.
  const HMENU menu = GetSystemMenu(handle(), FALSE);
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, MF_STRING, ID_APP_ABOUT,
              framework::toWide(framework::loadString(IDS_ABOUT_MENU)).c_str());
  return true;
}

void CMainFrame::onMinMaxInfo(MINMAXINFO& info) {
  defaultProcessing();
  info.ptMinTrackSize = {leastWidth, leastHeight};
}

}  // namespace app
