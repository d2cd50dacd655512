#include "framework/win_app.h"

#include <new>

#include "framework/framework_state.h"

namespace framework {
CWinApp::CWinApp() : former_(frameworkState().app) {
  frameworkState().app = this;
}

CWinApp::~CWinApp() {
  frameworkState().app = former_;
}

CWinApp* CWinApp::current() {
  return frameworkState().app;
}

int CWinApp::run() {
  exitCode_ = 1;
  try {
    if (initInstance()) exitCode_ = pump();
  } catch (const std::bad_alloc&) {
    reportOutOfMemory();
  }
  return exitInstance();
}

void CWinApp::endSession() {
  exitInstance();
}

bool CWinApp::processShellCommand() {
  mainFrame_ = template_ ? template_->openNewDocument() : nullptr;
  return mainFrame_ != nullptr;
}

void CWinApp::onIdle() {
  if (mainFrame_ && mainFrame_->handle()) mainFrame_->updateOnIdle();
}

bool CWinApp::preTranslate(MSG& message) {
  for (HWND window = message.hwnd; window; window = GetParent(window))
    if (CWnd* object = CWnd::fromHandle(window); object && object->preTranslateMessage(message)) return true;
  return false;
}

int CWinApp::pump() {
  MSG message{};
  for (;;) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) onIdle();
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got <= 0) return got == 0 ? static_cast<int>(message.wParam) : 1;
    if (preTranslate(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace framework
