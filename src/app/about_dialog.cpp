#include "app/about_dialog.h"

#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "version.h"

namespace app {

AboutDialog::AboutDialog() : CSkinDialog(IDD_ABOUT) {}

bool AboutDialog::onInitDialog() {
  static constexpr skin::ControlText texts[] = {
      {IDC_ABOUT_TEXT, IDS_ABOUT_TEXT}, {IDOK, IDS_OK}, {skin::theDialog, IDS_TITLE}};
  CSkinDialog::onInitDialog();
  skinButtons({{ok_, IDOK}});
  setTexts(texts);
  setItemText(IDC_ABOUT_TITLE,
              framework::formatText(framework::loadString(IDS_ABOUT_VERSION), {QUILLET_VERSION_TEXT}));
  return true;
}

}  // namespace app
