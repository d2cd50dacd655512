#pragma once

#include <span>
#include <string>

#include "framework/handles.h"
#include "framework/menu.h"
#include "framework/status_bar.h"
#include "framework/tool_bar.h"
#include "framework/view.h"
#include "framework/wnd.h"

namespace framework {

// The main window: a toolbar at one side, a status bar at the bottom, the client window in the rest. Leads
// commands to the active view, the other views, the document, itself and the application, in that order.
class CFrameWnd : public CWnd {
 public:
  // Creates the window with the title and accelerators of that resource; no menu.
  bool loadFrame(UINT resourceId, const std::string& title, CDocument& document);
  CDocument* document() const { return document_; }

  // Tells all views that the frame is complete.
  void initialUpdate();
  // Shows the state of every command on the toolbar and of the keys on the status bar; called when idle.
  void updateOnIdle();
  void recalcLayout();
  // Shows a context menu at a point of the screen; its rows are as enabled as their commands.
  void showMenu(std::span<const MenuRow> rows, POINT at);

  CToolBar& toolBar() { return toolBar_; }
  CStatusBar& statusBar() { return statusBar_; }
  // The view that has, or last had, the keyboard.
  CView* activeView();
  void setActiveView(CView& view) { activeView_ = &view; }

  std::optional<CommandSite> findCommand(UINT id) override;
  bool preTranslateMessage(MSG& message) override;

 protected:
  // Fill the client area and create the bars, in this order, while the window is being created.
  virtual bool onCreateClient(CDocument& document) = 0;
  virtual bool onCreateBars() = 0;
  // The window that fills the client area.
  virtual HWND clientWindow() const = 0;

  void preCreateWindow(CREATESTRUCTW& c) override;
  const MessageMap* messageMap() const override;
  void centerOnScreen();
  void dockToolBar(DockSide side);
  void focusNextPane();

 private:
  bool onCreated(const CREATESTRUCTW& c);
  UniqueMenu menuOf(std::span<const MenuRow> rows);
  void onSized(int width, int height);
  void onSetFocus();
  void onCloseWindow();
  void onDestroyed();
  LRESULT onCommand(WPARAM wParam, LPARAM lParam);
  LRESULT onQueryEndSession();
  void onEndSession(WPARAM ending, LPARAM reason);
  LRESULT onSysCommand(WPARAM wParam, LPARAM lParam);

  CDocument* document_ = nullptr;
  CToolBar toolBar_;
  CStatusBar statusBar_;
  CView* activeView_ = nullptr;
  HACCEL accelerators_ = nullptr;
  UINT resourceId_ = 0;
};

}  // namespace framework
