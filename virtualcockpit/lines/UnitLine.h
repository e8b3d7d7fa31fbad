// A unit on a pseudo-terminal of its own.
#pragma once

#include "virtualcockpit/bus/HardwareLine.h"
#include "virtualcockpit/lines/Unit.h"

namespace tvx::vc {

class UnitLine final : public HardwareLine {
  Q_OBJECT
 public:
  // The unit must outlive it.
  UnitLine(Unit& unit, std::string link, QObject* parent = nullptr);
  ~UnitLine() override;
  Unit& Hardware() { return unit_; }

 private:
  void OnBytes(ByteView bytes, std::int64_t nowNs) override { unit_.Receive(bytes, nowNs / kNsPerMs); }
  void OnTick(std::int64_t nowNs) override { unit_.Tick(nowNs / kNsPerMs); }
  void OnUnplug() override { unit_.Interrupt(); }

  Unit& unit_;
};

}  // namespace tvx::vc
