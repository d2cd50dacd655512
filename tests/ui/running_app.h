#pragma once

#include <filesystem>
#include <fstream>
#include <span>

#include "app/quillet_app.h"
#include "dialogs.h"
#include "framework/module.h"
#include "phonelink/entry_layouts.h"
#include "scripted_link/scripted_link.h"
#include "store/folder_state.h"
#include "support/memory_file_system.h"

using framework::toUtf8;
using framework::toWide;

// The tree's items from top to bottom.
enum Place { mobile, mInbox, mOutbox, pc, pInbox, pSent, pDraft };

struct Message {
  std::string content, phone = "1", time = "t";
  int index = 0;
};

inline std::string groupOf(const Message& m) {
  return "Content = " + m.content + " \r\nPhone = " + m.phone + " \r\nTime = " + m.time +
         " \r\nIndex = " + std::to_string(m.index) + " \r\n";
}

// A folder of its own for one test, with settings, skin and a phone-link library; gone afterwards.
class ProgramFolder {
 public:
  // The file of the library among those of the tests.
  explicit ProgramFolder(const std::string& library = "scripted_link.dll") {
    static int number = 0;
    path = std::filesystem::temp_directory_path() /
           ("quillet-ui-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number));
    std::filesystem::remove_all(path);  // left by a run that was killed
    std::filesystem::create_directories(path / "Skin/Default");
    std::filesystem::copy(QUILLET_SKIN, path / "Skin/Default/SMS", std::filesystem::copy_options::recursive);
    write("port.ini", "[port]\r\ncom=3\r\n");
    copy(library, "SMS_DLL2.dll");
  }
  ~ProgramFolder() {
    if (library_) FreeLibrary(library_);
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  ProgramFolder(const ProgramFolder&) = delete;

  std::string name() const { return toUtf8(path.wstring()) + "\\"; }
  void write(const std::string& name, std::string_view bytes) const {
    std::ofstream(path / name, std::ios::binary) << bytes;
  }
  std::string read(const std::string& name) const {
    std::ifstream file(path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void copy(const std::string& from, const std::string& name) const {
    std::filesystem::copy_file(toWide(framework::moduleDirectory() + from), path / name);
  }
  // Until it is gone nobody else can write the file or, with share 0, open it.
  framework::UniqueHandle hold(const std::string& name, DWORD share = FILE_SHARE_READ) const {
    return framework::UniqueHandle(
        CreateFileW((path / name).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
  }

  static std::string file(Place folder) {
    return folder == pInbox ? "pcInbox.dat" : folder == pSent ? "pcSent.dat" : "pcDraft.dat";
  }
  static std::string storeOf(Place folder, const std::vector<Message>& messages) {
    constexpr const char* sections[] = {"[PCINBOX]", "[PCSENT]", "[PCDRAFT]"};
    std::string bytes = sections[folder - pInbox] + std::string(" \r\n");
    for (const Message& message : messages) bytes += groupOf(message);
    return bytes;
  }
  void put(Place folder, const std::vector<Message>& messages) const {
    const std::string bytes = storeOf(folder, messages);
    memory ? memory->put(name() + file(folder), bytes) : write(file(folder), bytes);
  }
  std::string read(Place folder) const {
    return memory ? memory->bytes(name() + file(folder)) : read(file(folder));
  }
  // The values of one key in a PC folder's file, in UTF-8.
  Texts values(Place folder, const std::string& key) const {
    const std::string bytes = read(folder), begin = "\n" + key + " = ";
    const std::string text = bytes.starts_with("\xEF\xBB\xBF") ? bytes : text::SystemCodePage().decode(bytes);
    Texts found;
    for (std::size_t at = 0; (at = text.find(begin, at)) != std::string::npos;)
      at += begin.size(), found.push_back(text.substr(at, text.find(" \r\n", at) - at));
    return found;
  }

  // The scripted library's state; loaded by the first call and kept until the folder is gone.
  ScriptedLink& script() {
    if (!library_) library_ = LoadLibraryW((path / "SMS_DLL2.dll").c_str());
    using Find = ScriptedLink* (*)();
    return *reinterpret_cast<Find>(reinterpret_cast<void*>(GetProcAddress(library_, "scriptedLink")))();
  }
  // The calls since this was last asked.
  std::string log() {
    const std::string calls = script().log;
    script().log[0] = '\0';
    return calls;
  }
  // One more message of the handset, in a list of the library's.
  template <std::size_t Size>
  static void add(unsigned char (&list)[Size], int& count, const std::string& text,
                  const std::string& phone = "+1", const std::string& time = "26030211223304",
                  std::uint16_t status = 0) {
    using namespace phonelink;
    MessageEntry entry{.phone = phone, .time = time, .status = status};
    entry.setNarrowText(text);
    constexpr std::size_t size = Size / maxEntries;
    const auto bytes =
        std::as_writable_bytes(std::span{list}).subspan(size * static_cast<std::size_t>(count++));
    if constexpr (size == handsetEntrySize)
      encodeHandsetMessage(entry, bytes.template first<size>());
    else
      encodeMessage(entry, bytes.template first<size>());
  }
  void receive(const std::string& text, const std::string& phone = "+1",
               const std::string& time = "26030211223304") {
    add(script().received, script().receivedResult, text, phone, time);
  }

  std::filesystem::path path;
  support::MemoryFileSystem* memory = nullptr;  // where the stores are instead, borrowed from the program

 private:
  HMODULE library_ = nullptr;
};

// The application in this process. It is started and ended by the test, which lets messages run in between.
class RunningApp : public app::CQuilletApp {
 public:
  using Files = std::unique_ptr<store::FileSystem>;
  explicit RunningApp(const ProgramFolder& folder, Files files = std::make_unique<app::WindowsFiles>())
      : CQuilletApp(folder.name(), std::move(files)), folder_(folder) {}
  ~RunningApp() override { end(); }

  bool start() {
    if ((started_ = initInstance())) settle();
    return started_;
  }
  int end() {
    if (window()) SendMessageW(window(), WM_CLOSE, 0, 0), settle();
    return std::exchange(started_, false) ? exitInstance() : 0;
  }
  // Handles all waiting messages, then does what the program does when idle.
  void settle() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) handle(message);
    onIdle();
  }

  HWND window() const { return frame() ? frame()->handle() : nullptr; }
  HWND tree() const { return frame()->tree().handle(); }
  HWND list() const { return frame()->list().handle(); }
  HWND toolBar() const {
    return FindWindowExW(frame()->toolBar().handle(), nullptr, TOOLBARCLASSNAMEW, nullptr);
  }
  HTREEITEM itemOf(Place place) const {
    HTREEITEM found = TreeView_GetRoot(tree());
    for (int i = 0; i < place; ++i) found = TreeView_GetNextItem(tree(), found, TVGN_NEXTVISIBLE);
    return found;
  }
  POINT middleOf(Place place) const {
    RECT rect{};
    TreeView_GetItemRect(tree(), itemOf(place), &rect, TRUE);
    return framework::toScreen(tree(), {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
  }
  std::string label(Place place) const { return frame()->tree().itemText(itemOf(place)); }
  // "Content 374 Sender 187 Time 187"
  std::string columns() const {
    std::string shown;
    for (int column = 0; column < 3; ++column) {
      wchar_t text[64] = L"";
      LVCOLUMNW query{.mask = LVCF_TEXT | LVCF_WIDTH, .pszText = text, .cchTextMax = 64};
      ListView_GetColumn(list(), column, &query);
      shown += (column ? " " : "") + toUtf8(text) + " " + std::to_string(query.cx);
    }
    return shown;
  }
  std::string status() const {
    wchar_t text[1024] = L"";
    SendMessageW(frame()->statusBar().handle(), SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text));
    return toUtf8(text);
  }
  std::string rows(int column = 0) const { return joined(columnOf(list(), column), ","); }
  // "1 0 3 0 0: a,b,c" = the folders' counts and the contents of the rows. Fails the test unless counts and
  // rows of the PC folders are those of their files.
  std::string look() const {
    std::string counts;
    for (const Place place : {mInbox, mOutbox, pInbox, pSent, pDraft}) {
      const std::string text = label(place),
                        count = text.substr(text.find('(') + 1, text.find(')') - text.find('(') - 1);
      counts += (counts.empty() ? "" : " ") + count;
      if (place < pInbox) continue;
      const Texts kept = folder_.values(place, "Content");
      EXPECT_EQ(count, std::to_string(kept.size())) << folder_.file(place);
      if (TreeView_GetSelection(tree()) != itemOf(place)) continue;
      EXPECT_EQ(columnOf(list(), 0), kept);
      EXPECT_EQ(columnOf(list(), 1), folder_.values(place, "Phone"));
    }
    return counts + ": " + rows();
  }

  // Does it, with these steps in what comes up and nothing else coming up.
  void watch(Steps steps, const std::function<void()>& doing) {
    const Answerer answerer(std::move(steps));
    doing();
    settle();
  }
  void command(UINT id, Steps steps = {}) {
    watch(std::move(steps), [=, this] { SendMessageW(window(), WM_COMMAND, id, 0); });
  }
  void key(HWND control, UINT key, std::initializer_list<int> held = {}, Steps steps = {}) {
    MSG message{.hwnd = control, .message = WM_KEYDOWN, .wParam = key};
    watch(std::move(steps), [&] { holding(held, [&] { handle(message); }); });
  }
  void show(Place place, bool byMouse = false) {
    if (byMouse) notify(tree(), NM_CLICK, NMHDR{});
    TreeView_SelectItem(tree(), itemOf(place));
    settle();
  }
  void choose(Place folder, const Rows& rows) {
    show(folder);
    select(list(), rows);
    settle();
  }
  // A command on these rows, or their drag to a place; how everything looks then, and the status bar.
  std::string with(Place folder, const Rows& rows, UINT id, Steps steps = {}) {
    choose(folder, rows);
    command(id, std::move(steps));
    return look() + " | " + status();
  }
  std::string with(Place folder, const Rows& rows, Place target) {
    choose(folder, rows);
    dragTo(target);
    return look() + " | " + status();
  }
  void clickHeading(int column) { notify(list(), LVN_COLUMNCLICK, NMLISTVIEW{.iSubItem = column}); }
  void clickTwice(Steps steps = {}) {
    watch(std::move(steps), [this] { notify(list(), NM_DBLCLK, NMHDR{}); });
  }
  // Rows dragged by the mouse, which the list has until it is released. Points are of the screen.
  void beginDrag() { notify(list(), LVN_BEGINDRAG, NMLISTVIEW{.ptAction = {20, 30}}); }
  void drag(UINT message, POINT at) {
    ScreenToClient(list(), &at);
    SendMessageW(list(), message, MK_LBUTTON, MAKELPARAM(at.x, at.y));
  }
  void dragTo(POINT at) {
    beginDrag();
    EXPECT_EQ(GetCapture(), list());
    drag(WM_MOUSEMOVE, at);
    drag(WM_LBUTTONUP, at);
    EXPECT_TRUE(GetCapture() != list() && !TreeView_GetDropHilight(tree()));
  }
  void dragTo(Place place) { dragTo(middleOf(place)); }

 private:
  void handle(MSG& message) {
    if (message.message != WM_QUIT && !preTranslate(message))
      TranslateMessage(&message), DispatchMessageW(&message);
  }
  // What a control tells its parent.
  template <class Header>
  static void notify(HWND control, UINT code, Header header) {
    NMHDR& head = reinterpret_cast<NMHDR&>(header);
    head = {control, static_cast<UINT_PTR>(GetDlgCtrlID(control)), code};
    SendMessageW(GetParent(control), WM_NOTIFY, head.idFrom, reinterpret_cast<LPARAM>(&header));
  }

  const ProgramFolder& folder_;
  bool started_ = false;
};

// The program with real files and a scripted handset.
class Program : public testing::Test {
 protected:
  ProgramFolder folder_;
  RunningApp app_{folder_};
};
