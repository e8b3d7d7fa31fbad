// What the configuration form of a yoke does to the configuration.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/Model.h"
#include "ffb/YokePair.h"
#include "platform/Host.h"

namespace tvx {

// Every change takes effect at once and marks the configuration as changed; the user saves it with the rest.
class YokePresenter {
 public:
  YokePresenter(ConfigModel& model, YokePair& pair, MessageBoxes& boxes, JoystickDevice& joystick, int which);

  int Which() const { return which_; }
  const YokeRecord& Record() const { return which_ == 2 ? model_.Yoke2 : model_.Yoke1; }
  // The shared settings as they count: the standard ones where none were set yet.
  GeneralFFBRecord General() const;
  const Yoke& TheYoke() const { return pair_.Of(which_); }

  // One raw position of the record, out of those below.
  struct Place {
    std::string_view name;     // of its button, after "cmdSet"
    std::string_view caption;  // what the user does first
    std::int16_t YokeRecord::*field;
    enum class Source { Roll, Pitch, Rudder, LeftBrake, RightBrake } source;
    bool centre;
  };
  static std::span<const Place> Places();
  // Takes the axis's present position for it. Says so, and changes nothing, when the yoke or the joystick
  // does not answer or no axis is assigned, and when a rudder centre does not lie between the limits.
  void SetPlace(const Place& place);
  // The present raw position of an axis; 0 where none is assigned.
  int RawNow(Place::Source source);
  bool JoystickThere();
  // The device under a number, and how it stands with the chosen one, in words; see PedalDevices.
  const JoystickInfo* JoystickAt(int number) { return pair_.Joysticks().At(number); }
  std::string JoystickText() { return pair_.Joysticks().Words(Record()); }
  bool JoystickIsAnother() { return pair_.Joysticks().Look(Record()) == PedalState::Other; }
  // The device that is there now is the one to use from now on.
  void ChooseJoystick();

  void SetOption(int bit, bool on);
  void SetMode(YokeMode mode) { pair_.SelectMode(which_, mode); }
  void SetStartMode(YokeMode mode);
  void SetAddress(int address);                                                    // 0..255
  void SetForceLevel(int percent);                                                 // 1..100
  void SetButton(std::size_t button, ButtonAction action, std::string_view text);  // without quotes, one line
  // Places in the axis list. An axis that the device does not have is said so and stays as it was. Another
  // number chooses the device that is there.
  void SetJoystick(int number, int rudder, int leftBrake, int rightBrake);
  void SetFunction(int offset, int function);  // of FFB offset 0..17; 0: the standard one. In yoke 1's record
  // A point of the force table: kt, 0..1000, and % 0..100.
  void SetForcePoint(Axis axis, std::size_t point, double airspeed, double force);
  // A shared percentage, 0..100, or number.
  void SetLevel(Byte GeneralFFBRecord::*level, int percent);
  void SetGripThreshold(int counts);  // 0..511
  // What both yokes share in yoke 1's record: the aircraft's speeds and the like, and the effects.
  YokeRecord Shared() const;
  void SetShared(std::int16_t YokeRecord::*number, int value);       // 0: the standard value
  void SetEffect(std::size_t place, double frequency, int percent);  // EffectPlace
  void SetStandardForces();
  // Shows every fault of the joystick's settings, and the summary; true when there is none.
  bool CheckJoystickSettings();

 private:
  YokeRecord& Edited() { return which_ == 2 ? model_.Yoke2 : model_.Yoke1; }
  GeneralFFBRecord& EditedGeneral();
  void Changed();

  ConfigModel& model_;
  YokePair& pair_;
  MessageBoxes& boxes_;
  clsJoy joystick_;
  int which_;
};

}  // namespace tvx
