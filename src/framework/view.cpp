#include "framework/view.h"

namespace framework {

CView::~CView() {
  if (document_) document_->removeView(*this);
}

bool CView::createView(HWND parent, UINT id, const RECT& place, CDocument& document) {
  document_ = &document;
  document.addView(*this);
  return createChild(nullptr, WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | WS_CLIPSIBLINGS, place, parent,
                     id);
}

std::optional<CommandSite> CView::findCommand(UINT id) {
  if (auto site = findOwnCommand(id)) return site;
  return document_ ? document_->findCommand(id) : std::nullopt;
}

}  // namespace framework
