#include "running_app.h"

#include <gtest/gtest.h>

#include "dialog_visit.h"
#include "framework/text.h"
#include "store/folder_state.h"

using framework::toUtf8;
using framework::toWide;

namespace {

BoxWatcher* activeWatcher = nullptr;

std::string folderOf(const std::string& path) {
  return path.substr(0, path.find_last_of('\\') + 1);
}

void removeTree(const std::wstring& folder) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
      removeTree(folder + name + L"\\");
    else
      DeleteFileW((folder + name).c_str());
  } while (FindNextFileW(search, &found));
  FindClose(search);
  RemoveDirectoryW(folder.c_str());
}

std::string ownFolder() {
  wchar_t path[1024];
  GetModuleFileNameW(nullptr, path, 1024);
  return folderOf(toUtf8(path));
}

std::string windowText(HWND window) {
  wchar_t text[1024] = L"";
  GetWindowTextW(window, text, 1024);
  return toUtf8(text);
}

// What a control tells its parent.
template <class Header>
void notify(HWND control, UINT code, Header header = {}) {
  NMHDR& head = reinterpret_cast<NMHDR&>(header);
  head = {control, static_cast<UINT_PTR>(GetDlgCtrlID(control)), code};
  SendMessageW(GetParent(control), WM_NOTIFY, head.idFrom, reinterpret_cast<LPARAM>(&header));
}

}  // namespace

