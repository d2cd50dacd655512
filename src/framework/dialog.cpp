#include "framework/dialog.h"

#include "framework/resources.h"
#include "framework/text.h"

namespace framework {
namespace {

// What a 32-bit system calls is no plain lambda.
INT_PTR CALLBACK leaveToMessageMap(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

}  // namespace

const MessageMap* CDialog::messageMap() const {
  static constexpr MessageEntry entries[] = {
      onPlain<&CDialog::onInit>(WM_INITDIALOG),
      onControl<&CDialog::onOk>(BN_CLICKED, IDOK),
      onControl<&CDialog::onCancel>(BN_CLICKED, IDCANCEL),
  };
  static const MessageMap map{entries, CWnd::messageMap()};
  return &map;
}

INT_PTR CDialog::doModal(HWND owner) {
  const auto show = [&](HMODULE module) {
    const CreationScope scope(*this);
    return DialogBoxParamW(module, MAKEINTRESOURCEW(resourceId_), owner, leaveToMessageMap, 0);
  };
  const HMODULE own = GetModuleHandleW(nullptr);
  const HMODULE preferred = moduleWithResource(RT_DIALOG, resourceId_);
  const INT_PTR result = show(preferred);
  // A resource library's dialog may be of no use; the program's own always is.
  return result == notShown && preferred != own ? show(own) : result;
}

std::string CDialog::itemText(UINT id) const {
  return windowText(item(id));
}

void CDialog::setItemText(UINT id, std::string_view text) {
  SetWindowTextW(item(id), toWide(text).c_str());
}

LRESULT CDialog::onInit() {
  defaultProcessing();
  return onInitDialog();
}

}  // namespace framework
