#pragma once

#include "framework/document.h"
#include "list/quillet_view.h"

namespace app {

// Holds no data: it exists so that the frame is made through a document template, and it is where the views
// find the list.
class CQuilletDoc : public framework::CDocument {
 public:
  list::CQuilletView* listView = nullptr;
};

}  // namespace app
