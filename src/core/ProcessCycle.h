// The process cycle: one tick carries the newest simulator values to every installed gauge.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "config/Model.h"
#include "core/BusHealth.h"
#include "core/Lighting.h"
#include "core/StandardPorts.h"
#include "hwbus/gaugebus/GaugeOutbox.h"
#include "hwbus/gaugebus/Serial.h"
#include "instruments/Instrument.h"
#include "simlink/SimCom.h"

namespace tvx {

// What the gauge bus has carried in some time.
struct BusLoad {
  int percent = 0;               // of what the line can carry
  bool full = false;             // in most ticks something had to wait
  int updatesPerSecond = 0;      // of each value that changed, on average
  std::uint64_t superseded = 0;  // since activation: values replaced by newer ones before they left
  std::uint32_t ticks = 0, ticksLeftOver = 0;
};

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
  // An instrument has answered. True where its reply counts: not that of one that has just come back, which
  // still shows what it began with. It is sent everything, and once more after two seconds.
  bool NoteAnswer(ActiveGauge& gauge);
  // Bytes came that are no reply.
  void NoteDamaged() { health_.NoteDamaged(); }
  const BusHealth& Health() const { return health_; }

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
  // Ticks from one question to a gauge to the next one to the same gauge.
  std::uint32_t PollRoundTicks() const override;
  bool WasTold(int gaugeID, int command, std::int32_t value) const {
    return outbox_.WasTold(gaugeID, command, value, serial_.NowMs());
  }
  bool WasToldOther(int gaugeID, int command, std::int32_t value) const {
    return outbox_.WasToldOther(gaugeID, command, value, serial_.NowMs());
  }
  std::optional<GaugeOutbox::Told> ToldOf(int gaugeID, int command) const {
    return outbox_.ToldOf(gaugeID, command);
  }
  void NoteShown(int gaugeID, int command, std::int32_t value) { outbox_.NoteShown(gaugeID, command, value); }
  // The barometric setting that the altimeters' knobs turn, inHg. Follows the simulator's, but not within a
  // second of a turn.
  float& BarometricSetting() { return barometricSetting_; }
  void HoldBarometricSetting() { barometricHeldUntil_ = tickNumber_ + TicksPerSecond(); }
  // Batches that the line did not take since activation.
  std::uint64_t DroppedBatches() const { return droppedBatches_; }
  // What the bus has carried since this was called last; to be called once a second.
  BusLoad TakeLoad();
  // The last tick had something to send, and the line took it.
  bool SentFrames() const { return sentFrames_; }

 private:
  // GaugeTick
  bool Queue(int gaugeID, int command, std::int32_t value) override;
  bool PrepareSide(int gaugeID, int command, std::int32_t value) override;
  const ConfigModel& Model() const override { return model_; }
  SimCom& Sim() override { return sim_; }
  SpecialValues& Special() override { return special_; }
  const FlightValues& Flight() const override { return flight_; }

  int IntervalMs() const;
  double MostWaiting() const;
  bool MayAsk() const;
  std::size_t RoomFor(std::size_t questions) const;
  void SendAgain();
  void Resend(ActiveGauge& gauge);
  std::int32_t LightingFor(const ActiveGauge& gauge) const;
  void ReadFlightValues();
  void FillBoxes();
  bool SendLighting();
  void ServeGauges();
  void ServeModule();
  void EndPolling();
  void NoteToldBeside();
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
  bool asking_ = false;                 // this tick asks a gauge, or serves an IO module
  const ActiveGauge* asked_ = nullptr;  // by this tick
  std::int64_t nextQuestionMs_ = 0;
  std::uint32_t roundBegan_ = 0, roundTicks_ = 0;
  struct Told {
    int gaugeID = 0, command = 0;
    std::int32_t value = 0;
  };
  std::array<Byte, 7> sideFrame_{};
  Told side_;  // what it tells
  bool sideFrameSet_ = false;
  // An IO module's turn, which goes out behind everything else.
  static constexpr std::size_t kModuleFrames = 8;
  std::array<Byte, kModuleFrames * sizeof(GaugeFrame)> moduleFrames_{};
  std::array<Told, kModuleFrames> moduleTold_{};  // what each of them tells
  std::size_t moduleBytes_ = 0;
  bool servingModule_ = false;
  GaugeOutbox outbox_;
  bool leftOver_ = false;  // the last tick could not send all
  BusHealth health_;
  std::int64_t nowMs_ = 0;  // of this tick
  BusLoad load_;
  std::uint64_t loadBytes_ = 0;
  std::int64_t loadSinceMs_ = 0;
  FlightValues flight_;
  FlightBoxes boxes_;
  Lighting lighting_;
  bool lightingDue_ = false;  // the lighting is sent on the tick after the first one of a run
  std::uint64_t droppedBatches_ = 0;
  bool sentFrames_ = false;
  std::uint32_t tickNumber_ = 0;
  float barometricSetting_ = 0;
  std::uint32_t barometricHeldUntil_ = 0;
};

}  // namespace tvx
