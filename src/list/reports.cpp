#include "list/reports.h"

#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/win_app.h"
#include "resources/resource_ids.h"

namespace list {

using framework::formatText;
using framework::loadString;
using Outcome = store::WriteResult::Outcome;

// Over the window in use, which has the keyboard again afterwards; MB_TASKMODAL for when there is none yet.
int showMessage(const std::string& text, UINT style) {
  const framework::CFrameWnd* const frame = framework::CWinApp::current()->mainFrame();
  return MessageBoxW(frame ? GetLastActivePopup(frame->handle()) : nullptr, framework::toWide(text).c_str(),
                     framework::toWide(loadString(IDS_TITLE)).c_str(), MB_TASKMODAL | style);
}

std::string describe(const store::WriteResult& result, UINT failure) {
  return formatText(
      loadString(result.outcome == Outcome::inBoth ? IDS_IN_BOTH_FOLDERS : failure),
      {result.file, result.outcome == Outcome::notRead ? loadString(IDS_NOT_READ_YET)
                                                       : framework::systemErrorText(result.code)});
}

bool report(const store::WriteResult& result, UINT failure) {
  if (!result.ok()) showMessage(describe(result, failure));
  return result.ok();
}

std::string keptCopies(store::Folders& folders) {
  std::string text;
  for (const std::string& copy : folders.takeKeptCopies())
    text += formatText(loadString(IDS_COPY_KEPT), {copy}) + " ";
  return text;
}

}  // namespace list
