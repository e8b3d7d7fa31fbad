// The process cycle: one tick carries the newest simulator values to every installed gauge.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "config/Model.h"
#include "core/Lighting.h"
#include "core/StandardPorts.h"
#include "hwbus/gaugebus/Serial.h"
#include "instruments/Instrument.h"
#include "simlink/SimCom.h"

namespace tvx {

class ProcessCycle final : private GaugeTick {
 public:
  ProcessCycle(const ConfigModel& model, SimCom& sim, Serial& serial, SpecialValues& special);

  // The ports of the program's own values, under sim.CurrentOpener.
  void OpenStandardPorts() { standardPorts_.Open(sim_); }
  // The simulator link has closed them.
  void ClearStandardPorts() { standardPorts_.Clear(); }
  Port StandardPort(StandardValue value) const { return standardPorts_[value]; }
  // Activation: forgets everything of an earlier life, lists the installed gauges, lets each open its ports,
  // gives out the poll slots. The standard ports must be open already.
  void PrepareGauges();
  // Run was pressed: the last sent values start anew, so that the first tick sends every value, and the tick
  // after it the lighting.
  void StartRun();
  // One tick. Catches its own errors.
  void Tick();
  // The gauge bus came back: everything is sent again.
  void ResendAll();

  // Installed gauges; ActiveGaugeCount is at least 1 even where the list is empty.
  const std::vector<ActiveGauge>& ActiveGauges() const { return gauges_; }
  int ActiveGaugeCount() const { return gauges_.empty() ? 1 : static_cast<int>(gauges_.size()); }
  ActiveGauge* GaugeWithID(int gaugeID);

  const FlightBoxes& Boxes() const { return boxes_; }
  const FlightValues& Values() const { return flight_; }
  const Lighting& CockpitLighting() const { return lighting_; }
  std::int16_t TickCount = 0;  // ticks since the last rate display; 0 again above 1000
  // Ticks since the program started, and how many make a second at the present interval.
  std::uint32_t TickNumber() const override { return tickNumber_; }
  std::uint32_t TicksPerSecond() const override;
  // The barometric setting that the altimeters' knobs turn, inHg. Follows the simulator's, but not within a
  // second of a turn.
  float& BarometricSetting() { return barometricSetting_; }
  void HoldBarometricSetting() { barometricHeldUntil_ = tickNumber_ + TicksPerSecond(); }
  // Batches that the line did not take since activation.
  std::uint64_t DroppedBatches() const { return droppedBatches_; }

 private:
  // GaugeTick
  bool Queue(int gaugeID, int command, std::int32_t value) override;
  bool PrepareSide(int gaugeID, int command, std::int32_t value) override;
  const ConfigModel& Model() const override { return model_; }
  SimCom& Sim() override { return sim_; }
  SpecialValues& Special() override { return special_; }
  const FlightValues& Flight() const override { return flight_; }

  void ReadFlightValues();
  void FillBoxes();
  bool SendLighting();
  void ServeGauges();
  void ServeModule();
  void EndPolling();
  void SendBatch();
  void ForgetGauges();

  const ConfigModel& model_;
  SimCom& sim_;
  Serial& serial_;
  SpecialValues& special_;
  StandardPorts standardPorts_;
  std::vector<ActiveGauge> gauges_;
  int ioModuleGaugeCount_ = 0;
  int pollSlotMax_ = -1;  // -1: no gauge is polled
  int pollSlot_ = 0;
  bool moduleTick_ = false;  // this tick an IO module has its turn, and no gauge is polled
  int ioModuleTurn_ = 0;
  std::array<Byte, 7> sideFrame_{};
  bool sideFrameSet_ = false;
  FlightValues flight_;
  FlightBoxes boxes_;
  Lighting lighting_;
  bool lightingDue_ = false;  // the lighting is sent on the tick after the first one of a run
  bool lightingInBatch_ = false;
  bool resend_ = false;  // a batch was dropped: the next tick sends every value
  std::uint64_t droppedBatches_ = 0;
  std::uint32_t tickNumber_ = 0;
  float barometricSetting_ = 0;
  std::uint32_t barometricHeldUntil_ = 0;
};

}  // namespace tvx
