// Ends a life that stands still, or that does not end, with a word on it and the stack it stands on.
#pragma once

#include <cstdint>

namespace tvx::monkey {

class Watchdog {
 public:
  static constexpr std::int64_t kStillMs = 20'000;  // no event is handled for so long
  static constexpr std::int64_t kEndMs = 3'000;     // from the wish to end to the end of the process
  static constexpr int kStatus = 97;                // of a process that it ended

  // `journal`: where its line goes. One object at a time.
  explicit Watchdog(int journal);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  // Milliseconds that the process could use: without those in which it was stopped, or got no processor.
  static std::int64_t CountedMs();
  // Events are handled: the time starts anew. Not once the end is expected.
  void Alive();
  // From now on the program has to end. Only the first call counts.
  void ExpectEnd();
  bool EndExpected() const;
  std::int64_t SinceEndExpectedMs() const;

 private:
  std::int64_t endExpectedAt_ = 0;  // by OwnMs
};

}  // namespace tvx::monkey
