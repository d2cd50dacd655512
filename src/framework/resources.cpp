#include "framework/resources.h"

#include "framework/framework_state.h"
#include "framework/text.h"

namespace framework {
namespace {

std::string stringOf(HMODULE module, UINT id) {
  const wchar_t* text = nullptr;  // with size 0 the call hands out the text in place
  const int length = LoadStringW(module, id, reinterpret_cast<wchar_t*>(&text), 0);
  return length > 0 ? toUtf8({text, static_cast<std::size_t>(length)}) : std::string();
}

}  // namespace

void setResourceModule(HMODULE module) {
  frameworkState().resourceModule = module;
}

std::string loadString(UINT id) {
  std::string text;
  if (const HMODULE library = frameworkState().resourceModule) text = stringOf(library, id);
  return text.empty() ? stringOf(GetModuleHandleW(nullptr), id) : text;
}

HMODULE moduleWithResource(const wchar_t* type, UINT id) {
  const HMODULE library = frameworkState().resourceModule;
  return library && FindResourceW(library, MAKEINTRESOURCEW(id), type) ? library : GetModuleHandleW(nullptr);
}

}  // namespace framework
