#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/handles.h"
#include "framework/wnd.h"

namespace framework {

enum class DockSide { top, bottom, left, right };

// The toolbar with its gripper: a strip along one side of the frame that holds a flat toolbar control.
// Dragging the gripper to another side of the frame docks it there. Owned by the frame class.
class CToolBar : public CWnd {
 public:
  using DockRequest = std::function<void(DockSide)>;

  // `dockTo` is called while the gripper is dragged over another side of the frame.
  bool createBar(HWND frame, UINT id, DockRequest dockTo);
  // Buttons from the toolbar resource: version, image width, image height, count, command ids (16 bits each).
  bool loadToolBar(UINT resourceId);
  // Images in the order of the buttons. The bar keeps the lists.
  void setImageLists(UniqueImageList normal, UniqueImageList disabled, UniqueImageList hot);
  void setExtendedStyle(DWORD style);

  const std::vector<UINT>& commands() const { return commands_; }
  void enable(UINT command, bool enabled);
  bool isEnabled(UINT command) const;

  DockSide side() const { return side_; }
  void setSide(DockSide side);
  // Breadth of the strip across the side it is docked at, in pixels.
  int breadth() const;

  // The part of a command's text that tooltips show: "prompt\ntip" → "tip".
  static std::string tipOf(const std::string& commandText);

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const MessageMap* messageMap() const override;

 private:
  bool vertical() const { return side_ == DockSide::left || side_ == DockSide::right; }
  RECT gripper() const;
  void onSized(int width, int height);
  void onPaint();
  void onLButtonDown(UINT keys, POINT point);
  void onMouseMove(UINT keys, POINT point);
  void onLButtonUp(UINT keys, POINT point);
  LRESULT onSetCursor();
  LRESULT onCommand(WPARAM wParam, LPARAM lParam);
  void onToolTip(NMTTDISPINFOW& info);

  HWND bar_ = nullptr;  // the toolbar control, a child of the strip
  std::vector<UINT> commands_;
  std::wstring tip_;
  UniqueImageList normal_, disabled_, hot_;
  DockRequest dockTo_;
  DockSide side_ = DockSide::top;
};

// The side of `frame` (screen) that a gripper dragged to `point` asks for; `present` when it is near none.
DockSide dockSideAt(const RECT& frame, POINT point, DockSide present);

}  // namespace framework
