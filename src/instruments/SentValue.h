// A value that a face shows, and what the face was sent of it last.
#pragma once

#include <optional>

#include "base/Rounding.h"
#include "instruments/GaugeWorld.h"

namespace tvx {

// Sends only changes. A new one knows nothing of the face, so that its first value is sent whatever it is.
class SentValue {
 public:
  // `command`: the command that carries the value.
  explicit SentValue(int command) : command_(command) {}

  // Queues `value` where it differs from the last one that was queued. False where no frame was queued; the
  // value then still counts as not sent.
  bool QueueIfChanged(GaugeTick& tick, int gaugeID, std::int32_t value) {
    if (last_ == value || !tick.Queue(gaugeID, command_, value)) return false;
    last_ = value;
    return true;
  }
  // The same for a value of the simulator, rounded to a whole number, halves to the even one. What no frame
  // carries (no number, or above kLargestValue) is not sent.
  bool QueueRounded(GaugeTick& tick, int gaugeID, double value) {
    const auto rounded = RoundTo<std::int32_t>(value);
    return rounded && QueueIfChanged(tick, gaugeID, *rounded);
  }
  int Command() const { return command_; }
  // A knob has made the face show this.
  void NoteShown(GaugeReply& world, int gaugeID, std::int32_t value) {
    last_ = value;
    world.NoteShown(gaugeID, command_, value);
  }

 private:
  int command_;
  std::optional<std::int32_t> last_;
};

}  // namespace tvx
