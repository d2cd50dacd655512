#include <windows.h>

#include "app/quillet_app.h"
#include "framework/module.h"
#include "skin/settings.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  framework::restrictLibrarySearch();
  app::CQuilletApp program(skin::zl_GetModulePath());
  return program.run();
}
