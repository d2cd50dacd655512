#pragma once

#include <memory>

#include "framework/cmd_target.h"
#include "framework/frame_wnd.h"
#include "framework/single_doc_template.h"

namespace framework {

// The application: start-up, the message loop with idle updates, exit. One at a time; the newest object is
// the current one.
class CWinApp : public CCmdTarget {
 public:
  CWinApp();
  ~CWinApp() override;
  static CWinApp* current();

  // initInstance, the loop until the main window is gone, exitInstance. The process's exit code.
  int run();

  // The system ends the session and the process with it: what exit does is done now.
  void endSession();

  CFrameWnd* mainFrame() const { return mainFrame_; }
  // Brings the window up to date with the state of its commands; what the loop does when idle.
  void onIdle();
  // Offers a message to the window it is for and to the windows around it, innermost first.
  static bool preTranslate(MSG& message);

 protected:
  virtual bool initInstance() = 0;
  virtual int exitInstance() { return exitCode_; }

  void addDocTemplate(std::unique_ptr<CSingleDocTemplate> docTemplate) { template_ = std::move(docTemplate); }
  // Acts on the command line: the program takes no arguments, so a new document is opened.
  bool processShellCommand();

 private:
  int pump();

  std::unique_ptr<CSingleDocTemplate> template_;
  CFrameWnd* mainFrame_ = nullptr;
  CWinApp* former_;
  int exitCode_ = 0;
};

}  // namespace framework
