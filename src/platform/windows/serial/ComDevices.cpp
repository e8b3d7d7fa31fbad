#include "platform/windows/serial/ComDevices.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/windows/calls/WinApi.h"
#include "platform/windows/serial/ComNumbers.h"
//
#include <setupapi.h>

namespace tvx {
namespace {

// The class "Ports (COM & LPT)" of the list of devices.
constexpr GUID kPorts = {0x4d36e978, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};
constexpr const wchar_t* kSerialMap = L"HARDWARE\\DEVICEMAP\\SERIALCOMM";

bool IsComName(std::string_view name) {
  return name.starts_with("COM") && name.size() > 3 && name.find_first_not_of("0123456789", 3) == name.npos;
}

// Reads a text of a key of the registry; empty where there is none.
std::string TextOf(HKEY key, const wchar_t* name) {
  std::array<wchar_t, 256> text{};
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &size) != ERROR_SUCCESS)
    return {};
  return Utf8(text.data());
}

// Those that have a driver of the class of ports, with their names.
std::vector<PortEntry> ListedDevices() {
  std::vector<PortEntry> entries;
  const HDEVINFO list = SetupDiGetClassDevsW(&kPorts, nullptr, nullptr, DIGCF_PRESENT);
  if (list == INVALID_HANDLE_VALUE) return entries;
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof device;
  for (DWORD i = 0; SetupDiEnumDeviceInfo(list, i, &device) != 0; ++i) {
    PortEntry entry;
    const HKEY key = SetupDiOpenDevRegKey(list, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
    if (key == INVALID_HANDLE_VALUE) continue;
    entry.port = TextOf(key, L"PortName");
    RegCloseKey(key);
    std::array<wchar_t, 256> text{};
    if (SetupDiGetDeviceRegistryPropertyW(list, &device, SPDRP_FRIENDLYNAME, nullptr,
                                          reinterpret_cast<BYTE*>(text.data()), sizeof text - sizeof(wchar_t),
                                          nullptr) != 0)
      entry.friendlyName = Utf8(text.data());
    if (SetupDiGetDeviceInstanceIdW(list, &device, text.data(), static_cast<DWORD>(text.size()), nullptr) !=
        0)
      entry.instance = Utf8(text.data());
    if (IsComName(entry.port)) entries.push_back(entry);
  }
  SetupDiDestroyDeviceInfoList(list);
  return entries;
}

// Every port that a driver offers now, also one whose driver is of no such class.
std::vector<std::string> MappedPorts() {
  std::vector<std::string> ports;
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSerialMap, 0, KEY_READ, &key) != ERROR_SUCCESS) return ports;
  for (DWORD i = 0;; ++i) {
    std::array<wchar_t, 256> name{}, value{};
    auto nameSize = static_cast<DWORD>(name.size());
    auto valueSize = static_cast<DWORD>((value.size() - 1) * sizeof(wchar_t));
    DWORD type = 0;
    if (RegEnumValueW(key, i, name.data(), &nameSize, nullptr, &type, reinterpret_cast<BYTE*>(value.data()),
                      &valueSize) != ERROR_SUCCESS)
      break;
    const std::string port = Utf8(value.data());
    if (type == REG_SZ && IsComName(port)) ports.push_back(port);
  }
  RegCloseKey(key);
  return ports;
}

// USB adapters first, then the computer's own, "COM10" behind "COM9".
bool ComesBefore(const std::pair<bool, SerialDevice>& a, const std::pair<bool, SerialDevice>& b) {
  if (a.first != b.first) return a.first;
  return std::pair(a.second.path.size(), a.second.path) < std::pair(b.second.path.size(), b.second.path);
}

bool IsOnUsb(const PortEntry& entry) {
  return entry.instance.find("VID_") != std::string::npos;
}

}  // namespace

SerialDevice DeviceOf(const PortEntry& entry) {
  SerialDevice device;
  device.path = entry.port;
  device.adapter = entry.friendlyName;
  const std::string suffix = " (" + entry.port + ")";
  if (device.adapter.ends_with(suffix)) device.adapter.resize(device.adapter.size() - suffix.size());
  device.mayOpen = device.usersUnknown = true;
  // BUS\product\number. Of some drivers the product's last part is the number, behind a plus sign. One that
  // Windows made up has an ampersand in it.
  if (!IsOnUsb(entry)) return device;
  const std::size_t last = entry.instance.rfind('\\');
  std::string number = entry.instance.substr(last + 1);
  if (const std::size_t plus = entry.instance.rfind('+', last);
      number == "0000" && plus != std::string::npos) {
    number = entry.instance.substr(plus + 1, last - plus - 1);
    if (number.starts_with("PID_")) number.clear();
  }
  if (number.find('&') == std::string::npos) device.serialNumber = number;
  return device;
}

std::vector<SerialDevice> ComDevices::List() const {
  std::vector<PortEntry> entries = ListedDevices();
  for (const std::string& port : MappedPorts()) {
    const auto same = [&](const PortEntry& entry) { return entry.port == port; };
    if (std::none_of(entries.begin(), entries.end(), same)) entries.push_back({port, {}, {}});
  }
  std::vector<std::pair<bool, SerialDevice>> found;
  for (const PortEntry& entry : entries) found.emplace_back(IsOnUsb(entry), DeviceOf(entry));
  std::sort(found.begin(), found.end(), ComesBefore);
  std::vector<SerialDevice> devices;
  for (auto& [usb, device] : found) devices.push_back(std::move(device));
  return devices;
}

bool ComDevices::Assign(int comNumber, const SerialDevice& device, std::string& error) {
  if (ComNumbers().LeadsTo(comNumber, device)) return true;
  error = "Windows itself gives the COM numbers: use " + device.path +
          ", or change it in the Device Manager, under Ports, Port settings, Advanced.";
  return false;
}

}  // namespace tvx
