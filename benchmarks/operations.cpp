// operations ROUNDS FOLDER COUNT: the whole program in this process on the stores of FOLDER, COUNT messages
// in PInbox and PSent. In process because a command is then measured from its message to the last window
// drawn, without the waiting of one process for another. Beside each command stands the least work for it:
// the same rows in a bare list, and the same bytes read, or written and flushed, by turns with the program.
// Prints the fewest milliseconds (what else the machine does can only add to them), a line each:
// name|ms|least work|ms. Between the commands a file "mark-COMMAND" is opened, for whoever counts what files
// are opened.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>

#include "app/quillet_app.h"
#include "bare_list.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "stopwatch.h"
#include "store/folder_state.h"

namespace {

using store::Folder;

constexpr int moved = 500;
constexpr int few = 100;
constexpr int mostDeleted = 1000;  // deleting from a folder of more, with a rewrite each, measures the disk

int messages = 0;
std::string folder;  // ends in a backslash

double took(const std::function<void()>& work) {
  const double begin = now();
  work();
  return now() - begin;
}

void write(const std::string& name, std::string_view bytes) {
  const HANDLE file = CreateFileW(framework::toWide(folder + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  FlushFileBuffers(file);
  CloseHandle(file);
}

void mark(const char* command) {
  write(std::string("mark-") + command, "");
}

// So that sorting has something to do.
std::string textOf(int message) {
  char number[16];
  std::snprintf(number, sizeof number, "%06d ", static_cast<int>(message * 38977LL % messages));
  return number + std::string(153, 'm');
}

std::string storeOf(const char* section, int count) {
  std::string bytes = std::string("[") + section + "] \r\n";
  for (int i = 0; i < count; ++i)
    bytes += "Content = " + textOf(i) +
             " \r\nPhone = +31600000001 \r\nTime = 2026/03/02  11:22:33 \r\nIndex = " + std::to_string(i) +
             " \r\n";
  return bytes;
}

class Program : public app::CQuilletApp {
 public:
  Program() : CQuilletApp(folder) {}
  bool start() { return initInstance(); }
  void end() {
    frame()->send(WM_CLOSE);
    settle();
    exitInstance();
  }

  void settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.message == WM_QUIT || preTranslate(message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    onIdle();
    RedrawWindow(frame()->handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
  HWND list() const { return frame()->list().handle(); }
  static HTREEITEM item(Folder of) { return store::folderState().items[store::position(of)]; }

  void choose(Folder shown) {
    frame()->tree().selectItem(item(shown));
    settle();
  }
  void sort() {
    NMLISTVIEW click{};
    click.hdr = {list(), 2, LVN_COLUMNCLICK};
    click.iItem = -1;
    SendMessageW(GetParent(list()), WM_NOTIFY, 2, reinterpret_cast<LPARAM>(&click));
    settle();
  }
  void select(int count, int step) {
    ListView_SetItemState(list(), -1, 0, LVIS_SELECTED);
    for (int row = 0; row < count; ++row)
      ListView_SetItemState(list(), row * step, LVIS_SELECTED, LVIS_SELECTED);
    settle();
  }
  // From the answer to the question on.
  double removeSelected() {
    static double answered;
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) {
      const HWND question = FindWindowExW(nullptr, nullptr, L"#32770", nullptr);
      if (!question || !IsWindowVisible(question)) return;
      answered = now();
      EndDialog(question, IDOK);
    });
    frame()->send(WM_COMMAND, ID_DELETE);
    KillTimer(nullptr, timer);
    settle();
    return now() - answered;
  }
  void dragTo(Folder target) {
    NMLISTVIEW begin{};
    begin.hdr = {list(), 2, static_cast<UINT>(LVN_BEGINDRAG)};
    SendMessageW(GetParent(list()), WM_NOTIFY, 2, reinterpret_cast<LPARAM>(&begin));
    const HWND tree = frame()->tree().handle();
    RECT place{};
    TreeView_GetItemRect(tree, item(target), &place, TRUE);
    POINT at{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    MapWindowPoints(tree, list(), &at, 1);
    SendMessageW(list(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    SendMessageW(list(), WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    settle();
  }
  std::size_t countOf(Folder of) const { return frame()->tree().folders()[of].size(); }
};

std::map<std::string, std::vector<double>> figures;

void runProgram() {
  write("pcInbox.dat", storeOf("PCINBOX", messages));
  write("pcSent.dat", storeOf("PCSENT", messages));
  write("pcDraft.dat", storeOf("PCDRAFT", few));
  mark("start");
  Program program;
  if (!program.start()) std::exit(1);
  program.settle();
  SetWindowPos(program.frame()->handle(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  program.settle();
  figures["select few"].push_back(took([&] { program.choose(Folder::PDraft); }));
  mark("select");
  figures["select"].push_back(took([&] { program.choose(Folder::PInbox); }));
  mark("sort");
  figures["sort"].push_back(took([&] { program.sort(); }));
  mark("none");
  store::Folders& folders = program.frame()->tree().folders();
  const auto sorted = folders[Folder::PInbox].records();
  std::vector<store::SmsRecord> records(sorted.begin(), sorted.end());
  figures["table and file"].push_back(took([&] { folders.replace(Folder::PInbox, std::move(records)); }));
  if (messages <= mostDeleted) {
    program.select(moved, 2);
    mark("delete");
    figures["delete"].push_back(program.removeSelected());
    mark("none");
    if (program.countOf(Folder::PInbox) != static_cast<std::size_t>(messages - moved)) std::exit(2);
  }
  program.choose(Folder::PSent);
  program.select(moved, 2);
  mark("move");
  figures["move"].push_back(took([&] { program.dragTo(Folder::PDraft); }));
  mark("none");
  if (program.countOf(Folder::PDraft) != few + moved) std::exit(3);
  mark("refresh");
  figures["refresh"].push_back(took([&] {
    program.frame()->send(WM_COMMAND, ID_REFRESH);
    program.settle();
  }));
  mark("none");
  program.end();
}

void read(const char* name) {
  std::string bytes;
  const auto opened = app::WindowsFiles().openForReading(folder + name);
  if (!opened.status.ok() || !opened.file->readAll(bytes).ok()) std::exit(4);
}

void runReference() {
  std::vector<BareList::Row> rows;
  for (int i = 0; i < messages; ++i)
    rows.push_back({framework::toWide(textOf(i)), L"+31600000001", L"2026/03/02  11:22:33"});
  const std::string bytes = storeOf("PCINBOX", messages);
  BareList list;
  list.fill(rows);
  figures["sort rows"].push_back(took([&] { list.sort(); }));
  figures["write"].push_back(took([&] { write("plain", bytes); }));
  figures["write both"].push_back(took([&] {
    write("plain",
          std::string_view(bytes).substr(0, bytes.size() * moved / static_cast<std::size_t>(messages)));
    write("plain",
          std::string_view(bytes).substr(0, bytes.size() * static_cast<std::size_t>(messages - moved) /
                                                static_cast<std::size_t>(messages)));
  }));
  figures["read"].push_back(took([&] {
    for (const char* name : {"pcInbox.dat", "pcSent.dat", "pcDraft.dat"}) read(name);
  }));
  if (messages > mostDeleted) return;
  figures["remove rows"].push_back(took([&] { list.remove(moved); }));
  figures["write each"].push_back(took([&] {
    for (std::size_t left = static_cast<std::size_t>(messages) - 1; left >= moved; --left)
      write("plain",
            std::string_view(bytes).substr(0, bytes.size() * left / static_cast<std::size_t>(messages)));
  }));
}

double best(const char* name) {
  return *std::min_element(figures[name].begin(), figures[name].end());
}

void print(const char* name, double value, const char* least, double reference) {
  std::printf("%s|%.2f|%s|%.2f\n", name, value, least, reference);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 4) return 2;
  folder = framework::toUtf8(arguments[2]) + "\\";
  messages = _wtoi(arguments[3]);
  for (int round = _wtoi(arguments[1]); round > 0; --round) {
    runProgram();
    runReference();
  }
  print("select a folder", best("select"), "a folder of 100", best("select few"));
  print("sort it: list", best("sort") - best("table and file"), "bare list sorted", best("sort rows"));
  print("sort it: table and file", best("table and file"), "one plain write", best("write"));
  print("move 500", best("move"), "two plain writes", best("write both"));
  print("refresh", best("refresh"), "read the three files", best("read"));
  if (messages <= mostDeleted)
    print("delete 500", best("delete"), "bare list, 500 plain writes",
          best("remove rows") + best("write each"));
  return 0;
}
