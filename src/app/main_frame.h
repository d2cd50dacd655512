#pragma once

#include <optional>

#include "app/find_dialog.h"
#include "app/quillet_doc.h"
#include "app/sought_text.h"
#include "framework/frame_wnd.h"
#include "framework/splitter_wnd.h"
#include "list/quillet_view.h"
#include "tree/left_view.h"

namespace app {

// The main window: toolbar, status bar, and a splitter with the folder tree on the left and the message list
// on the right. Owned by the document template.
class CMainFrame : public framework::CFrameWnd {
 public:
  explicit CMainFrame(tree::LeftViewServices services) : services_(std::move(services)) {}

  tree::CLeftView& tree() { return static_cast<tree::CLeftView&>(*splitter_.pane(0)); }
  list::CQuilletView& list() { return *static_cast<CQuilletDoc&>(*document()).listView; }
  framework::CSplitterWnd& splitter() { return splitter_; }

 protected:
  bool onCreateClient(framework::CDocument& document) override;
  bool onCreateBars() override;
  HWND clientWindow() const override { return splitter_.handle(); }
  LRESULT windowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool preTranslateMessage(MSG& message) override;
  const framework::MessageMap* messageMap() const override;
  const framework::CommandMap* commandMap() const override;

 private:
  void onMinMaxInfo(MINMAXINFO& info);
  void moveSplitter() { splitter_.beginKeyboardMove(); }
  void onFind() { find_.open(handle()); }
  void onFindNext() { findNext(false); }
  void onFindPrevious() { findNext(true); }
  bool canFindNext() const { return sought_.has_value() && !sought_->text().empty(); }
  void findNext(bool backwards);

  tree::LeftViewServices services_;
  framework::CSplitterWnd splitter_;
  FindDialog find_;
  std::optional<SoughtText> sought_;  // the last text that was asked for
};

}  // namespace app
