#pragma once

#include <string>

#include "framework/handles.h"
#include "phonelink/phone_link.h"

namespace phonelink {

// The loaded phone-link library, from binding to unloading. Owned by the application.
class PhoneLinkLibrary {
 public:
  // Loads "SMS_DLL2.dll" from the program's folder (ending in a backslash) or else from the system's, never
  // from the current folder, and binds it. Without it the link stays unbound.
  void load(const std::string& programFolder, PhoneLink& link);
  // Closes the handset, forgets the entry points and unloads; nothing when no library is loaded.
  void unload(PhoneLink& link);

 private:
  framework::UniqueModule module_;
};

}  // namespace phonelink
