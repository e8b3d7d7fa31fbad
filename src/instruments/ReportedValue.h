// A value that an instrument reports from its knobs, and the rules that keep knob and simulator from
// fighting.
#pragma once

#include <optional>

#include "instruments/GaugeWorld.h"

namespace tvx {

// After a knob was turned its display is left alone for a second: what the simulator sends meanwhile is older
// than the hand.
class KnobHold {
 public:
  void Begin(const GaugeWorld& now) { until_ = now.TickNumber() + now.TicksPerSecond(); }
  bool Over(std::uint32_t tickNumber) const { return tickNumber >= until_; }

 private:
  std::uint32_t until_ = 0;  // a tick number
};

class ReportedValue {
 public:
  // `port`: where the value goes; kNoPort: it is not sent anywhere.
  explicit ReportedValue(Port port = kNoPort) : port_(port) {}

  // Sends the value where IsNews says so and there is a port.
  void Report(GaugeReply& world, KnobHold& hold, double value);
  // Takes a report; true when the simulator has to be told of it. A report that repeats is not sent again
  // once the simulator has taken it: where the simulator's value differs after that, it is the newer one, and
  // the instrument is about to hear of it. A report that the simulator did not take within the hold is sent
  // again. A new value begins the gauge's hold.
  bool IsNews(GaugeReply& world, KnobHold& hold, double value);
  // Whether the last report that was taken said the same.
  bool WasLast(double value) const;
  // Whether it goes anywhere.
  bool Sends() const { return port_ != kNoPort; }

 private:
  Port port_;
  std::optional<float> lastReported_;
  std::optional<float>
      beforeReport_;  // the simulator's value then; std::nullopt: not known, or changed since
};

}  // namespace tvx
