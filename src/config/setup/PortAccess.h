// The serial ports as the configuration forms reach them.
#pragma once

#include <functional>
#include <string>

namespace tvx {

class PortAccess {
 public:
  virtual ~PortAccess() = default;
  // The device behind a COM number and its state, in words; empty where there is none.
  virtual std::string DeviceOf(int comNumber) const = 0;
  // What is wrong with the port of a hardware group, 0..5 in the order of the form, or may soon be; empty
  // where it is well.
  virtual std::string TroubleOf(int group) const = 0;
  // A number that counts adapters in the order of plugging in leads, from now on, to the adapter that it
  // leads to now.
  virtual void KeepAdapter(int comNumber) = 0;
  // What is plugged in may have changed: DeviceOf looks again.
  virtual void LookAgain() = 0;
  // Runs `change`, which gives a group another COM number, while no port is open.
  virtual void WithPortsClosed(const std::function<void()>& change) = 0;
};

}  // namespace tvx
