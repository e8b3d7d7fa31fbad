// What the program knows of one kind of instrument: one small interface, one file for each kind (Registry.h
// finds it).
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>

#include "config/Model.h"
#include "hwbus/GaugeFrame.h"
#include "instruments/Description.h"
#include "instruments/FlightValues.h"
#include "simlink/SimCom.h"
#include "simlink/SpecialValues.h"

namespace tvx {

class Instrument;

// Largest magnitude that a command frame carries.
inline constexpr std::int32_t kLargestValue = 65535;

// An installed gauge while the status form lives. Made at activation; nothing in it allocates afterwards.
struct ActiveGauge {
  static constexpr std::size_t kSlots = 24;
  static constexpr float kNeverSent = -1.0f;  // at activation
  // What the gauge shows is not known: differs from every value, so that each is sent.
  static constexpr float kUnknown = std::numeric_limits<float>::quiet_NaN();

  Byte GaugeID = 0;
  const GaugeRecord* Record = nullptr;
  const Instrument* Kind = nullptr;      // nothing for a Gaugetype that no instrument serves
  std::array<Port, kSlots> Ports{};      // simulator ports, each instrument's own order; kNoPort where none
  std::array<float, kSlots> LastSent{};  // last values sent
  std::array<std::int32_t, 8> Work{};    // the instrument's own working values
  int PollSlot = -1;                     // -1: not polled
  bool Unlit = false;                    // the face takes no lighting

  // --- what its replies do, filled at activation ---
  static constexpr std::size_t kInputs = 4;
  static constexpr std::int32_t kNoPosition = -1000;  // before the first report
  std::array<std::int16_t, kInputs> InputFunction{};  // Functions of the reported values; -1: sends nothing
  std::array<Port, kInputs> InputPort{};              // the ports opened for them
  std::array<float, kInputs> LastReported{};          // kUnknown before the first report
  std::array<float, kInputs> BeforeReport{};          // the simulator's value before it; kUnknown once taken
  float LastInputValue = kUnknown;                    // last mode value sent
  std::int16_t RadioKind = 0;                         // 0 COM, 1 NAV, 2 and 3 ADF
  bool SendStandby = false;  // the standby frequency, or the second radio, is sent too
  bool InputEnabled = false;
  bool DMEDisplayLocal = false;  // the display selector stays in the instrument
  std::int16_t TrimReportByte = 0;
  std::array<Byte, 6> ModuleText{};             // of an IO module
  std::array<std::int16_t, 8> AnalogueValue{};  // of an IO module, 0..4095; -1 before the first report
  std::int32_t StoredPosition = kNoPosition;    // of a wheel
  std::uint32_t QuietUntil = 0;                 // tick number before which a turned knob is not overwritten

  ActiveGauge() {
    Ports.fill(kNoPort);
    LastSent.fill(kNeverSent);
    InputFunction.fill(-1);
    InputPort.fill(kNoPort);
    LastReported.fill(kUnknown);
    BeforeReport.fill(kUnknown);
    AnalogueValue.fill(-1);
  }
};

// Option bits of a gauge (`GaugeSetting5`) that all instruments share; the others are each instrument's own.
inline constexpr int kOptionUnlit = 0x80;

// What a tick and a reply both may use.
class GaugeWorld {
 public:
  virtual ~GaugeWorld() = default;
  virtual const ConfigModel& Model() const = 0;
  virtual SimCom& Sim() = 0;
  virtual SpecialValues& Special() = 0;
  virtual const FlightValues& Flight() const = 0;
  // Ticks since the program started, and how many make a second.
  virtual std::uint32_t TickNumber() const = 0;
  virtual std::uint32_t TicksPerSecond() const = 0;

  // GetPort, with 0 for a port that has no value or a value that is no finite number.
  double ValueOf(Port port) {
    float value = 0;
    if (!Sim().GetPort(port, value) || !(value - value == 0.0f)) return 0.0;
    return static_cast<double>(value);
  }
};

// A reply's world: besides, the program's own barometric setting.
class GaugeReply : public GaugeWorld {
 public:
  // Writes the air pressure (inHg) to the simulator, through the program's own port of Function 8.
  virtual void PutAirPressure(float inches) = 0;
  // The barometric setting that knobs turn, inHg.
  virtual float& BarometricSetting() = 0;

