#include "app/quillet_app.h"

#include <utility>

#include "app/about_dialog.h"
#include "app/manual.h"
#include "app/quillet_doc.h"
#include "app/resource_library.h"
#include "framework/input_lock.h"
#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/reports.h"
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
      framework::command<&CQuilletApp::answerSelected<ID_REPLY>, &CQuilletApp::canReply>(ID_REPLY),
      framework::command<&CQuilletApp::answerSelected<ID_FORWARD>, &CQuilletApp::canAnswer>(ID_FORWARD),
      framework::command<&CQuilletApp::answerSelected<ID_EDIT_AS_NEW>, &CQuilletApp::canAnswer>(
          ID_EDIT_AS_NEW),
      framework::command<&CQuilletApp::onRemove, &CQuilletApp::canRemove>(ID_REMOVE),
      framework::command<&CQuilletApp::onLastSend, &CQuilletApp::canShowLastSend>(ID_LAST_SEND),
      framework::command<&CQuilletApp::onHelp>(ID_HELP),
      framework::command<&CQuilletApp::onAbout>(ID_APP_ABOUT),
  };
  static const framework::CommandMap map{entries, CWinApp::commandMap()};
  return &map;
}

bool CQuilletApp::initInstance() {
  loadResourceLibrary();
  instance_.emplace(moduleDirectory_);
  if (instance_->isSecond()) {
    if (!instance_->showFirst()) list::showMessage(loadString(IDS_NO_WINDOW));
    return false;
  }
  store::resetFolderState();

  // Windows needs no enabling of containers for controls, nor of a 3-D look, any more.
  // No settings are kept in the registry: what can be set stands in the files beside the program.
  if (!offline_) library_.load(moduleDirectory_, link_);
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
  resourceLibrary_ = loadTexts(moduleDirectory_);
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

void CQuilletApp::showSwitches() {
  loadResourceLibrary();
  list::showMessage(loadString(IDS_SWITCHES));
  framework::setResourceModule(nullptr);
}

bool CQuilletApp::connect() {
  if (offline_) return true;
  if (!link_.isBound()) {
    list::showMessage(loadString(IDS_NO_LIBRARY));
    return true;
  }
  bool opened = false;
  {
    const framework::CInputLock lock;
    opened = link_.open(port_);
  }
  if (opened) return true;
  list::showMessage(loadString(IDS_NO_CONNECTION));
  return false;
}

bool CQuilletApp::createFrame() {
  INITCOMMONCONTROLSEX controls{sizeof controls,
                                ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  const tree::LeftViewServices services{
      link_, *files_, codePage_, moduleDirectory_, [this](const std::string& text) { showStatus(text); },
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
  store::joinFolderPaths(state, loadString);
  const framework::CWaitCursor wait;
  frame()->tree().findItems();
  for (const store::FolderRow& row : store::folderRows) reload(row.folder);
  state.selectedItem = state.items[store::position(store::Folder::MInbox)];
  frame()->tree().showSelected();
  showSummary();
}

void CQuilletApp::onRefresh() {
  const framework::CWaitCursor wait;
  tree::CLeftView& tree = frame()->tree();
  frame()->list().empty();
  for (const store::FolderRow& row : store::folderRows) tree.folders().clear(row.folder);
  // Where it fails, the labels keep their counts: the messages are still there.
  if (!reconnect()) return;
  for (const store::FolderRow& row : store::folderRows) reload(row.folder);
  tree.showSelected();
  showSummary();
}

bool CQuilletApp::reconnect() {
  showStatus(loadString(IDS_CONNECTING));
  {
    const framework::CInputLock lock;
    link_.close();
  }
  const bool connected = connect();
  showStatus(loadString(connected ? IDS_READY : IDS_NOT_REFRESHED));
  return connected;
}

bool CQuilletApp::reconnectForSending() {
  if (reconnect()) return true;
  frame()->list().empty();
  for (const store::Folder folder : {store::Folder::MInbox, store::Folder::MOutbox})
    frame()->tree().folders().clear(folder);
  return false;
}

void CQuilletApp::reload(store::Folder folder) {
  const store::FolderState& state = store::folderState();
  const std::size_t place = store::position(folder);
  // The handset may take a while. A store is read before anybody could read that it is.
  if (!store::isOnPc(folder)) showStatus(formatText(loadString(IDS_READING), {state.folderPaths[place]}));
  if (state.windows98Mode)
    frame()->tree().refreshCount(state.folderPaths[place]);
  else
    frame()->tree().refreshCount(state.items[place]);
}

void CQuilletApp::showSummary() {
  std::string summary;
  for (const store::FolderRow& row : store::folderRows) {
    if (!summary.empty()) summary += ", ";
    tree::CLeftView& tree = frame()->tree();
    summary +=
        formatText(loadString(IDS_READ_COUNTS),
                   {store::folderState().folderPaths[store::position(row.folder)],
                    tree.isUnreadable(row.folder) ? "?" : std::to_string(tree.folders()[row.folder].size())});
  }
  std::string handset = loadString(IDS_OFFLINE);
  if (!offline_) {
    const framework::CInputLock lock;
    handset = link_.describe();
    if (const std::string room = link_.room(); !room.empty()) handset += (handset.empty() ? "" : ", ") + room;
  }
  if (!handset.empty()) summary = formatText(loadString(IDS_HANDSET_SUMMARY), {handset, summary});
  frame()->tree().showResult(summary);
}

void CQuilletApp::onHelp() {
  const DWORD problem = openManual(frame()->handle(), moduleDirectory_);
  if (problem == ERROR_SUCCESS) return;
  showStatus(problem == ERROR_FILE_NOT_FOUND ? loadString(IDS_NO_MANUAL)
                                             : framework::systemErrorText(problem));
}

void CQuilletApp::onAbout() {
  AboutDialog dialog(isManualThere(moduleDirectory_), [this] { onHelp(); });
  dialog.doModal(frame()->handle());
}

}  // namespace app
