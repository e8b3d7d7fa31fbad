// The game controllers under the joystick numbers: whether the one that pedals were set up with is there.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "config/Records.h"
#include "platform/JoystickDevice.h"

namespace tvx {

enum class PedalState {
  Usable,
  Absent,  // no device under that number, or one that may not be read
  Other,   // another device than the one that was chosen
  NoAxis,  // it does not have an axis that is assigned
};

// Numbers follow the order of plugging. So what was chosen under a number is remembered, with its name and
// its identity, for as long as nobody chooses another.
class PedalDevices {
 public:
  static constexpr std::string_view kFile = "Joysticks.txt";

  explicit PedalDevices(JoystickDevice& device) : device_(device) {}

  // Reads what is remembered from this file, and keeps it there from now on. Before that it is kept in
  // memory.
  void KeepIn(std::string file);
  // The device under a number is the one to use from now on; without one there is no effect. False, with the
  // reason in `error`, where that cannot be kept in the file.
  bool Choose(int number, std::string& error);
  // Whether something was chosen under a number.
  bool Chosen(int number) const { return chosen_.contains(number); }
  // What is under a number; null where nothing is. Valid until the next call.
  const JoystickInfo* At(int number) { return device_.Describe(number); }

  // Whether the record's device can be used now. It asks the device, and never allocates.
  PedalState Look(const YokeRecord& record);
  // How it stands with it, in words; with its name.
  std::string Words(const YokeRecord& record);

 private:
  bool Keep(std::string& error) const;
  std::string OtherWords(int number, const JoystickInfo& there);

  JoystickDevice& device_;
  std::map<int, JoystickInfo> chosen_;
  std::string file_;
};

}  // namespace tvx
