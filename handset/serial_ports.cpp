#include "handset/serial_ports.h"

#include <windows.h>

#include <devguid.h>
#include <setupapi.h>

#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <string_view>
#include <type_traits>

namespace handset {
namespace {

constexpr DWORD longestText = 512;  // UTF-16 units of a name that is looked at

struct CloseKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

struct DestroyDeviceList {
  void operator()(HDEVINFO list) const { SetupDiDestroyDeviceInfoList(list); }
};
using DeviceList = std::unique_ptr<void, DestroyDeviceList>;

// The n of COMn; 0 when the name is another.
int portNumber(std::wstring_view name) {
  constexpr std::wstring_view prefix = L"COM";
  if (!name.starts_with(prefix) || name.size() == prefix.size()) return 0;
  int number = 0;
  for (const wchar_t digit : name.substr(prefix.size())) {
    if (digit < L'0' || digit > L'9' || number > std::numeric_limits<int>::max() / 10 - 1) return 0;
    number = number * 10 + (digit - L'0');
  }
  return number;
}

// What the drivers have registered: every port, also such as no installed device stands for.
void addRegistered(std::map<int, std::wstring>& ports) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ, &opened)) return;
  const Key key{opened};
  for (DWORD i = 0;; ++i) {
    wchar_t device[longestText];
    wchar_t name[longestText]{};
    DWORD deviceLength = longestText;
    DWORD nameSize = sizeof name - sizeof(wchar_t);
    DWORD type = 0;
    const LSTATUS status = RegEnumValueW(key.get(), i, device, &deviceLength, nullptr, &type,
                                         reinterpret_cast<BYTE*>(name), &nameSize);
    if (status == ERROR_MORE_DATA) continue;
    if (status != ERROR_SUCCESS) return;
    if (const int number = type == REG_SZ ? portNumber(name) : 0) ports[number] = device;
  }
}

std::wstring portNameOf(HDEVINFO list, SP_DEVINFO_DATA& device) {
  const HKEY opened = SetupDiOpenDevRegKey(list, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
  if (opened == INVALID_HANDLE_VALUE) return {};
  const Key key{opened};
  wchar_t name[longestText]{};
  DWORD size = sizeof name - sizeof(wchar_t);
  const LSTATUS status =
      RegQueryValueExW(key.get(), L"PortName", nullptr, nullptr, reinterpret_cast<BYTE*>(name), &size);
  return status == ERROR_SUCCESS ? name : std::wstring{};
}

// What the device manager shows. Phones come as modems as often as they come as ports.
void addInstalled(const GUID& deviceClass, std::map<int, std::wstring>& ports) {
  const HDEVINFO opened = SetupDiGetClassDevsW(&deviceClass, nullptr, nullptr, DIGCF_PRESENT);
  if (opened == INVALID_HANDLE_VALUE) return;
  const DeviceList list{opened};
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof device;
  for (DWORD i = 0; SetupDiEnumDeviceInfo(opened, i, &device); ++i) {
    wchar_t name[longestText]{};
    const bool named = SetupDiGetDeviceRegistryPropertyW(opened, &device, SPDRP_FRIENDLYNAME, nullptr,
                                                         reinterpret_cast<BYTE*>(name),
                                                         sizeof name - sizeof(wchar_t), nullptr);
    const int number = portNumber(portNameOf(opened, device));
    if (number && named) ports[number] = name;
  }
}

}  // namespace

std::vector<SerialPortEntry> serialPorts() {
  std::map<int, std::wstring> ports;
  addRegistered(ports);
  addInstalled(GUID_DEVCLASS_PORTS, ports);
  addInstalled(GUID_DEVCLASS_MODEM, ports);
  std::vector<SerialPortEntry> found;
  for (const auto& [number, description] : ports) found.push_back({number, description});
  return found;
}

}  // namespace handset
