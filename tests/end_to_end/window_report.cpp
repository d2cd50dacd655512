// Says what the visible windows of all programs hold, the one in front first; once for each line of input.
//
// A line each for windows, controls, items of trees, rows of lists and buttons of toolbars, in fields between
// tabs: left, top, width and height on the screen; kind; id or number; state; texts. An empty line ends an
// answer.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <string>

namespace {

constexpr int textUnits = 4096;
constexpr int columns = 3;

// What a message to a control of another program points to. A tree is asked for a rectangle by an item's
// handle.
struct Parcel {
  union {
    RECT rect;
    HTREEITEM handle;
    TVITEMW item;
    LVITEMW row;
    TBBUTTON button;
  };
  wchar_t text[textUnits];
};

LRESULT ask(HWND window, UINT message, LRESULT wParam = 0, LRESULT lParam = 0) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, static_cast<WPARAM>(wParam), lParam, SMTO_ABORTIFHUNG, 5000, &answer);
  return static_cast<LRESULT>(answer);
}

std::string utf8(std::wstring text) {
  for (wchar_t& c : text)
    if (c < L' ') c = L' ';
  char bytes[3 * textUnits];
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes,
                                       sizeof bytes, nullptr, nullptr);
  return {bytes, static_cast<std::size_t>(size)};
}

void print(HWND owner, RECT r, const char* kind, LRESULT number, const char* state,
           const std::string& texts) {
  if (owner) MapWindowPoints(owner, nullptr, reinterpret_cast<POINT*>(&r), 2);
  std::printf("%ld %ld %ld %ld\t%s\t%d\t%s\t%s\n", r.left, r.top, r.right - r.left, r.bottom - r.top, kind,
              static_cast<int>(number), state, texts.c_str());
}

// A control of another program, and a place in that program for parcels.
struct Control {
  explicit Control(HWND control) : window{control} {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    there =
        static_cast<Parcel*>(VirtualAllocEx(process, nullptr, sizeof(Parcel), MEM_COMMIT, PAGE_READWRITE));
  }
  ~Control() {
    VirtualFreeEx(process, there, 0, MEM_RELEASE);
    CloseHandle(process);
  }

  Parcel send(UINT message, LRESULT wParam, Parcel parcel = {}) const {
    WriteProcessMemory(process, there, &parcel, sizeof parcel, nullptr);
    ask(window, message, wParam, reinterpret_cast<LRESULT>(there));
    ReadProcessMemory(process, there, &parcel, sizeof parcel, nullptr);
    return parcel;
  }

  void printTree() const {
    int number = 0;
    for (LRESULT i = ask(window, TVM_GETNEXTITEM, TVGN_ROOT); i;
         i = ask(window, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, i)) {
      Parcel parcel{};
      parcel.handle = reinterpret_cast<HTREEITEM>(i);
      const RECT rect = send(TVM_GETITEMRECT, TRUE, parcel).rect;
      parcel.item = {TVIF_TEXT | TVIF_STATE, parcel.handle, 0, ~0U, there->text, textUnits, 0, 0, 0, 0};
      parcel = send(TVM_GETITEMW, 0, parcel);
      const UINT state = parcel.item.state;
      print(window, rect, "item", number++,
            state & TVIS_DROPHILITED ? "target"
            : state & TVIS_SELECTED  ? "selected"
                                     : "",
            utf8(parcel.text));
    }
  }

  void printRows() const {
    for (LRESULT i = 0, count = ask(window, LVM_GETITEMCOUNT); i < count; ++i) {
      std::string texts;
      for (int column = 0; column < columns; ++column) {
        Parcel parcel{};
        parcel.row.iSubItem = column;
        parcel.row.pszText = there->text;
        parcel.row.cchTextMax = textUnits;
        texts += (column ? "\t" : "") + utf8(send(LVM_GETITEMTEXTW, i, parcel).text);
      }
      const bool selected = ask(window, LVM_GETITEMSTATE, i, LVIS_SELECTED);
      print(window, send(LVM_GETITEMRECT, i).rect, "row", i, selected ? "selected" : "", texts);
    }
  }

  void printButtons() const {
    for (LRESULT i = 0, count = ask(window, TB_BUTTONCOUNT); i < count; ++i) {
      const TBBUTTON button = send(TB_GETBUTTON, i).button;
      print(window, send(TB_GETITEMRECT, i).rect, "button", button.idCommand,
            button.fsState & TBSTATE_ENABLED ? "" : "grey", {});
    }
  }

  HWND window;
  HANDLE process;
  Parcel* there;
};

BOOL CALLBACK printWindow(HWND window, LPARAM isChild) {
  if (!IsWindowVisible(window)) return TRUE;
  wchar_t name[64]{};
  GetClassNameW(window, name, 64);
  const std::string kind = utf8(name);
  wchar_t text[textUnits]{};
  ask(window, WM_GETTEXT, textUnits, reinterpret_cast<LRESULT>(text));
  GUITHREADINFO keys{};
  keys.cbSize = sizeof keys;
  GetGUIThreadInfo(0, &keys);
  RECT rect{};
  GetWindowRect(window, &rect);
  print(nullptr, rect, isChild ? kind.c_str() : "window", isChild ? GetDlgCtrlID(window) : 0,
        window == keys.hwndFocus  ? "focus"
        : IsWindowEnabled(window) ? ""
                                  : "grey",
        utf8(text) + (isChild ? "" : "\t" + kind));
  if (kind == "SysTreeView32") Control(window).printTree();
  if (kind == "SysListView32") Control(window).printRows();
  if (kind == "ToolbarWindow32") Control(window).printButtons();
  if (!isChild) EnumChildWindows(window, printWindow, TRUE);
  return TRUE;
}

}  // namespace

int main() {
  while (std::getchar() != EOF) {
    EnumWindows(printWindow, FALSE);
    std::puts("");
    std::fflush(stdout);
  }
}
