// Moves and deletes messages in the running program without a rest, through posted mouse and command
// messages, until the program is gone.
//
//   run SEED   waits for the window, then says, a line each and before it happens:
//              counts N N N               what the labels of the PC folders say at the start
//              delete TEXT|TEXT…          consent has been given to delete these messages
//              move TEXT|TEXT…            these are let go over another folder
//              done                       what was said last has happened
//              box TEXT                   a message box came up
//              gone                       the program has ended
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "foreign_window.h"
#include "resources/resource_ids.h"

namespace {

struct Gone {};

std::mt19937 chance;

int upTo(int largest) {
  return std::uniform_int_distribution<int>(0, largest)(chance);
}

void say(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

// The texts that these tests use are ASCII.
std::string narrow(const std::wstring& text) {
  std::string ascii;
  for (const wchar_t c : text) ascii += c < 0x80 ? static_cast<char>(c) : '?';
  return ascii;
}

HWND frameWindow() {
  const HWND frame = FindWindowW(L"QuilletFrame", nullptr);
  return frame && IsWindowVisible(frame) ? frame : nullptr;
}

HWND childOf(HWND frame, const wchar_t* className) {
  struct Search {
    const wchar_t* name;
    HWND found;
  } search{className, nullptr};
  EnumChildWindows(
      frame,
      [](HWND child, LPARAM context) -> BOOL {
        Search& wanted = *reinterpret_cast<Search*>(context);
        if (classOf(child) == wanted.name) wanted.found = child;
        return !wanted.found;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND dialog() {
  const HWND found = FindWindowW(L"#32770", nullptr);
  return found && IsWindowVisible(found) ? found : nullptr;
}

// A message box has no business to come up.
void expectNoBox() {
  const HWND box = dialog();
  if (!box) return;
  say("box " + narrow(textOf(GetDlgItem(box, 0xffff))));
  throw Gone();
}

class Hand {
 public:
  explicit Hand(HWND frame)
      : frame_(frame), tree_(childOf(frame, WC_TREEVIEWW)), list_(childOf(frame, WC_LISTVIEWW)) {}

  bool findFolders() {
    if (!tree_ || !list_) return false;
    LPARAM item = next(TVGN_ROOT, 0);
    item = next(TVGN_CHILD, next(TVGN_NEXT, item));
    for (LPARAM& folder : folders_) {
      folder = item;
      item = next(TVGN_NEXT, item);
    }
    counts_.clear();
    for (const LPARAM folder : folders_) {
      const std::string label = labelOf(folder);
      const std::size_t open = label.find('(');
      if (open == std::string::npos) return false;
      counts_ += " " + label.substr(open + 1, label.find(')') - open - 1);
    }
    return true;
  }
  const std::string& counts() const { return counts_; }

  void act() {
    const auto source = static_cast<std::size_t>(upTo(2));
    ask(tree_, TVM_SELECTITEM, TVGN_CARET, folders_[source]);
    const int rows = static_cast<int>(ask(list_, LVM_GETITEMCOUNT));
    if (rows == 0) return;
    const int row = upTo(rows - 1);
    const std::string texts = select(row, rows);
    if (upTo(2) == 0)
      deleteSelected(texts);
    else
      move(row, folders_[(source + 1 + static_cast<std::size_t>(upTo(1))) % 3], texts);
  }

 private:
  LPARAM next(WPARAM way, LPARAM item) const { return ask(tree_, TVM_GETNEXTITEM, way, item); }

  std::string labelOf(LPARAM folder) const {
    ForeignMemory memory(tree_);
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_HANDLE;
    item.hItem = reinterpret_cast<HTREEITEM>(folder);
    item.pszText = memory.textAddress();
    item.cchTextMax = ForeignMemory::textUnits;
    memory.clearText();
    memory.put(item);
    ask(tree_, TVM_GETITEMW, 0, memory.address());
    return narrow(memory.text());
  }

  // Selects that row and up to four more; their texts.
  std::string select(int row, int rows) const {
    ForeignMemory memory(list_);
    const auto setState = [&](int which, UINT state) {
      LVITEMW item{};
      item.stateMask = LVIS_SELECTED;
      item.state = state;
      memory.put(item);
      ask(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(which), memory.address());
    };
    setState(-1, 0);
    setState(row, LVIS_SELECTED);
    for (int more = upTo(4); more > 0; --more) setState(upTo(rows - 1), LVIS_SELECTED);
    std::string texts;
    for (LRESULT at = -1; (at = ask(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(at), LVNI_SELECTED)) >= 0;) {
      LVITEMW item{};
      item.pszText = memory.textAddress();
      item.cchTextMax = ForeignMemory::textUnits;
      memory.clearText();
      memory.put(item);
      ask(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(at), memory.address());
      texts += (texts.empty() ? "" : "|") + narrow(memory.text());
    }
    return texts;
  }

  RECT rectangle(HWND control, UINT message, WPARAM which, const RECT& input) const {
    ForeignMemory memory(control);
    memory.put(input);
    ask(control, message, which, memory.address());
    return onScreen(control, memory.get<RECT>());
  }

  void deleteSelected(const std::string& texts) const {
    PostMessageW(frame_, WM_COMMAND, ID_DELETE, 0);
    const HWND question = waitForDialog();
    say("delete " + texts);
    PostMessageW(question, WM_COMMAND, IDOK, 0);
    while (IsWindow(question)) Sleep(1);
    finish();
  }

  void move(int row, LPARAM target, const std::string& texts) const {
    ask(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    RECT place{};
    place.left = LVIR_BOUNDS;
    place = rectangle(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row), place);
    mouse(WM_LBUTTONDOWN, place.left + 20, place.top + 4);
    mouse(WM_MOUSEMOVE, place.left + 60, place.top + 6);
    while (!hasMouse()) Sleep(1);
    RECT item{};
    std::memcpy(&item, &target, sizeof target);
    item = rectangle(tree_, TVM_GETITEMRECT, TRUE, item);
    mouse(WM_MOUSEMOVE, item.left + 5, item.top + 5);
    say("move " + texts);
    mouse(WM_LBUTTONUP, item.left + 5, item.top + 5);
    while (hasMouse()) Sleep(1);
    finish();
  }

  void mouse(UINT message, LONG x, LONG y) const {
    POINT point{x, y};
    ScreenToClient(list_, &point);
    PostMessageW(list_, message, MK_LBUTTON, MAKELPARAM(point.x, point.y));
  }

  // Whether the list keeps the mouse, as it does during a drag.
  bool hasMouse() const {
    if (!IsWindow(list_)) throw Gone();
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(list_, nullptr), &info);
    return info.hwndCapture == list_;
  }

  // The change has begun: the program is busy with it and answers when it is done.
  void finish() const {
    ask(frame_, WM_NULL);
    expectNoBox();
    say("done");
  }

  HWND waitForDialog() const {
    for (;;) {
      if (const HWND found = dialog()) return found;
      if (!IsWindow(frame_)) throw Gone();
      Sleep(1);
    }
  }

  HWND frame_;
  HWND tree_;
  HWND list_;
  LPARAM folders_[3]{};
  std::string counts_;
};

void run() {
  HWND frame = nullptr;
  try {
    while (!(frame = frameWindow())) {
      expectNoBox();
      Sleep(5);
    }
    Hand hand(frame);
    while (!hand.findFolders()) {
      expectNoBox();
      if (!IsWindow(frame)) throw Gone();
      Sleep(5);
    }
    say("counts" + hand.counts());
    for (;;) hand.act();
  } catch (const Gone&) {
  } catch (const std::runtime_error&) {
    // A window that does not answer has gone, or is about to.
  }
  while (frame && IsWindow(frame)) Sleep(1);
  say("gone");
}

}  // namespace

int main() {
  char line[64];
  while (std::fgets(line, sizeof line, stdin)) {
    if (std::strncmp(line, "run ", 4) != 0) return 64;
    chance.seed(static_cast<unsigned>(std::atoi(line + 4)));
    run();
  }
  return 0;
}