  // Sends value `n` of the gauge to its input Function; InputFunction -1 sends nothing.
  void Report(ActiveGauge& gauge, std::size_t n, double value);
  // Whether the gauge's value `n`, as the simulator counts it, has to be sent to `port`. A report that
  // repeats is not sent again once the simulator has taken it: where the simulator's value differs then, it
  // is the newer one, and the gauge is about to hear of it. A report that the simulator did not take within a
  // second is sent again.
  bool IsNews(ActiveGauge& gauge, std::size_t n, double value, Port port);
};

// Where a tick's frames go, and what it may read. Implemented by the process cycle.
class GaugeTick : public GaugeWorld {
 public:
  // Appends a command frame to the tick's batch (QueueGaugeCommand). |value| above 65535: false, nothing is
  // queued.
  virtual bool Queue(int gaugeID, int command, std::int32_t value) = 0;
  // Makes the frame the one that a poll tick sends behind its batch (PrepareSideFrame); replaces an earlier
  // one.
  virtual bool PrepareSide(int gaugeID, int command, std::int32_t value) = 0;
  // True on a tick in which it is this gauge's turn to be polled.
  virtual bool PollTurn(const ActiveGauge& gauge) const = 0;
  // Queues `value` when it differs from what slot `slot` of the gauge sent last, and remembers it.
  bool QueueIfChanged(ActiveGauge& gauge, std::size_t slot, int command, std::int32_t value) {
    const auto sent = static_cast<float>(value);
    if (gauge.LastSent[slot] == sent) return false;
    if (!Queue(gauge.GaugeID, command, value)) return false;
    gauge.LastSent[slot] = sent;
    return true;
  }
  // The same for a value of the simulator, rounded; what no frame carries is not sent.
  bool QueueValueIfChanged(ActiveGauge& gauge, std::size_t slot, int command, double value);
  // False for a second after one of the gauge's knobs was turned: what the simulator sends meanwhile is
  // older.
  bool Settled(const ActiveGauge& gauge) const { return TickNumber() >= gauge.QuietUntil; }
};

// Stateless: one object serves every gauge of its kind; what a gauge needs stands in its ActiveGauge.
class Instrument {
 public:
  virtual ~Instrument() = default;
  // The Gaugetype codes it serves.
  virtual std::span<const Byte> Gaugetypes() const = 0;
  // What its configuration dialog offers for a gauge of this type, one of those above.
  virtual InstrumentDescription Describe(int gaugetype) const = 0;
  // True when the cycle asks such gauges, one a tick, to report.
  virtual bool Polled() const { return false; }
  // Opens the simulator ports that the gauge needs into gauge.Ports and enables reading; CurrentOpener is
  // set.
  virtual void OpenPorts(ActiveGauge& gauge, const ConfigModel& model, SimCom& sim) const = 0;
  // What the gauge shows is not known any more: the next tick sends every value.
  virtual void Forget(ActiveGauge& gauge) const { gauge.LastSent.fill(ActiveGauge::kUnknown); }
  // Run was pressed: sets the last sent values from which every run starts.
  virtual void StartRun(ActiveGauge& gauge) const { Forget(gauge); }
  // One tick: queues what has changed. May throw RangeError; the cycle then goes on with the next gauge.
  virtual void Serve(ActiveGauge& gauge, GaugeTick& tick) const = 0;
  // One turn of an IO module on the gauge bus (Gaugetype 10 only).
  virtual void ServeModuleTurn(ActiveGauge&, GaugeTick&) const {}
  // A reply of this gauge, envelope checked, while running. May throw RangeError, which ends the handling.
  virtual void HandleReply(ActiveGauge&, ReplyView, GaugeReply&) const {}

 protected:
  // Opens `function` with `sequenceNr` into slot `slot` of the gauge and enables reading; function 0 opens
  // nothing.
  static void OpenInto(ActiveGauge& gauge, std::size_t slot, SimCom& sim, int function, int sequenceNr);
  // Makes the port in `slot` the target of reported value `n`; a slot without a port leaves it without one.
  static void ReportThrough(ActiveGauge& gauge, std::size_t n, std::size_t slot, int function);
};

}  // namespace tvx
