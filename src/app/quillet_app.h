#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/main_frame.h"
#include "app/single_instance.h"
#include "app/windows_files.h"
#include "dialogs/compose_services.h"
#include "dialogs/compose_start.h"
#include "framework/handles.h"
#include "framework/win_app.h"
#include "phonelink/phone_link.h"
#include "phonelink/phone_link_library.h"
#include "text/system.h"

namespace app {

// The program: start-up, the connection to the handset, Refresh, exit.
class CQuilletApp : public framework::CWinApp {
 public:
  // The folder with the settings, the skin, the stores and the libraries, ending in a backslash.
  explicit CQuilletApp(std::string moduleDirectory,
                       std::unique_ptr<store::FileSystem> files = std::make_unique<WindowsFiles>());

  // Before run: the program does without the phone-link library, and without a word about that.
  void goOffline() { offline_ = true; }
  // Instead of run: says which switches there are.
  void showSwitches();

  // The handset's port; -1 when the settings name none.
  int port() const { return port_; }
  CMainFrame* frame() const { return static_cast<CMainFrame*>(mainFrame()); }

 protected:
  bool initInstance() override;
  int exitInstance() override;
  const framework::CommandMap* commandMap() const override;

 private:
  void loadResourceLibrary();
  void readPort();
  void readSkinFont();
  void detectPlatform();
  bool createFrame();
  void firstLoad();
  void onNew() { compose({}); }
  void onRefresh();
  void onHelp();
  void onAbout();
  void onLastSend();
  void onRemove();
  bool canRemove() const;
  bool canShowLastSend() const { return !lastSend_.deliveries.empty(); }

  // Opens the handset at the configured port. True without a library, too: the program goes on without a
  // handset. Either failure is told to the person.
  bool connect();
  // Closes the handset and opens it again; the status bar says what becomes of it.
  bool reconnect();
  // The same, as composing needs it; when it fails, the handset's messages are gone from the window.
  bool reconnectForSending();
  void reload(store::Folder folder);
  void openReader(int slot);
  // Opens the New message dialog with these texts.
  void compose(dialogs::ComposeStart start);
  // What a button of the reader, or its command, asks for with that message; nothing for other commands.
  void answer(UINT command, store::Folder folder, std::size_t slot);
  // The same with the one message that is selected in the list.
  template <UINT command>
  void answerSelected() {
    answer(command, *frame()->list().shownFolder(), frame()->list().selectedSlots().front());
  }
  bool canAnswer() const { return frame()->list().canOpen(); }
  bool canReply() const;
  dialogs::ComposeServices composeServices();
  void showStatus(const std::string& text) { frame()->statusBar().setMessage(text); }
  void showSummary();
  // Whether the person agrees to lose those of the messages that no PC folder has a copy of.
  bool consentsToLose(const std::vector<store::SmsRecord>& messages);

  std::string moduleDirectory_;
  std::unique_ptr<store::FileSystem> files_;
  text::SystemCodePage codePage_;
  phonelink::PhoneLink link_;
  phonelink::PhoneLinkLibrary library_;
  framework::UniqueModule resourceLibrary_;
  framework::UniqueModule richEdit_;
  std::optional<SingleInstance> instance_;
  int port_ = -1;
  bool offline_ = false;
  dialogs::Sending lastSend_;
};

}  // namespace app
