#include "platform/ComPorts.h"

namespace tvx {

std::vector<int> ComPorts::NumbersOf(const SerialDevice& adapter) const {
  std::vector<int> numbers;
  for (int number = 1; number <= kHighestComNumber; ++number) {
    if (LeadsTo(number, adapter)) numbers.push_back(number);
  }
  return numbers;
}

std::string ComPorts::WordsFor(int comNumber, const std::vector<SerialDevice>& adapters) const {
  for (const SerialDevice& adapter : adapters) {
    if (!LeadsTo(comNumber, adapter)) continue;
    std::string words = adapter.Words() + ", " + adapter.StateWords();
    for (const int other : NumbersOf(adapter)) {
      if (other != comNumber) words += ", also COM " + std::to_string(other);
    }
    return words;
  }
  return DeviceOf(comNumber);
}

}  // namespace tvx
