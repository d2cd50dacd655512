#pragma once

#include "framework/document.h"
#include "framework/wnd.h"

namespace framework {

// A pane that shows a document. Owned by the splitter or frame it stands in; knows its document from
// creation to destruction.
class CView : public CWnd {
 public:
  ~CView() override;

  // Creates the pane in `parent` for `document` (which must outlive it).
  bool createView(HWND parent, UINT id, const RECT& place, CDocument& document);
  CDocument* document() const { return document_; }

  // Called once all views of a new frame exist.
  virtual void onInitialUpdate() {}

  // The view itself, then its document.
  std::optional<CommandSite> findCommand(UINT id) override;

 private:
  CDocument* document_ = nullptr;
};

}  // namespace framework
