#include "phonelink/phone_link_library.h"

#include "framework/module.h"

namespace phonelink {

void PhoneLinkLibrary::load(const std::string& programFolder, PhoneLink& link) {
  module_ = framework::loadLibrary(programFolder, "SMS_DLL2.dll");
  if (!module_) return;
  link.bind(bindEntryPoints([module = module_.get()](const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(module, name));
  }));
}

void PhoneLinkLibrary::unload(PhoneLink& link) {
  if (!module_) return;
  link.close();
  link.unbind();
  module_.reset();
}

}  // namespace phonelink
