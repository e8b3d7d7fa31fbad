// A value that an instrument reports from its knobs, and the rules that keep knob and simulator from
// fighting.
#pragma once

#include <optional>

#include "instruments/GaugeWorld.h"
#include "instruments/SentValue.h"

namespace tvx {

// After a knob was turned its display is left alone: what the simulator sends meanwhile is older than the
// hand. For a second at least; then until a reply finds the knobs at rest, which takes a round of polls.
// Where no reply comes, for two rounds.
class KnobHold {
 public:
  void Begin(const GaugeWorld& now);
  // A reply was handled: where it began no hold, the knobs rest.
  void NoteReply(std::uint32_t tickNumber) { rested_ = rested_ || tickNumber > began_; }
  bool Over(std::uint32_t tickNumber) const {
    return tickNumber >= least_ && (rested_ || tickNumber >= most_);
  }

 private:
  std::uint32_t began_ = 0, least_ = 0, most_ = 0;  // tick numbers
  bool rested_ = true;
};

// The face on which a reported value is to be seen as well: what it was sent last, and the value as that
// command would carry it.
struct ShownOn {
  SentValue* face = nullptr;
  int gaugeID = 0;
  std::int32_t value = 0;
};

class ReportedValue {
 public:
  // `port`: where the value goes; kNoPort: it is not sent anywhere.
  explicit ReportedValue(Port port = kNoPort) : port_(port) {}

  // Sends the value where IsNews says so and there is a port.
  void Report(GaugeReply& world, KnobHold& hold, double value, const ShownOn& shown = {});
  // Takes a report; true when the simulator has to be told of it. What the face was told is no news. A report
  // that repeats is not sent again once the simulator has taken it: where the simulator's value differs after
  // that, it is the newer one, and the instrument is about to hear of it. A report that the simulator did not
  // take within the hold is sent again. A new value begins the gauge's hold.
  // At the start, before the simulator's first value came, a face shows a mere beginning. Said back, it would
  // put the simulator to it; so it is no news for three seconds, in which that value comes if it ever does.
  bool IsNews(GaugeReply& world, KnobHold& hold, double value, const ShownOn& shown = {});
  // Whether the last report that was taken said the same.
  bool WasLast(double value) const;
  // Whether it goes anywhere.
  bool Sends() const { return port_ != kNoPort; }

 private:
  bool Awaiting(const GaugeWorld& now);

  Port port_;
  std::optional<std::uint32_t> awaitedSince_;  // the first such report's tick
  std::optional<float> lastReported_;
  std::optional<float>
      beforeReport_;  // the simulator's value then; std::nullopt: not known, or changed since
};

}  // namespace tvx
