#pragma once

#include <array>
#include <memory>

#include "framework/view.h"
#include "framework/wnd.h"

namespace framework {

// A static splitter of one row and two columns with a bar between them that mouse and keyboard move. Owns
// the views in its panes; owned by the frame class.
class CSplitterWnd : public CWnd {
 public:
  bool createStatic(HWND parent, UINT id);
  // The first column's pane is created at `size`; its width comes from setColumnInfo.
  bool createPane(int column, std::unique_ptr<CView> view, SIZE size, CDocument& document);
  void setColumnInfo(int column, int idealWidth, int minimumWidth);
  CView* pane(int column) const { return panes_[static_cast<std::size_t>(column)].view.get(); }
  int columnWidth(int column) const;

  // Lets the arrow keys move the bar until Enter, Escape or a click ends it.
  void beginKeyboardMove();

 protected:
  void preCreateWindow(CREATESTRUCTW& c) override;
  const MessageMap* messageMap() const override;

 private:
  struct Pane {
    std::unique_ptr<CView> view;
    int idealWidth = 0;
    int minimumWidth = 0;
  };

  void recalcLayout();
  void moveBar(int firstWidth);
  void endMove();
  RECT barRect() const;
  void onSized(int width, int height);
  void onPaint();
  LRESULT onSetCursor();
  void onLButtonDown(UINT keys, POINT point);
  void onMouseMove(UINT keys, POINT point);
  void onLButtonUp(UINT keys, POINT point);
  void onKeyDown(UINT key);
  void onKillFocus();

  std::array<Pane, 2> panes_;
  int grabOffset_ = 0;  // from the bar's left edge to where the mouse took it
  bool keyboardMove_ = false;
  int widthBefore_ = 0;  // what Escape brings back
  HWND focusBefore_ = nullptr;
};

// The first column's width that `wanted` comes to within `total` pixels, the bar included; when there is
// not enough room for both minimums the first column's comes first.
int fitFirstColumn(int wanted, int total, int barWidth, int firstMinimum, int secondMinimum);

}  // namespace framework
