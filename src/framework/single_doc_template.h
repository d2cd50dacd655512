#pragma once

#include <functional>
#include <memory>

#include "framework/document.h"
#include "framework/frame_wnd.h"

namespace framework {

// Ties one kind of document to its frame and builds both. Owned by the application; owns what it built.
class CSingleDocTemplate {
 public:
  using MakeDocument = std::function<std::unique_ptr<CDocument>()>;
  using MakeFrame = std::function<std::unique_ptr<CFrameWnd>()>;

  CSingleDocTemplate(UINT resourceId, MakeDocument makeDocument, MakeFrame makeFrame)
      : resourceId_(resourceId), makeDocument_(std::move(makeDocument)), makeFrame_(std::move(makeFrame)) {}

  // Builds document, frame and views; null when a window cannot be created.
  CFrameWnd* openNewDocument();

  // Field `index` of a template string "window title\ndocument name\n…"; empty when there is none.
  static std::string templateField(const std::string& text, int index);

 private:
  UINT resourceId_;
  MakeDocument makeDocument_;
  MakeFrame makeFrame_;
  std::unique_ptr<CDocument> document_;  // outlives the frame, whose views refer to it
  std::unique_ptr<CFrameWnd> frame_;
};

}  // namespace framework
