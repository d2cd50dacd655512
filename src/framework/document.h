#pragma once

#include <vector>

#include "framework/cmd_target.h"

namespace framework {

class CView;

// What the views of a frame look at. Owned by the document template; views register themselves.
class CDocument : public CCmdTarget {
 public:
  void addView(CView& view) { views_.push_back(&view); }
  void removeView(CView& view) { std::erase(views_, &view); }
  const std::vector<CView*>& views() const { return views_; }

 private:
  std::vector<CView*> views_;
};

}  // namespace framework
