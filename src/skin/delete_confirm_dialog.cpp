#include "skin/delete_confirm_dialog.h"

#include "resources/resource_ids.h"

namespace skin {

DeleteConfirmDialog::DeleteConfirmDialog() : CSkinDialog(IDD_DELETE_CONFIRM) {}

bool DeleteConfirmDialog::onInitDialog() {
  CSkinDialog::onInitDialog();
  skinButtons({{cancel_, IDCANCEL}, {ok_, IDOK}});
  const ControlText texts[] = {
      {IDC_DELETE_QUESTION, deleteAll ? UINT{IDS_DELETE_ALL_QUESTION} : UINT{IDS_DELETE_QUESTION}},
      {IDCANCEL, IDS_CANCEL},
      {IDOK, IDS_OK},
      {theDialog, IDS_TITLE}};
  setTexts(texts);
  return true;
}

}  // namespace skin
