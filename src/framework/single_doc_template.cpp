#include "framework/single_doc_template.h"

#include "framework/resources.h"

namespace framework {

CFrameWnd* CSingleDocTemplate::openNewDocument() {
  document_ = makeDocument_();
  frame_ = makeFrame_();
  if (!frame_->loadFrame(resourceId_, templateField(loadString(resourceId_), 0), *document_)) {
    frame_.reset();
    return nullptr;
  }
  frame_->initialUpdate();
  return frame_.get();
}

std::string CSingleDocTemplate::templateField(const std::string& text, int index) {
  std::size_t begin = 0;
  for (; index > 0; --index) {
    begin = text.find('\n', begin);
    if (begin == std::string::npos) return {};
    ++begin;
  }
  return text.substr(begin, text.find('\n', begin) - begin);
}

}  // namespace framework
