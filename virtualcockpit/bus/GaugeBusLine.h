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

 private:
  void OnBytes(ByteView bytes, std::int64_t nowMs) override { bus_.OnBytes(bytes, nowMs); }
  void OnTick(std::int64_t nowMs) override { bus_.Tick(nowMs); }
  void OnUnplug() override { bus_.Interrupt(); }

  GaugeBus bus_;
};

}  // namespace tvx::vc
