// What the COM numbers of the configuration lead to.
#pragma once

#include <string>
#include <vector>

#include "platform/SerialDevices.h"

namespace tvx {

class ComPorts {
 public:
  virtual ~ComPorts() = default;
  // True where COM `comNumber` leads to this adapter. False for numbers below 1.
  virtual bool LeadsTo(int comNumber, const SerialDevice& adapter) const = 0;
  // The device that a COM number leads to, whatever it is: its path, for a link that leads nowhere "link ->
  // device, not there". Empty where there is no device, and for numbers below 1.
  virtual std::string DeviceOf(int comNumber) const = 0;
  // The device file itself, behind all links; empty where there is none.
  virtual std::string PathOf(int comNumber) const = 0;
  // True where the number counts USB adapters in the order of plugging in: next time it may be another one.
  virtual bool ByOrder(int comNumber) const = 0;

  // The COM numbers 1..kHighestComNumber that lead to the adapter, rising.
  std::vector<int> NumbersOf(const SerialDevice& adapter) const;
  // One line on what a COM number leads to: one of `adapters` with its name, its state and the other numbers
  // that lead to it, or else DeviceOf.
  std::string WordsFor(int comNumber, const std::vector<SerialDevice>& adapters) const;
};

}  // namespace tvx
