// The gauge bus on a pseudo-terminal.
#pragma once

#include "virtualcockpit/bus/GaugeBus.h"
#include "virtualcockpit/bus/HardwareLine.h"

namespace tvx::vc {

class GaugeBusLine final : public HardwareLine {
  Q_OBJECT
 public:
  explicit GaugeBusLine(std::string link = {}, QObject* parent = nullptr);
  ~GaugeBusLine() override { Unplug(); }
  GaugeBus& Bus() { return bus_; }
  const GaugeBus& Bus() const { return bus_; }

 private:
  void OnBytes(ByteView bytes, std::int64_t nowNs) override { bus_.OnBytes(bytes, nowNs / kNsPerMs); }
  void OnTick(std::int64_t nowNs) override { bus_.Tick(nowNs / kNsPerMs); }
  void OnUnplug() override { bus_.Interrupt(); }

  GaugeBus bus_;
};

}  // namespace tvx::vc
