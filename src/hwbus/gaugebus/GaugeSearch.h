// Finds out which gauges are on the gauge bus: asks every address in turn.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/Model.h"
#include "hwbus/gaugebus/Serial.h"

namespace tvx {

// Works while the run is halted, through the transmit slot; never waits. Each address gets command 7 and a
// few ticks to answer. A gauge that answers is Connected, and put into the configuration with its type, model
// and version where its address was free; an address without an answer is NotConnected.
class GaugeSearch {
 public:
  static constexpr int kAddresses = kGauges;  // 0..255
  static constexpr int kReplyTicks = 3;       // of Tick, from the frame's leaving on
  static constexpr int kGrowTicks = 2;

  GaugeSearch(ConfigModel& model, Serial& serial, MessageBoxes& boxes);

  // Called after every change of what follows.
  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }
  bool Running() const { return running_; }
  int Done() const { return address_; }  // how many addresses have had their turn
  int Found() const { return found_; }
  // What the user should know, one line each: addresses that two gauges share, unreadable answers, gauges of
  // another type than configured, unknown types.
  std::vector<std::string> Remarks() const;
  // One line on how the search stands or ended.
  std::string Summary() const;

  // False, with a message, when the gauge bus is not open.
  bool Start();
  void Cancel();
  // About every 20 ms, after Serial::TickTransmit.
  void Tick();
  // A reply came on the gauge bus; std::nullopt: bytes came that are no reply.
  void OnReply(std::optional<ReplyView> reply);

 private:
  struct Seen {
    int replies = 0;
    bool unreadable = false;
    Byte type = 0, otherType = 0;  // of the first reply, and the configured one where it differs
    bool unknownType = false;
  };
  void Ask();
  void CloseTurn();
  void Take(ReplyView reply, Seen& seen);
  bool Knows(int type) const;
  void Changed();

  ConfigModel& model_;
  Serial& serial_;
  MessageBoxes& boxes_;
  Callback<> changed_;
  std::array<Seen, kAddresses> seen_{};
  bool running_ = false;
  bool cancelled_ = false;
  int address_ = 0;
  int ticksOpening_ = 0;  // that the search has waited for the line to open
  int ticksLeft_ = 0;
  std::size_t waiting_ = 0;  // bytes of an answer that was half in when the turn should have ended
  int found_ = 0;
};

}  // namespace tvx
