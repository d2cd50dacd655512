#pragma once

#include "framework/wnd.h"

namespace framework {

// A modal dialog made from a dialog resource. The object lives on its caller's stack.
class CDialog : public CWnd {
 public:
  explicit CDialog(UINT resourceId) : resourceId_(resourceId) {}

  static constexpr INT_PTR notShown = -1;

  // Shows the dialog until it ends; what endDialog was given, notShown when it could not be made, 0 when it
  // went without an answer.
  INT_PTR doModal(HWND owner);

  HWND item(UINT id) const { return GetDlgItem(handle(), static_cast<int>(id)); }
  std::string itemText(UINT id) const;
  void setItemText(UINT id, std::string_view text);
  void endDialog(INT_PTR result) { EndDialog(handle(), result); }

 protected:
  // False when the dialog has set the focus itself.
  virtual bool onInitDialog() { return true; }
  virtual void onOk() { endDialog(IDOK); }
  virtual void onCancel() { endDialog(IDCANCEL); }
  const MessageMap* messageMap() const override;

 private:
  LRESULT onInit();

  UINT resourceId_;
};

}  // namespace framework
