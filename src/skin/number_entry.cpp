#include "skin/number_entry.h"

#include "framework/clipboard.h"
#include "framework/resources.h"
#include "resources/resource_ids.h"

namespace skin {
namespace {

bool isTaken(UINT character) {
  constexpr UINT backspace = 8;
  return (character >= '0' && character <= '9') || character == ';' || character == '+' || character == '-' ||
         character == '.' || character == backspace;
}

bool isDown(int key) {
  return GetKeyState(key) < 0;
}

// Line breaks and tabs become the separator, but for those before the first number.
std::wstring asOneLine(std::wstring_view text, bool first) {
  constexpr std::wstring_view breaks = L"\t\n\v\f\r\x85\x2028\x2029";
  std::wstring line;
  for (const wchar_t character : text) {
    if (breaks.find(character) == breaks.npos)
      line += character;
    else if (!line.ends_with(L';') && !(first && line.empty()))
      line += L';';
  }
  return line;
}

}  // namespace

const framework::MessageMap* CNumberEntry::messageMap() const {
  using namespace framework;
  static constexpr MessageEntry entries[] = {
      onKey<&CNumberEntry::onChar>(WM_CHAR),
      onKey<&CNumberEntry::onKeyDown>(WM_KEYDOWN),
      onPlain<&CNumberEntry::onKillFocus>(WM_KILLFOCUS),
      onPlain<&CNumberEntry::onPaste>(WM_PASTE),
      onRaw<&CNumberEntry::onReplaceSelection>(EM_REPLACESEL),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

bool CNumberEntry::subclass(HWND dialog, UINT id) {
  const HWND edit = GetDlgItem(dialog, static_cast<int>(id));
  return edit && attach(edit);
}

LRESULT CNumberEntry::onChar(UINT character) {
  constexpr UINT erasedWord = 0x7F;  // what Ctrl+Backspace types
  if (isTaken(character)) {
    tip_.hide();
    return defaultProcessing();
  }
  if (character >= ' ' && character != erasedWord) {
    // A character left out in silence would make two numbers one.
    MessageBeep(MB_ICONWARNING);
    tip_.show(handle(), framework::loadString(IDS_NUMBERS_ONLY));
  }
  return static_cast<LRESULT>(character);
}

// An edit box knows its shortcuts by the control characters that follow the keys, and those are dropped like
// any other character. So the keys themselves are served here, and not passed on, lest anything be done
// twice.
LRESULT CNumberEntry::onKeyDown(UINT key) {
  // Together with Alt, Ctrl types characters on many keyboards.
  const bool shortcut = isDown(VK_CONTROL) && !isDown(VK_MENU) && !isDown(VK_SHIFT);
  switch (shortcut ? key : 0) {
    case 'A':
      return send(EM_SETSEL, 0, -1);
    case 'C':
      return send(WM_COPY);
    case 'V':
      return send(WM_PASTE);
    case 'X':
      return send(WM_CUT);
    case 'Z':
      return send(EM_UNDO);
    default:
      if (key == VK_INSERT && isDown(VK_SHIFT)) return send(WM_PASTE);
      return defaultProcessing();
  }
}

LRESULT CNumberEntry::onKillFocus() {
  tip_.hide();
  return defaultProcessing();
}

// What follows does not ask whether the box may be changed.
void CNumberEntry::onPaste() {
  if (GetWindowLongW(handle(), GWL_STYLE) & ES_READONLY) return;
  const std::wstring text = framework::clipboardText(handle());
  if (!text.empty()) send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

// An edit box takes what it has room for, and of several lines the first. Half a number would reach somebody
// else.
void CNumberEntry::onReplaceSelection(WPARAM canUndo, LPARAM text) {
  DWORD begin = 0;
  DWORD end = 0;
  send(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  const std::wstring line = asOneLine(reinterpret_cast<const wchar_t*>(text), begin == 0);
  const auto kept = static_cast<std::size_t>(GetWindowTextLengthW(handle())) - (end - begin);
  if (kept + line.size() <= static_cast<std::size_t>(send(EM_GETLIMITTEXT)))
    defaultProcessing(canUndo, reinterpret_cast<LPARAM>(line.c_str()));
  else
    MessageBeep(MB_ICONWARNING);
}

}  // namespace skin
