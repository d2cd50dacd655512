#include "app/about_dialog.h"

#include <utility>

#include "framework/resources.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "version.h"

namespace app {

AboutDialog::AboutDialog(bool manualThere, std::function<void()> openManual)
    : CSkinDialog(IDD_ABOUT), manualThere_(manualThere), openManual_(std::move(openManual)) {}

const framework::MessageMap* AboutDialog::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onControl<&AboutDialog::onManual>(BN_CLICKED, IDC_MANUAL),
  };
  static const framework::MessageMap map{entries, CSkinDialog::messageMap()};
  return &map;
}

bool AboutDialog::onInitDialog() {
  static constexpr skin::ControlText texts[] = {{IDC_ABOUT_TEXT, IDS_ABOUT_TEXT},
                                                {IDC_MANUAL, IDS_MANUAL},
                                                {IDOK, IDS_OK},
                                                {skin::theDialog, IDS_TITLE}};
  CSkinDialog::onInitDialog();
  skinButtons({{manual_, IDC_MANUAL}, {ok_, IDOK}});
  setTexts(texts);
  setItemText(IDC_ABOUT_TITLE,
              framework::formatText(framework::loadString(IDS_ABOUT_VERSION), {QUILLET_VERSION_TEXT}));
  ShowWindow(item(IDC_MANUAL), manualThere_ ? SW_SHOW : SW_HIDE);
  return true;
}

}  // namespace app
