// What instruments are to be told and the line has not taken yet: for each command of each gauge the newest
// value. A line that is full carries first what matters most.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/Bytes.h"
#include "hwbus/GaugeFrame.h"

namespace tvx {

class GaugeOutbox {
 public:
  GaugeOutbox();

  // The value waits to be sent from now on, in the place of an older one. False, and no change, where no
  // frame carries it: gaugeID 0..255, command 0..15, |value| up to 65535.
  bool Put(int gaugeID, int command, std::int32_t value, std::int64_t nowMs);
  // The instrument shows this by itself, since its knob was turned: what waits for it is older, and is
  // dropped.
  void NoteShown(int gaugeID, int command, std::int32_t value);
  // The instrument was told the value by a frame that does not go through here.
  void NoteSent(int gaugeID, int command, std::int32_t value, std::int64_t nowMs);
  // True when the instrument was told the value last, or was told another one so recently that an answer may
  // still speak of it.
  bool WasTold(int gaugeID, int command, std::int32_t value, std::int64_t nowMs) const;
  // True when the instrument was told another value, and so long ago that its answers know of it.
  bool WasToldOther(int gaugeID, int command, std::int32_t value, std::int64_t nowMs) const;
  // What a command of an instrument carried last, and what waits to be carried; std::nullopt where it was
  // never used.
  struct Told {
    std::optional<std::int32_t> value;    // that left last; std::nullopt: none has
    std::int64_t leftMs = 0;              // when
    std::optional<std::int32_t> waiting;  // that the line has not taken yet
    std::int64_t sinceMs = 0;             // how long it waits
  };
  std::optional<Told> ToldOf(int gaugeID, int command) const;
  // Nothing waits any more, and what was told before is not known.
  void Clear();

  bool Empty() const { return waiting_.empty(); }
  std::size_t WaitingBytes() const { return waiting_.size() * sizeof(GaugeFrame); }

  // Chooses what goes out now, at most so many bytes, and hands each frame to `append`. Where all fits it is
  // all, in the order in which it was put. Otherwise the lighting comes first, then what changed most and
  // has waited longest; whoever has waited for as long as one round of all takes is not passed over any more.
  // What was chosen still waits until Sent() says that the line took it.
  template <typename Append>
  void Choose(std::size_t bytes, std::int64_t nowMs, Append&& append) {
    if (ChooseAll(bytes)) {
      for (const std::uint16_t slot : waiting_) append(FrameOf(slots_[slot]));
      return;
    }
    ChooseSome(bytes / sizeof(GaugeFrame), nowMs);
    for (const Ranked& chosen : ranked_) append(FrameOf(slots_[chosen.slot]));
  }
  void Sent(std::int64_t nowMs);
  // The line did not take it.
  void NotSent();

  // Counts since TakeCounts was called last.
  struct Counts {
    std::uint32_t carried = 0;     // values that the line took
    std::uint32_t wanted = 0;      // different values that there were to send
    std::uint32_t superseded = 0;  // values that were replaced by newer ones before they left
  };
  Counts TakeCounts();

 private:
  struct Slot {
    std::int32_t wanted = 0;
    std::int32_t told = 0, toldBefore = 0;  // that left last, and before that
    std::int64_t sinceMs = 0;               // how long it has differed
    std::int64_t leftMs = 0;
    std::uint32_t second = 0;  // in which it was counted as wanted
    std::uint32_t turn = 0;    // rises with every value that leaves
    Byte gaugeID = 0, command = 0;
    bool waiting = false, everTold = false, chosen = false;
  };
  static constexpr std::size_t kSlots = (kHighestGaugeID + 1) * 16;
  static constexpr std::uint16_t kNoSlot = 0xFFFF;

  static std::size_t KeyOf(int gaugeID, int command) {
    return static_cast<std::size_t>(gaugeID) * 16 + static_cast<std::size_t>(command);
  }
  static bool IsLighting(const Slot& slot) { return slot.command == kCommandLighting; }
  static GaugeFrame FrameOf(const Slot& slot) {
    return BuildGaugeFrame(slot.gaugeID, slot.command, slot.wanted).value_or(GaugeFrame{});
  }
  Slot* Find(int gaugeID, int command);
  const Slot* Find(int gaugeID, int command) const;
  Slot& FindOrMake(int gaugeID, int command);
  bool ChooseAll(std::size_t bytes);
  void ChooseSome(std::size_t frames, std::int64_t nowMs);
  std::uint64_t Urgency(const Slot& slot, std::int64_t nowMs, std::int64_t roundMs) const;

  std::array<std::uint16_t, kSlots> slotOf_{};
  std::vector<Slot> slots_;             // in the order in which they were first used
  std::vector<std::uint16_t> waiting_;  // slots, in the order in which they were put
  struct Ranked {
    std::uint64_t urgency;
    std::uint16_t slot;
  };
  std::vector<Ranked> ranked_;
  std::uint32_t turn_ = 0;
  Counts counts_;
  std::uint32_t second_ = 1;
};

}  // namespace tvx
