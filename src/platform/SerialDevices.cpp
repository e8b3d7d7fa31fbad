#include "platform/SerialDevices.h"

namespace tvx {

std::string SerialDevice::Words() const {
  std::string words = adapter;
  if (!serialNumber.empty()) words += (words.empty() ? "serial " : ", serial ") + serialNumber;
  return words + (words.empty() ? "" : ", ") + path;
}

std::string SerialDevice::StateWords() const {
  if (!mayOpen) return "no permission; type: sudo adduser $USER " + group + ", and log in again";
  return user.empty() ? "free" : "in use by " + user;
}

}  // namespace tvx
