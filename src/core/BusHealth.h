// How the instruments answer: who was asked when, who answered, who did not.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tvx {

// One instrument that is asked.
struct GaugeHealth {
  int gaugeID = 0;
  std::int64_t answeredMs = 0;     // its last answer, or when the run began
  bool everAnswered = false;       // in this run
  std::int64_t askedMs = 0;        // when it was asked last; 0: not yet
  std::int64_t askedEveryMs = 0;   // between the last two times; 0: not known yet
  std::uint32_t missed = 0;        // times that it was asked and did not answer
  std::uint32_t missedInARow = 0;  // of these, since its last answer
  std::uint32_t damaged = 0;       // answers of which only a part, or something else, came
  int AnswersInLastMinute(std::int64_t nowMs) const;

 private:
  friend class BusHealth;
  static constexpr std::int64_t kSeconds = 60;
  void CountAnswer(std::int64_t nowMs);

  std::optional<std::int64_t> waitingSinceMs_;     // asked then, and not answered yet
  std::array<std::uint16_t, kSeconds> answers_{};  // by the second in which they came
  std::array<std::int64_t, kSeconds> secondOf_{};
};

class BusHealth {
 public:
  // An answer that has not come by then does not come any more.
  static constexpr std::int64_t kAnswerMs = 500;

  void Clear() { gauges_.clear(); }
  void Add(int gaugeID);
  // A run begins: nobody has been asked yet.
  void Begin(std::int64_t nowMs);

  void NoteAsked(int gaugeID, std::int64_t nowMs);
  // Returns how many answers in a row it had missed before this one.
  std::uint32_t NoteAnswer(int gaugeID, std::int64_t nowMs);
  // Bytes wait that are no whole answer; they are looked at before the next one is asked. Whoever was asked
  // last said them.
  void NoteRest() { restOf_ = askedLast_; }
  // What waited did not become an answer, or something came that is none: whoever began it said it, where
  // none has begun the one that was asked last.
  void NoteDamaged();
  // Counts what has been missed by now.
  void Watch(std::int64_t nowMs);

  const std::vector<GaugeHealth>& Gauges() const { return gauges_; }
  // Who has been silent the longest, for kSilentMs at least, and how many such there are; nullptr where none
  // is.
  struct Silence {
    const GaugeHealth* longest = nullptr;
    int count = 0;
  };
  static constexpr std::int64_t kSilentMs = 3000;
  // One answer that got lost is no silence yet.
  static constexpr std::uint32_t kSilentAfterMissed = 2;
  Silence Silent(std::int64_t nowMs) const;

 private:
  GaugeHealth* Find(int gaugeID);

  std::vector<GaugeHealth> gauges_;
  static constexpr int kNobody = -1;
  int askedLast_ = kNobody;
  int restOf_ = kNobody;
};

}  // namespace tvx
