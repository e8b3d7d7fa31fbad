// What an instrument may read and do while a tick serves it or its reply is handled.
#pragma once

#include <cstdint>

#include "config/Model.h"
#include "instruments/FlightValues.h"
#include "simlink/SimCom.h"
#include "simlink/SpecialValues.h"

namespace tvx {

// Largest magnitude that a command frame carries.
inline constexpr std::int32_t kLargestValue = 65535;

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
  // How many ticks it takes until every polled gauge was asked once.
  virtual std::uint32_t PollRoundTicks() const = 0;

  // GetPort, with 0 for a port that has no value or a value that is no finite number.
  double ValueOf(Port port) {
    float value = 0;
    if (!Sim().GetPort(port, value) || !(value - value == 0.0f)) return 0.0;
    return static_cast<double>(value);
  }
};

// Where a tick's frames go. Implemented by the process cycle.
class GaugeTick : public GaugeWorld {
 public:
  // Has a command frame sent: with this tick's batch, or, where the line is full, later, and only the newest
  // value then. False, and no frame, where |value| is above kLargestValue; whoever remembers what was sent
  // then remembers the older value.
  virtual bool Queue(int gaugeID, int command, std::int32_t value) = 0;
  // Makes the frame the one that a poll tick sends behind its batch; replaces an earlier one. False, and no
  // change, where |value| is above kLargestValue.
  virtual bool PrepareSide(int gaugeID, int command, std::int32_t value) = 0;
};

// A reply's world: besides, the barometric setting that all altimeters share.
class GaugeReply : public GaugeWorld {
 public:
  // Writes the air pressure (inHg) to the simulator, through the program's own port of Function 8.
  virtual void PutAirPressure(float inches) = 0;
  // True when the gauge was told the value of this command last, or so shortly before that the reply may
  // still speak of it.
  virtual bool WasTold(int gaugeID, int command, std::int32_t value) const = 0;
  // True when the gauge was told another value of this command, and so long ago that its reply knows.
  virtual bool WasToldOther(int gaugeID, int command, std::int32_t value) const = 0;
  // A knob has made the gauge show this: a value that waits to be sent is older than the hand, and is
  // dropped.
  virtual void NoteShown(int gaugeID, int command, std::int32_t value) = 0;
  // The barometric setting that knobs turn, inHg.
  virtual float& BarometricSetting() = 0;
};

}  // namespace tvx
