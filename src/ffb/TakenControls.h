// The simulator's controls that this program has taken, so that they are given back however it ends.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ffb/SimControls.h"
#include "platform/LastWords.h"

namespace tvx {

// Two safeguards. While controls are taken, the datagrams that give them back are prepared as the program's
// last words. And a note beside the configuration says which were taken and where: who is killed leaves it,
// and the next start in the folder gives them back.
class TakenControls {
 public:
  static constexpr std::string_view kNote = "ControlsTaken.txt";

  // Reads the note of a program that left one.
  explicit TakenControls(LastWords& words, std::string note = std::string(kNote));

  // What is taken from now on. To be told before it is taken, and after it was given back. The note stays,
  // since the controls come and go with an autopilot in flight; LetGo takes it away.
  void Hold(TakenGroups groups);
  // Everything was given back for good.
  void LetGo();
  // About once a second. Gives back what an earlier program left: at each of the first kAttempts calls, and
  // once the simulator is heard, when its note goes.
  void Tick(bool simulatorHeard);
  // An earlier program left something that was not given back for certain yet.
  bool LeftOnes() const { return left_.has_value(); }

  static constexpr int kAttempts = 60;

 private:
  struct Held {
    UdpTarget target;
    std::vector<std::string_view> overrides;  // of kOverrides
  };
  void ReadNote();
  void WriteNote();
  void SendBack(const Held& held);

  LastWords& words_;
  std::string note_;
  TakenGroups now_;  // what the last words are of, and where they go
  UdpTarget nowAt_;
  Held noted_;  // what the note says; no overrides: there is none
  std::optional<Held> left_;
  int attempts_ = 0;
};

}  // namespace tvx
