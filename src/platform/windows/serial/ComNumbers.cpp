#include "platform/windows/serial/ComNumbers.h"

#include <array>

#include "platform/windows/calls/WinApi.h"

namespace tvx {

std::string ComName(int comNumber) {
  return comNumber < 1 ? std::string() : "COM" + std::to_string(comNumber);
}

bool ComNumbers::LeadsTo(int comNumber, const SerialDevice& adapter) const {
  return comNumber >= 1 && adapter.path == ComName(comNumber);
}

std::string ComNumbers::DeviceOf(int comNumber) const {
  if (comNumber < 1) return {};
  const std::string path = PathOf(comNumber);
  return path.empty() ? ComName(comNumber) + ", not there" : path;
}

std::string ComNumbers::PathOf(int comNumber) const {
  const std::string name = ComName(comNumber);
  std::array<wchar_t, 512> target{};
  const bool there = comNumber >= 1 && QueryDosDeviceW(Wide(name).c_str(), target.data(),
                                                       static_cast<DWORD>(target.size())) != 0;
  return there ? name : std::string();
}

}  // namespace tvx
