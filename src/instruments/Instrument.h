// What the program knows of one kind of instrument, and what drives one gauge of it. One file for each kind
// is in kinds/; Registry.h there finds a kind by its Gaugetype code.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "config/Model.h"
#include "hwbus/GaugeFrame.h"
#include "instruments/Description.h"
#include "instruments/GaugeWorld.h"
#include "instruments/ReportedValue.h"
#include "instruments/SentValue.h"

namespace tvx {

// Option bits of a gauge (`GaugeSetting5`) that all instruments share; the others are each instrument's own.
inline constexpr int kOptionUnlit = 0x80;

// What a gauge is activated with. `sim.CurrentOpener` is the gauge; the record outlives it.
struct Activation {
  Byte gaugeID;
  const GaugeRecord& record;
  const ConfigModel& model;
  SimCom& sim;
};

// Drives one gauge while the status form lives: what a tick sends it, what its replies do, and what has to be
// remembered for that, each kind in members of its own. Made at activation; nothing in it allocates
// afterwards.
class GaugeDriver {
 public:
  virtual ~GaugeDriver() = default;
  GaugeDriver(const GaugeDriver&) = delete;
  GaugeDriver& operator=(const GaugeDriver&) = delete;

  // What the face shows is not known any more: the next tick sends every value.
  virtual void Forget() = 0;
  // Run was pressed: sets the last sent values from which every run starts.
  virtual void StartRun() { Forget(); }
  // One tick: queues what has changed. An exception ends this gauge's turn, and no other's.
  virtual void Serve(GaugeTick& tick) = 0;
  // The gauge's turn to be polled, before it is served: prepares the side frame that makes it report.
  virtual void Poll(GaugeTick& tick) { tick.PrepareSide(gaugeID_, kCommandReportState, 0); }
  // One turn of an IO module on the gauge bus; no other kind has turns.
  virtual void ServeModuleTurn(GaugeTick&) {}
  // A reply of this gauge while running, of one of its kind's Gaugetype codes, envelope checked. An exception
  // ends the handling. Where no knob was turned since the reply before, they rest.
  void TakeReply(ReplyView reply, GaugeReply& world) {
    HandleReply(reply, world);
    hold_.NoteReply(world.TickNumber());
  }

  // --- for the forms ---
  // The simulator ports whose values it shows or sets, in the order in which it opened them.
  std::span<const Port> Ports() const { return ports_; }
  const KnobHold& Hold() const { return hold_; }
  // What its replies said that goes nowhere else, in words; empty for most kinds.
  virtual std::string KeptText() const { return {}; }

 protected:
  explicit GaugeDriver(const Activation& activation)
      : gaugeID_(activation.gaugeID), record_(activation.record) {}
  // Opens a simulator port and enables reading it. kNoPort for Function 0, and for one that is not defined. A
  // sequence number of 0 counts as 1. `used` false: it is open, but as the gauge is set up nobody sees its
  // value.
  Port Open(const Activation& activation, int function, int sequenceNr, bool used = true);
  virtual void HandleReply(ReplyView, GaugeReply&) {}
  // False while a knob of the gauge is being turned: what the simulator sends then is older than the hand.
  bool Settled(const GaugeTick& tick) const { return hold_.Over(tick.TickNumber()); }

  const Byte gaugeID_;
  const GaugeRecord& record_;
  KnobHold hold_;  // of all its knobs

 private:
  std::vector<Port> ports_;
};

// A Function as a gauge uses it; number 0: none. A sequence number of 0 counts as 1.
struct ShownFunction {
  int number = 0;
  int sequence = 0;
};

// One kind of instrument. It has no state: one object serves every gauge of its kind.
class Instrument {
 public:
  virtual ~Instrument() = default;
  // The Gaugetype codes it serves.
  virtual std::span<const Byte> Gaugetypes() const = 0;
  // What its configuration dialog offers for a gauge of this type, one of those above.
  virtual InstrumentDescription Describe(int gaugetype) const = 0;
  // What a needle of a Plate shows, the first (0) or the second (1).
  virtual ShownFunction NeedleShows(const GaugeRecord& gauge, std::size_t needle) const {
    return needle == 0 ? ShownFunction{gauge.GaugeFunction1, gauge.GaugeInstance1}
                       : ShownFunction{gauge.GaugeFunction2, gauge.GaugeInstance2};
  }
  // True when the cycle asks such gauges, one a tick, to report.
  virtual bool Polled() const { return false; }
  // Opens the simulator ports that the gauge needs, and makes what drives it.
  virtual std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const = 0;
};

// An installed gauge while the status form lives.
struct ActiveGauge {
  Byte GaugeID = 0;
  const GaugeRecord* Record = nullptr;
  const Instrument* Kind = nullptr;                      // null for a Gaugetype that no instrument serves,
  std::unique_ptr<GaugeDriver> Driver;                   // and this as well
  int PollSlot = -1;                                     // -1: not polled
  std::int64_t SendAgainMs = 0;                          // when it is sent everything once more; 0: not
  std::int64_t HeededFromMs = 0;                         // its replies count from then on
  std::optional<std::array<Byte, kReplySize>> Answer{};  // its last reply
};

}  // namespace tvx
