#include "app/quillet_app.h"

#include <new>
#include <utility>

#include "app/about_dialog.h"
#include "app/quillet_doc.h"
#include "dialogs/new_message_dialog.h"
#include "dialogs/reader_dialog.h"
#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "resources/resource_ids.h"
#include "skin/settings.h"
#include "skin/skin_state.h"
#include "store/folder_state.h"
#include "store/leading_number.h"

namespace app {

using framework::formatText;
using framework::loadString;
using framework::toWide;

CQuilletApp::CQuilletApp(std::string moduleDirectory, std::unique_ptr<store::FileSystem> files)
    : moduleDirectory_(std::move(moduleDirectory)), files_(std::move(files)), link_(codePage_) {}

const framework::CommandMap* CQuilletApp::commandMap() const {
  // Nothing is printed, so there is no print set-up to offer.
  static constexpr framework::CommandEntry entries[] = {
      framework::command<&CQuilletApp::onNew>(ID_NEW),
      framework::command<&CQuilletApp::onRefresh>(ID_REFRESH),
      framework::command<&CQuilletApp::onAbout>(ID_APP_ABOUT),
  };
  static const framework::CommandMap map{entries, CWinApp::commandMap()};
  return &map;
}

bool CQuilletApp::initInstance() {
  instance_.emplace(moduleDirectory_);
  if (instance_->isSecond()) {
    instance_->showFirst();
    return false;
  }
  store::resetFolderState();
  store::setStorePaths(store::folderState(), moduleDirectory_);

  // Windows needs no enabling of containers for controls, nor of a 3-D look, any more.
  loadResourceLibrary();
  // No settings are kept in the registry: what can be set stands in the files beside the program.
  library_.load(moduleDirectory_, link_);
  readPort();
  if (!connect()) return false;
  if (!createFrame()) return false;
  frame()->setText(loadString(IDS_TITLE));
  detectPlatform();
  firstLoad();
  richEdit_ = framework::loadSystemLibrary("riched20.dll");
  skin::skinState() = {};
  skin::skinState().moduleDirectory = moduleDirectory_;
  readSkinFont();
  return true;
}

int CQuilletApp::exitInstance() {
  library_.unload(link_);
  framework::setResourceModule(nullptr);
  const bool broughtFirstToFront = instance_ && instance_->isSecond();
  return broughtFirstToFront ? 0 : CWinApp::exitInstance();
}

void CQuilletApp::loadResourceLibrary() {
  resourceLibrary_ = framework::loadResourceLibrary(moduleDirectory_ + "zelSMS.dll");
  framework::setResourceModule(resourceLibrary_.get());
}

void CQuilletApp::readPort() {
  std::string value;
  const bool found = skin::zl_GetSettingString("port", "com", moduleDirectory_ + "port.ini", value);
  port_ = found ? store::leadingNumber(value) : -1;
}

void CQuilletApp::readSkinFont() {
  const std::string file = skin::skinFile(moduleDirectory_);
  std::string size;
  skin::zl_GetSettingString("Font", "facename", file, skin::skinState().fontFace);
  if (skin::zl_GetSettingString("Font", "fontsize", file, size))
    skin::skinState().fontSize = store::leadingNumber(size);
}

bool CQuilletApp::connect() {
  if (!link_.isBound()) {
    showMessage(loadString(IDS_NO_LIBRARY));
    return true;
  }
  if (link_.open(port_)) return true;
  showMessage(loadString(IDS_NO_CONNECTION));
  return false;
}

bool CQuilletApp::createFrame() {
  INITCOMMONCONTROLSEX controls{sizeof controls,
                                ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  const tree::LeftViewServices services{
      link_,
      *files_,
      codePage_,
      moduleDirectory_,
      [this](const store::StoreFile& file, const store::ReadResult& result) { reportUnread(file, result); },
      [this](const store::WriteResult& result, UINT failure) { reportWrite(result, failure); },
      [this](const std::string& text) { frame()->statusBar().setMessage(text); },
  };
  addDocTemplate(std::make_unique<framework::CSingleDocTemplate>(
      IDR_MAINFRAME, [] { return std::make_unique<CQuilletDoc>(); },
      [services] { return std::make_unique<CMainFrame>(services); }));
  if (!processShellCommand()) return false;
  frame()->list().setOpenHandler([this](int slot) { openReader(slot); });
  ShowWindow(frame()->handle(), SW_SHOWNORMAL);
  // The panes too: the handset may keep the thread busy for a while from here on.
  RedrawWindow(frame()->handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  return true;
}

void CQuilletApp::detectPlatform() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  store::folderState().windows98Mode = GetVersionExA(&version) &&
                                       version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS &&
                                       version.dwMinorVersion == 10;
}

void CQuilletApp::firstLoad() {
  store::FolderState& state = store::folderState();
  const std::string texts[] = {loadString(IDS_MOBILE),        loadString(IDS_MOBILE_INBOX),
                               loadString(IDS_MOBILE_OUTBOX), loadString(IDS_PC),
                               loadString(IDS_PC_INBOX),      loadString(IDS_PC_SENT),
                               loadString(IDS_PC_DRAFT)};
  store::joinFolderPaths(state, {texts[0], texts[1], texts[2], texts[3], texts[4], texts[5], texts[6]});
  const framework::CWaitCursor wait;
  frame()->tree().findItems();
  for (const store::Folder folder : store::allFolders) reload(folder);
  state.selectedItem = state.items[store::position(store::Folder::MInbox)];
  show(store::Folder::MInbox);
  showSummary();
}

void CQuilletApp::onRefresh() {
  const framework::CWaitCursor wait;
  notes_.clear();
  if (phonelink::refreshAll(*this))
    showSummary();
  else
    frame()->statusBar().setMessage(loadString(IDS_NO_CONNECTION));
}

void CQuilletApp::onNew() {
  dialogs::NewMessageDialog dialog(dialogs::ComposeServices{
      link_, [this] { return reconnectForSending(); },
      [this](store::Folder folder, const store::SmsRecord& message, store::LineBreaks breaks) {
        return file(folder, message, breaks);
      },
      [this] { reloadFiled(); },
      [this](const store::WriteResult& result) { return describe(result, IDS_CANNOT_WRITE); },
      [this](const std::string& text) { frame()->statusBar().setMessage(text); }});
  dialog.doModal(frame()->handle());
}

bool CQuilletApp::reconnectForSending() {
  closeHandset();
  if (connect()) return true;
  emptyList();
  freeTable(store::Folder::MInbox);
  freeTable(store::Folder::MOutbox);
  return false;
}

store::WriteResult CQuilletApp::file(store::Folder folder, const store::SmsRecord& message,
                                     store::LineBreaks breaks) {
  const store::WriteResult result = frame()->tree().file(folder, message, breaks);
  try {
    if (result.ok()) reportWrite(result, IDS_CANNOT_WRITE);
  } catch (const std::bad_alloc&) {
    framework::reportOutOfMemory();  // filed is filed
  }
  return result;
}

void CQuilletApp::reloadFiled() {
  try {
    readFiledAgain();
  } catch (const std::bad_alloc&) {
    framework::reportOutOfMemory();  // what has been filed must not be filed again for that
  }
}

void CQuilletApp::readFiledAgain() {
  notes_.clear();
  const auto selected = selectedFolder();
  for (const store::Folder folder : {store::Folder::PSent, store::Folder::PDraft}) {
    freeTable(folder);
    frame()->tree().reload(folder);
    if (selected != folder) continue;
    emptyList();
    show(folder);
  }
  if (!notes_.empty()) frame()->statusBar().setMessage(notes_);
}

std::string CQuilletApp::describe(const store::WriteResult& result, UINT failure) const {
  const bool notRead = result.outcome == store::WriteResult::Outcome::notRead;
  return formatText(loadString(failure), {result.file, notRead ? loadString(IDS_NOT_READ_YET)
                                                               : files_->describe(result.status.code)});
}

void CQuilletApp::reportWrite(const store::WriteResult& result, UINT failure) {
  if (!result.keptCopy.empty()) showMessage(formatText(loadString(IDS_COPY_KEPT), {result.keptCopy}));
  if (!result.ok()) showMessage(describe(result, failure));
}

void CQuilletApp::openReader(int slot) {
  const auto folder = selectedFolder();
  if (!folder) return;
  dialogs::ReaderDialog dialog(std::as_const(frame()->tree()).tables()[*folder].records(), slot);
  dialog.doModal(frame()->handle());
}

void CQuilletApp::reload(store::Folder folder) {
  const store::FolderState& state = store::folderState();
  const std::size_t place = store::position(folder);
  // The handset may take a while. A store is read before anybody could read that it is.
  if (store::isOnHandset(folder))
    frame()->statusBar().setMessage(formatText(loadString(IDS_READING), {state.folderPaths[place]}));
  if (state.windows98Mode)
    frame()->tree().refreshCount(state.folderPaths[place]);
  else
    frame()->tree().refreshCount(state.items[place]);
}

void CQuilletApp::emptyList() {
  frame()->list().cancelDrag();
  frame()->list().deleteAllItems();
}

std::optional<store::Folder> CQuilletApp::selectedFolder() const {
  return store::selectedFolder(store::folderState());
}

void CQuilletApp::reportUnread(const store::StoreFile& file, const store::ReadResult& result) {
  if (result.ok()) {
    const std::string name = file.path().substr(moduleDirectory_.size());
    notes_ += formatText(loadString(IDS_PARTLY_READ), {name}) + " ";
    return;
  }
  showMessage(formatText(loadString(IDS_CANNOT_READ), {file.path(), files_->describe(result.status.code)}),
              MB_ICONWARNING);
}

void CQuilletApp::showSummary() {
  std::string summary;
  for (const store::Folder folder : store::allFolders) {
    if (!summary.empty()) summary += ", ";
    summary +=
        formatText(loadString(IDS_READ_COUNTS), {store::folderState().folderPaths[store::position(folder)],
                                                 std::to_string(frame()->tree().tables()[folder].size())});
  }
  frame()->statusBar().setMessage(notes_ + summary);
}

// The box has no owner; without MB_TASKMODAL the window would take commands behind it.
// It holds back every window, a dialog before the frame too, where Send would send once more.
int CQuilletApp::showMessage(const std::string& text, UINT icon) const {
  return MessageBoxW(nullptr, toWide(text).c_str(), toWide(loadString(IDS_TITLE)).c_str(),
                     MB_OK | MB_TASKMODAL | icon);
}

void CQuilletApp::onAbout() {
  AboutDialog dialog;
  dialog.doModal(frame()->handle());
}

}  // namespace app