ProgramFolder::ProgramFolder(Link link) {
  static int number = 0;
  wchar_t temp[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  path_ = toUtf8(temp) + "quillet-ui-" + std::to_string(GetCurrentProcessId()) + "-" +
          std::to_string(++number) + "\\";
  removeTree(toWide(path_));  // left by a run that was killed
  std::string made = path_;
  CreateDirectoryW(toWide(made).c_str(), nullptr);
  for (const char* part : {"Skin\\", "Default\\", "SMS\\"})
    CreateDirectoryW(toWide(made += part).c_str(), nullptr);
  for (const char* name : {"skin.ini", "mobile.png", "pc.png", "minbox.png", "moutbox.png", "pinbox.png",
                           "psent.png", "pdraft.png", "button.png"})
    copy(QUILLET_SKIN + std::string(name), "Skin\\Default\\SMS\\" + std::string(name));
  write("port.ini", "[port]\r\ncom=3\r\n");
  if (link == Link::scripted) copy(ownFolder() + "scripted_link.dll", "SMS_DLL2.dll");
  if (link == Link::half) copy(ownFolder() + "half_link.dll", "SMS_DLL2.dll");
}

ProgramFolder::~ProgramFolder() {
  if (library_) FreeLibrary(library_);
  removeTree(toWide(path_));
}

void ProgramFolder::write(const std::string& name, std::string_view bytes) const {
  FILE* const file = _wfopen(toWide(path_ + name).c_str(), L"wb");
  ASSERT_NE(file, nullptr) << name;
  fwrite(bytes.data(), 1, bytes.size(), file);
  fclose(file);
}

std::string ProgramFolder::read(const std::string& name) const {
  std::string bytes;
  if (FILE* const file = _wfopen(toWide(path_ + name).c_str(), L"rb")) {
    char part[4096];
    while (const std::size_t got = fread(part, 1, sizeof part, file)) bytes.append(part, got);
    fclose(file);
  }
  return bytes;
}

void ProgramFolder::remove(const std::string& name) const {
  DeleteFileW(toWide(path_ + name).c_str());
}

void ProgramFolder::copy(const std::string& from, const std::string& name) const {
  ASSERT_TRUE(CopyFileW(toWide(from).c_str(), toWide(path_ + name).c_str(), FALSE)) << from << " to " << name;
}

ScriptedLink& ProgramFolder::script() {
  if (!library_) library_ = LoadLibraryW(toWide(path_ + "SMS_DLL2.dll").c_str());
  const auto state = reinterpret_cast<ScriptedLink* (*)()>(
      reinterpret_cast<void*>(GetProcAddress(library_, "scriptedLink")));
  return *state();
}

RunningApp::~RunningApp() {
  end();
}

int RunningApp::end() {
  if (frame() && frame()->handle()) {
    frame()->send(WM_CLOSE);
    settle();
  }
  if (!std::exchange(started_, false)) return 0;
  return exitInstance();
}

void RunningApp::settle() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT || preTranslate(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  onIdle();
}

void RunningApp::press(HWND window, UINT key, bool control, bool shift) {
  BYTE keys[256];
  GetKeyboardState(keys);
  const auto hold = [&keys](int held, bool down) { keys[held] = static_cast<BYTE>(down ? 0x80 : 0); };
  hold(VK_CONTROL, control);
  hold(VK_SHIFT, shift);
  SetKeyboardState(keys);
  MSG message{};
  message.hwnd = window;
  message.message = WM_KEYDOWN;
  message.wParam = key;
  if (!preTranslate(message)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  hold(VK_CONTROL, false);
  hold(VK_SHIFT, false);
  SetKeyboardState(keys);
  settle();
}

std::string RunningApp::label(store::Folder folder) const {
  return tree().itemText(store::folderState().items[store::position(folder)]);
}

std::vector<std::string> RunningApp::column(int index) const {
  std::vector<std::string> texts;
  for (int row = 0; row < list().itemCount(); ++row) texts.push_back(list().itemText(row, index));
  return texts;
}

std::string RunningApp::heading(int column) const {
  wchar_t text[64] = L"";
  LVCOLUMNW query{};
  query.mask = LVCF_TEXT;
  query.pszText = text;
  query.cchTextMax = 64;
  ListView_GetColumn(list().handle(), column, &query);
  return toUtf8(text);
}

std::string RunningApp::status() const {
  wchar_t text[1024] = L"";
  frame()->statusBar().send(SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text));
  return toUtf8(text);
}

bool RunningApp::canRun(UINT command) {
  const auto site = frame()->findCommand(command);
  return site && site->enabled();
}

void RunningApp::clickFolder(store::Folder folder) {
  clickTree();
  selectFolder(folder);
}

void RunningApp::clickTree() const {
  notify<NMHDR>(tree().handle(), static_cast<UINT>(NM_CLICK));
}

void RunningApp::clickHeading(int column) const {
  NMLISTVIEW click{};
  click.iItem = -1;
  click.iSubItem = column;
  notify(list().handle(), LVN_COLUMNCLICK, click);
}

void RunningApp::clickTwice() const {
  notify<NMHDR>(list().handle(), static_cast<UINT>(NM_DBLCLK));
}

void RunningApp::selectRows(std::span<const int> rows) const {
  ListView_SetItemState(list().handle(), -1, 0, LVIS_SELECTED);
  for (const int row : rows) ListView_SetItemState(list().handle(), row, LVIS_SELECTED, LVIS_SELECTED);
}

void RunningApp::beginDrag(int row) const {
  NMLISTVIEW begin{};
  begin.iItem = row;
  begin.ptAction = {20, 30};
  notify(list().handle(), static_cast<UINT>(LVN_BEGINDRAG), begin);
}

void RunningApp::drag(UINT message, POINT at) const {
  ScreenToClient(list().handle(), &at);
  list().send(message, MK_LBUTTON, MAKELPARAM(at.x, at.y));
}

void RunningApp::dragTo(POINT at) const {
  beginDrag(0);
  drag(WM_MOUSEMOVE, at);
  drag(WM_LBUTTONUP, at);
}

POINT RunningApp::middleOf(store::TreeItem item) const {
  RECT rect{};
  TreeView_GetItemRect(tree().handle(), item, &rect, TRUE);
  POINT middle{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
  ClientToScreen(tree().handle(), &middle);
  return middle;
}

POINT RunningApp::middleOf(store::Folder folder) const {
  return middleOf(store::folderState().items[store::position(folder)]);
}

void RunningApp::selectFolder(store::Folder folder) {
  tree().selectItem(store::folderState().items[store::position(folder)]);
  settle();
}

BoxWatcher::BoxWatcher() : timer_(SetTimer(nullptr, 0, 30, onTimer)) {
  activeWatcher = this;
}

BoxWatcher::~BoxWatcher() {
  KillTimer(nullptr, timer_);
  activeWatcher = nullptr;
}

void CALLBACK BoxWatcher::onTimer(HWND, UINT, UINT_PTR, DWORD) {
  const HWND box = activeWatcher ? shownDialog() : nullptr;
  if (!box) return;
  std::string text = windowText(box) + ":";
  for (HWND part = nullptr; (part = FindWindowExW(box, part, L"Static", nullptr));)
    if (const std::string words = windowText(part); !words.empty()) text += " " + words;
  activeWatcher->seen_.push_back(text);
  EndDialog(box, IDOK);
}

phonelink::MessageEntry entryOf(const std::string& text, const std::string& phone, const std::string& time,
                                std::uint16_t status) {
  phonelink::MessageEntry entry;
  entry.setNarrowText(text);
  entry.phone = phone;
  entry.time = time;
  entry.status = status;
  return entry;
}

void putReceived(ScriptedLink& script, const phonelink::MessageEntry& entry) {
  const auto place = static_cast<std::size_t>(script.receivedResult++) * phonelink::messageEntrySize;
  phonelink::encodeMessage(
      entry,
      std::as_writable_bytes(std::span{script.received}).subspan(place).first<phonelink::messageEntrySize>());
}

void putSent(ScriptedLink& script, const phonelink::MessageEntry& entry) {
  const auto place = static_cast<std::size_t>(script.senderResult++) * phonelink::messageEntrySize;
  phonelink::encodeMessage(
      entry,
      std::as_writable_bytes(std::span{script.sender}).subspan(place).first<phonelink::messageEntrySize>());
}

void putHandset(ScriptedLink& script, const phonelink::MessageEntry& entry) {
  const auto place = static_cast<std::size_t>(script.handsetResult++) * phonelink::handsetEntrySize;
  phonelink::encodeHandsetMessage(
      entry,
      std::as_writable_bytes(std::span{script.handset}).subspan(place).first<phonelink::handsetEntrySize>());
}
