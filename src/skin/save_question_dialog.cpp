#include "skin/save_question_dialog.h"

#include "resources/resource_ids.h"

namespace skin {

SaveQuestionDialog::SaveQuestionDialog() : CSkinDialog(IDD_SAVE_QUESTION) {}

bool SaveQuestionDialog::onInitDialog() {
  static constexpr ControlText texts[] = {
      {IDC_SAVE_QUESTION, IDS_SAVE_QUESTION}, {IDCANCEL, IDS_CANCEL}, {IDOK, IDS_OK}, {theDialog, IDS_TITLE}};
  CSkinDialog::onInitDialog();
  skinButtons({{cancel_, IDCANCEL}, {ok_, IDOK}});
  setTexts(texts);
  return true;
}

}  // namespace skin
