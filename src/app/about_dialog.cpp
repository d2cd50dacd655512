#include "app/about_dialog.h"

#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "version.h"

namespace app {

AboutDialog::AboutDialog() : CDialog(IDD_ABOUT) {}

bool AboutDialog::onInitDialog() {
  setText(framework::loadString(IDS_TITLE));
  setItemText(IDC_ABOUT_TITLE,
              framework::formatText(framework::loadString(IDS_ABOUT_VERSION), {QUILLET_VERSION_TEXT}));
  setItemText(IDC_ABOUT_TEXT, framework::loadString(IDS_ABOUT_TEXT));
  setItemText(IDOK, framework::loadString(IDS_OK));
  return true;
}

}  // namespace app
