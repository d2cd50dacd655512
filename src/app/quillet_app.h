#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/main_frame.h"
#include "app/single_instance.h"
#include "app/windows_code_page.h"
#include "app/windows_files.h"
#include "framework/handles.h"
#include "framework/win_app.h"
#include "phonelink/phone_link.h"
#include "phonelink/phone_link_library.h"
#include "phonelink/refresh.h"

namespace app {

// The program: start-up, the connection to the handset, Refresh, exit.
class CQuilletApp : public framework::CWinApp, private phonelink::RefreshTarget {
 public:
  // The folder with the settings, the skin, the stores and the libraries, ending in a backslash.
  explicit CQuilletApp(std::string moduleDirectory,
                       std::unique_ptr<store::FileSystem> files = std::make_unique<WindowsFiles>());

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
  void onNew();
  void onRefresh();
  void onAbout();

  // Opens the handset at the configured port. True without a library, too: the program goes on without a
  // handset. Either failure is told to the person.
  bool connect() override;
  void freeTable(store::Folder folder) override { frame()->tree().freeTable(folder); }
  void emptyList() override;
  void closeHandset() override { link_.close(); }
  void reload(store::Folder folder) override;
  std::optional<store::Folder> selectedFolder() const override;
  void show(store::Folder folder) override { frame()->tree().showInList(folder); }

  // For composing: the handset opened anew, or, when that fails, its messages gone from the window.
  bool reconnectForSending();
  store::WriteResult file(store::Folder folder, const store::SmsRecord& message, store::LineBreaks breaks);
  void reloadFiled();
  void readFiledAgain();
  // What was put aside and, with the text for it, why nothing was written; nothing when all went plainly.
  void reportWrite(const store::WriteResult& result, UINT failure);
  std::string describe(const store::WriteResult& result, UINT failure) const;
  void openReader(int slot);

  void reportUnread(const store::StoreFile& file, const store::ReadResult& result);
  void showSummary();
  int showMessage(const std::string& text, UINT icon = 0) const;

  std::string moduleDirectory_;
  std::unique_ptr<store::FileSystem> files_;
  WindowsCodePage codePage_;
  phonelink::PhoneLink link_;
  phonelink::PhoneLinkLibrary library_;
  framework::UniqueModule resourceLibrary_;
  framework::UniqueModule richEdit_;
  std::optional<SingleInstance> instance_;
  std::string notes_;  // what a reading has left to say, for the status bar
  int port_ = -1;
};

}  // namespace app
