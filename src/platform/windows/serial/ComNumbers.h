// COM numbers, which are Windows' own here.
#pragma once

#include <string>

#include "platform/ComPorts.h"

namespace tvx {

// "COM5"; empty for numbers below 1.
std::string ComName(int comNumber);

class ComNumbers final : public ComPorts {
 public:
  bool LeadsTo(int comNumber, const SerialDevice& adapter) const override;
  // Where there is no such port, "COM5, not there".
  std::string DeviceOf(int comNumber) const override;
  std::string PathOf(int comNumber) const override;
  // Windows remembers which adapter has which number.
  bool ByOrder(int) const override { return false; }
};

}  // namespace tvx
