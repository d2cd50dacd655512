#include "list/reports.h"

#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"

namespace list {

using framework::formatText;
using framework::loadString;
using Outcome = store::WriteResult::Outcome;

// Without an owner, and without MB_TASKMODAL, the window would take commands behind the box. It holds back
// every window, a dialog before the frame too, where Send would send once more.
int showMessage(const std::string& text, UINT icon) {
  return MessageBoxW(nullptr, framework::toWide(text).c_str(),
                     framework::toWide(loadString(IDS_TITLE)).c_str(), MB_OK | MB_TASKMODAL | icon);
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
