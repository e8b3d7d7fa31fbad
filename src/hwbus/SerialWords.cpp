#include "hwbus/SerialWords.h"

#include "platform/SerialDevices.h"

namespace tvx {

std::string SerialWords(int comNumber, SerialState state, std::string_view device, std::string_view group) {
  if (comNumber <= 0) return "not used: no COM port is chosen in the configuration";
  const std::string com = "COM " + std::to_string(comNumber);
  const std::string path(device);
  switch (state) {
    case SerialState::Closed:
      return com + " closed";
    case SerialState::Opening:
      return com + " is being opened: waiting for " + path +
             " to answer. If this stays, pull the adapter out and plug it in again";
    case SerialState::Open:
      return com + " open (" + path + ")";
    case SerialState::NotFound:
      return com + " not found: plug the adapter in, or assign it in the configuration (" + path + ")";
    case SerialState::NoPermission:
      return com + ": no permission for " + path + ". " + AdviceOnPermission(group).sentence;
    case SerialState::Busy:
      return com + " busy: another program uses " + path;
    case SerialState::Failed:
      return com + " failed: " + path + " is no serial port, or refuses 38400 baud";
    case SerialState::NoHelper:
      return com + " failed: the helper process for " + path +
             " cannot be started; it is tried again. Is the computer short of memory or processes?";
    case SerialState::Unplugged:
      return com + " unplugged: " + path + " went away; waiting for it to come back";
  }
  return com;
}

std::string SerialWords(int comNumber, const SerialPort& port) {
  return SerialWords(comNumber, port.State(), port.Device(), port.Group());
}

bool SerialTrouble(int comNumber, SerialState state) {
  return comNumber > 0 && state != SerialState::Open && state != SerialState::Opening &&
         state != SerialState::Closed;
}

}  // namespace tvx
