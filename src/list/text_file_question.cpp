#include "list/text_file_question.h"

#include <commdlg.h>
#include <shlobj.h>

#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"

namespace list {
std::string askForTextFile(HWND owner) {
  const auto ask = framework::lateFunction<decltype(GetSaveFileNameW)>("comdlg32.dll", "GetSaveFileNameW");
  const auto findFolder =
      framework::lateFunction<decltype(SHGetSpecialFolderPathW)>("shell32.dll", "SHGetSpecialFolderPathW");
  if (!ask) return {};
  wchar_t documents[MAX_PATH] = L"";
  if (findFolder) findFolder(owner, documents, CSIDL_PERSONAL, FALSE);
  std::wstring filter = framework::toWide(framework::loadString(IDS_TEXT_FILES));
  filter += L'\0';
  filter += L"*.TXT";
  filter += L'\0';
  const std::wstring title = framework::toWide(framework::loadString(IDS_SAVE_TITLE));
  wchar_t path[32768] = L"";
  OPENFILENAMEW question{};
  question.lStructSize = sizeof question;
  question.hwndOwner = owner;
  question.lpstrFilter = filter.c_str();
  question.lpstrFile = path;
  question.nMaxFile = static_cast<DWORD>(std::size(path));
  question.lpstrInitialDir = documents;
  question.lpstrTitle = title.c_str();
  question.lpstrDefExt = L"txt";
  question.Flags =
      OFN_EXPLORER | OFN_PATHMUSTEXIST | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return ask(&question) ? framework::toUtf8(path) : std::string();
}

}  // namespace list
