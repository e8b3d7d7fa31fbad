// Moves everything once from end to end, one instrument after the other, and asks each whether it is there.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "guide/GuideHardware.h"
#include "hwbus/GaugeFrame.h"

namespace tvx {

class TestFlight {
 public:
  TestFlight(const ConfigModel& model, GuideHardware& hardware) : model_(model), hardware_(hardware) {}

  void Start();
  void Stop() { running_ = false; }
  // About every 20 ms; one frame each time.
  void Tick();
  void OnReply(ReplyView reply);
  bool Running() const { return running_; }
  bool Done() const { return done_; }
  int Percent() const;
  // What moves now; at the end who has answered, and who has not.
  std::string Words() const;

 private:
  struct Move {
    int gaugeID, command;
    std::int32_t value;
    CalibrationTarget channel;  // of the engine cluster, where it is one
  };
  void AddGauge(int gaugeID);
  void AddSweep(int gaugeID, int command, std::int32_t from, std::int32_t to);
  void AddChannels();

  const ConfigModel& model_;
  GuideHardware& hardware_;
  bool running_ = false, done_ = false;
  std::vector<Move> moves_;
  std::size_t next_ = 0;
  std::set<int> asked_, answered_;
};

}  // namespace tvx
