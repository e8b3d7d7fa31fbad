// A hardware group with a status form of its own, as run control reaches it.
#pragma once

#include <array>
#include <cstddef>

namespace tvx {

enum class PeripheralKind { EngineCluster, IOModule1, IOModule2, Yokes };
inline constexpr std::size_t kPeripherals = 4;

class Peripheral {
 public:
  virtual ~Peripheral() = default;
  virtual bool Configured() const = 0;
  virtual void Load() = 0;       // makes its status form and shows it
  virtual void Unload() = 0;     // takes it away; harmless when not loaded
  virtual void Show() = 0;       // brings it to the front
  virtual void OpenPorts() = 0;  // opens its simulator ports, under its own opener code
  virtual void Run() = 0;
  virtual void Stop() = 0;
};

// By PeripheralKind; null where the program has no such part.
using Peripherals = std::array<Peripheral*, kPeripherals>;

}  // namespace tvx
