// An instrument on the gauge bus.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "drawn/Wire.h"

namespace tvx::drawn {

// What can be wrong with one instrument.
enum class DeviceFault {
  None,
  Silent,     // understands, but never answers
  Garbled,    // its answers come damaged
  Late,       // answers long after it was asked
  Duplicate,  // a second instrument answers under the same address
  Half,       // its answers break off in the middle
  Dead,       // neither understands nor answers: without power, or taken out
};
inline constexpr DeviceFault kDeviceFaults[] = {
    DeviceFault::None, DeviceFault::Silent,    DeviceFault::Garbled, DeviceFault::Half,
    DeviceFault::Late, DeviceFault::Duplicate, DeviceFault::Dead};
// The fault in a few plain words.
std::string_view FaultText(DeviceFault fault);

// How instruments of every kind behave.
struct DeviceTraits {
  // A value that the hand has set is kept until it was reported, for three seconds at most. False: what is
  // told last is shown, as in real instruments.
  bool handRules = false;
  // Switched on, an instrument forgets what it showed, shows zero until it is told, and hears nothing while
  // it starts.
  bool startsAnew = true;
  bool operator==(const DeviceTraits&) const = default;
};

// The lighting as command 8 brings it.
struct FaceLight {
  bool told = false;  // a lighting command has come
  bool lit = false;
  int brightness = 0;  // 0..15
  bool bus1 = false, bus2 = false;
  bool instrumentLights = false, navigationLights = false;
  bool operator==(const FaceLight&) const = default;
};

class Device {
 public:
  static constexpr int kReportState = 7;  // the command that asks for the answer
  static constexpr int kCommands = 16;
  struct Identity {
    Byte gaugeID = 0, type = 0, model = 0, version = 0;
    int options = 0;  // the option bits of its configuration
  };
  explicit Device(Identity identity) : identity_(identity) {}
  virtual ~Device() = default;

  const Identity& Id() const { return identity_; }
  void TakeAddress(Byte gaugeID) { identity_.gaugeID = gaugeID; }

  void SetTraits(const DeviceTraits& traits) { traits_ = traits; }
  // The bus's clock, told before every frame and now and then besides.
  void SetNow(std::int64_t nowMs);
  // Its power comes on: it starts anew, if its traits say so.
  void PowerUp();
  bool Starting() const { return startsUntil_ > now_; }
  // It loses its power when so much time has passed.
  void DieIn(std::int64_t ms) { diesAt_ = now_ + ms; }
  // A command for this instrument; the lighting is taken here, everything else by the instrument's kind.
  void Receive(int command, std::int32_t value);
  // Whether the instrument answers this command: "report state", and for some kinds one more.
  virtual bool AnswersTo(int command) const { return command == kReportState; }
  // The answer to "report state".
  Reply Answer();
  // For one that stands for a real instrument: takes over from that one's answer what no command tells, as
  // where a knob stands.
  void TakeAnswer(const Reply& answer);

  const FaceLight& Light() const { return light_; }
  // Whether the lighting word tells about the buses: not where the configuration reads no voltage, nor for an
  // instrument that takes no lighting.
  void FollowBuses(bool follows) { followsBuses_ = follows; }
  // False once the lighting word says that neither bus has power.
  bool Powered() const { return !followsBuses_ || !light_.told || light_.bus1 || light_.bus2; }
  // Rises with everything that may be seen on the face: new values, a hand at its knobs, a fault.
  std::uint64_t Changes() const { return changes_; }
  // Rises with every command, also with one that repeats a value.
  std::uint64_t Heard() const { return heard_; }
  std::uint64_t Answers() const { return answers_; }
  std::int32_t LastCommand() const { return lastCommand_; }  // -1: none yet
  std::int32_t LastValue() const { return lastValue_; }

  DeviceFault Fault() const { return fault_; }
  // Taking DeviceFault::Dead away switches the instrument on.
  void SetFault(DeviceFault fault);

 protected:
  // A command other than 7 and 8.
  virtual void OnCommand(int command, std::int32_t value) = 0;
  // Forgets what it was told and shows zero; knobs stay where they stand.
  virtual void StartAnew() = 0;
  // Fills bytes 6..24 of the answer; the envelope is filled already.
  virtual void FillReply(Reply&) {}
  // The other way round, for what commands do not tell.
  virtual void ReadReply(const Reply&) {}
  // Whether the command has come.
  bool WasTold(int command) const {
    return told_[static_cast<std::size_t>(command) % told_.size()].has_value();
  }
  // The face changes otherwise than by a command.
  void Changed() {
    ++changes_;
    told_ = {};
  }
  // The hand has set a value that the program sets too.
  void HandMoved() {
    handMoved_ = true;
    handAt_ = now_;
    Changed();
  }
  // True until that was reported, for three seconds at most: what the program sends meanwhile is older than
  // the hand.
  bool HandRules() const { return traits_.handRules && handMoved_ && now_ - handAt_ < kHandRulesMs; }

 private:
  static constexpr std::int64_t kHandRulesMs = 3000, kStartMs = 1000;
  Identity identity_;
  FaceLight light_;
  bool followsBuses_ = true;
  DeviceTraits traits_;
  std::int64_t now_ = 0, handAt_ = 0, startsUntil_ = 0;
  std::optional<std::int64_t> diesAt_;
  bool handMoved_ = false;
  DeviceFault fault_ = DeviceFault::None;
  std::array<std::optional<std::int32_t>, kCommands> told_{};  // the last value of each command
  std::uint64_t changes_ = 0, heard_ = 0, answers_ = 0;
  std::int32_t lastCommand_ = -1, lastValue_ = 0;
};

// The instrument of a Gaugetype code; one of an unknown code takes every command and answers with its name
// plate.
std::unique_ptr<Device> MakeDevice(const Device::Identity& identity);

}  // namespace tvx::drawn
