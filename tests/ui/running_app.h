#pragma once

#include <span>
#include <string>
#include <vector>

#include "app/quillet_app.h"
#include "phonelink/entry_layouts.h"
#include "scripted_link/scripted_link.h"

// A folder of its own for one test, with settings, skin and a phone-link library; gone afterwards.
class ProgramFolder {
 public:
  enum class Link { scripted, half, none };

  explicit ProgramFolder(Link link = Link::scripted);
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  const std::string& path() const { return path_; }  // ends in a backslash
  void write(const std::string& name, std::string_view bytes) const;
  std::string read(const std::string& name) const;
  void remove(const std::string& name) const;
  void copy(const std::string& from, const std::string& name) const;
  // The scripted library's state; loaded by the first call and kept until the folder is gone.
  ScriptedLink& script();

 private:
  std::string path_;
  HMODULE library_ = nullptr;
};

// The application in this process. It is started and ended by the test, which lets messages run in between.
class RunningApp : public app::CQuilletApp {
 public:
  explicit RunningApp(const ProgramFolder& folder) : CQuilletApp(folder.path()) {}
  RunningApp(const ProgramFolder& folder, std::unique_ptr<store::FileSystem> files)
      : CQuilletApp(folder.path(), std::move(files)) {}
  ~RunningApp() override;

  bool start() { return started_ = initInstance(); }
  int end();
  // Handles all waiting messages, then does what the program does when idle.
  void settle();
  // A key as it comes through the message loop, accelerators included.
  void press(HWND window, UINT key, bool control = false, bool shift = false);

  tree::CLeftView& tree() const { return frame()->tree(); }
  list::CQuilletView& list() const { return frame()->list(); }
  std::string label(store::Folder folder) const;
  std::vector<std::string> column(int index) const;  // texts of all rows
  std::string heading(int column) const;
  int width(int column) const { return ListView_GetColumnWidth(list().handle(), column); }
  std::string status() const;
  bool canRun(UINT command);
  // Selects as a click does: the click's notification first, then the selection.
  void clickFolder(store::Folder folder);
  void selectFolder(store::Folder folder);
  void clickTree() const;
  void clickHeading(int column) const;
  void clickTwice() const;                           // on the list
  void selectRows(std::span<const int> rows) const;  // and no others
  // Rows dragged by the mouse, which the list has until it is released. Points are of the screen.
  void beginDrag(int row) const;
  void drag(UINT message, POINT at) const;
  void dragTo(POINT at) const;
  POINT middleOf(store::TreeItem item) const;
  POINT middleOf(store::Folder folder) const;

 private:
  bool started_ = false;
};

// Answers every message box that comes up while it lives, and keeps their texts.
class BoxWatcher {
 public:
  BoxWatcher();
  ~BoxWatcher();
  BoxWatcher(const BoxWatcher&) = delete;
  BoxWatcher& operator=(const BoxWatcher&) = delete;

  // "caption: text", in the order in which they came.
  const std::vector<std::string>& seen() const { return seen_; }

 private:
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD);

  std::vector<std::string> seen_;
  UINT_PTR timer_;
};

// Puts an entry into the scripted library's buffers.
void putReceived(ScriptedLink& script, const phonelink::MessageEntry& entry);
void putSent(ScriptedLink& script, const phonelink::MessageEntry& entry);
void putHandset(ScriptedLink& script, const phonelink::MessageEntry& entry);
phonelink::MessageEntry entryOf(const std::string& text, const std::string& phone, const std::string& time,
                                std::uint16_t status = 0);
