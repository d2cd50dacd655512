#include <windows.h>

#include "app/quillet_app.h"
#include "framework/module.h"
#include "framework/text.h"
#include "skin/settings.h"
#include "text/plain.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int) {
  framework::restrictLibrarySearch();
  app::CQuilletApp program(skin::zl_GetModulePath());
  const std::string arguments(text::trimmed(framework::toUtf8(commandLine)));
  if (text::equalInAnyCase(arguments, "/offline")) {
    program.goOffline();
  } else if (!arguments.empty()) {
    program.showSwitches();
    return arguments == "/?" ? 0 : 1;
  }
  return program.run();
}
