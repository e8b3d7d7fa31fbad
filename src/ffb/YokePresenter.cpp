#include "ffb/YokePresenter.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

using R = YokeRecord;
using Source = YokePresenter::Place::Source;

constexpr YokePresenter::Place kPlaces[] = {
    {"RollLeft", "Turned fully left", &R::RollLeft, Source::Roll, false},
    {"RollCentre", "Level", &R::RollCentre, Source::Roll, true},
    {"RollRight", "Turned fully right", &R::RollRight, Source::Roll, false},
    {"PitchForward", "Pushed fully forward", &R::PitchForward, Source::Pitch, false},
    {"PitchCentre", "Neutral", &R::PitchCentre, Source::Pitch, true},
    {"PitchBack", "Pulled fully back", &R::PitchBack, Source::Pitch, false},
    {"RudderLeft", "Rudder fully left", &R::RudderLeft, Source::Rudder, false},
    {"RudderCentre", "Rudder centred", &R::RudderCentre, Source::Rudder, true},
    {"RudderRight", "Rudder fully right", &R::RudderRight, Source::Rudder, false},
    {"LeftBrakeReleased", "Left brake released", &R::LeftBrakeReleased, Source::LeftBrake, false},
    {"LeftBrakePressed", "Left brake pressed", &R::LeftBrakePressed, Source::LeftBrake, false},
    {"RightBrakeReleased", "Right brake released", &R::RightBrakeReleased, Source::RightBrake, false},
    {"RightBrakePressed", "Right brake pressed", &R::RightBrakePressed, Source::RightBrake, false},
};

bool OfYoke(Source source) {
  return source == Source::Roll || source == Source::Pitch;
}

Byte ToByte(int value, int highest = 255) {
  return static_cast<Byte>(std::clamp(value, 0, highest));
}

}  // namespace

YokePresenter::YokePresenter(ConfigModel& model, YokePair& pair, MessageBoxes& boxes,
                             JoystickDevice& joystick, int which)
    : model_(model), pair_(pair), boxes_(boxes), joystick_(joystick), which_(which) {}

std::span<const YokePresenter::Place> YokePresenter::Places() {
  return kPlaces;
}

GeneralFFBRecord YokePresenter::General() const {
  return IsBlank(model_.GeneralFFB) ? StandardGeneralFFB() : model_.GeneralFFB;
}

GeneralFFBRecord& YokePresenter::EditedGeneral() {
  if (IsBlank(model_.GeneralFFB)) model_.GeneralFFB = StandardGeneralFFB();
  return model_.GeneralFFB;
}

void YokePresenter::Changed() {
  model_.ConfigChanged = true;
  pair_.ApplySettings();
}

bool YokePresenter::JoystickThere() {
  joystick_.JoystickID = Record().JoystickNumber;
  return joystick_.Present();
}

int YokePresenter::RawNow(Place::Source source) {
  const YokeReply& reply = TheYoke().Line().LastReply();
  joystick_.JoystickID = Record().JoystickNumber;
  switch (source) {
    case Source::Roll:
      return reply.rawRoll;
    case Source::Pitch:
      return reply.rawPitch;
    case Source::Rudder:
      return ReadAxis(joystick_, Record().RudderAxis);
    case Source::LeftBrake:
      return ReadAxis(joystick_, Record().LeftBrakeAxis);
    case Source::RightBrake:
      return ReadAxis(joystick_, Record().RightBrakeAxis);
  }
  return 0;
}

void YokePresenter::SetPlace(const Place& place) {
  if (OfYoke(place.source)) {
    if (!TheYoke().Line().AnsweredWithinMs(kYokeSilentMs)) {
      boxes_.Show("The yoke does not answer.");
      return;
    }
  } else {
    const bool rudder = place.source == Source::Rudder;
    const Byte axis = rudder                              ? Record().RudderAxis
                      : place.source == Source::LeftBrake ? Record().LeftBrakeAxis
                                                          : Record().RightBrakeAxis;
    if (axis == 0) {
      boxes_.Show(rudder ? "No Rudder axe defined" : "No Brake axe defined");
      return;
    }
    if (!JoystickThere()) {
      boxes_.Show("The joystick is not there.");
      return;
    }
    const JoystickInfo* device = JoystickAt(Record().JoystickNumber);
    if (device != nullptr && !HasAxis(*device, axis)) {
      boxes_.Show(NoAxisWords(*device, axis));
      return;
    }
  }
  YokeRecord next = Record();
  next.*place.field = StoredRaw(RawNow(place.source));
  if (place.source == Source::Rudder && place.centre) {
    const auto [low, high] = std::minmax(next.RudderLeft, next.RudderRight);
    if (next.RudderCentre <= low || next.RudderCentre >= high) {
      boxes_.Show("The Center is not in Range; Set Left and Right limts first");
      return;
    }
  }
  Edited() = next;
  Changed();
}

void YokePresenter::SetOption(int bit, bool on) {
  std::int16_t& bits = Edited().OptionBits;
  bits = static_cast<std::int16_t>(on ? bits | bit : bits & ~bit);
  Changed();
}

void YokePresenter::SetStartMode(YokeMode mode) {
  Edited().StartMode = static_cast<std::int16_t>(mode);
  Changed();
}

void YokePresenter::SetAddress(int address) {
  Edited().Address = ToByte(address);
  Changed();
}

void YokePresenter::SetForceLevel(int percent) {
  Edited().ForceLevel = ToByte(std::max(percent, 1), 100);
  Changed();
}

void YokePresenter::SetButton(std::size_t button, ButtonAction action, std::string_view text) {
  if (button >= Record().Buttons.size()) return;
  // The file's texts stand between quotes, and a command is one line.
  std::string clean;
  for (const char c : text) {
    if (c != '"' && c != '\r' && c != '\n') clean += c;
  }
  Edited().Buttons[button] = {static_cast<Byte>(action), std::move(clean)};
  Changed();
}

void YokePresenter::SetJoystick(int number, int rudder, int leftBrake, int rightBrake) {
  YokeRecord& record = Edited();
  number = std::clamp(number, 0, 15);
  const bool another = number != record.JoystickNumber;
  record.JoystickNumber = static_cast<std::int16_t>(number);
  const int last = static_cast<int>(kJoystickAxes.size()) - 1;
  const JoystickInfo* device = JoystickAt(number);
  const auto set = [&](Byte& axis, int place) {
    const Byte wanted = ToByte(place, last);
    if (wanted == axis) return;
    if (wanted > 0 && device != nullptr && !HasAxis(*device, wanted)) {
      boxes_.Show(NoAxisWords(*device, wanted));
    } else {
      axis = wanted;
    }
  };
  set(record.RudderAxis, rudder);
  set(record.LeftBrakeAxis, leftBrake);
  set(record.RightBrakeAxis, rightBrake);
  Changed();
  if (another) ChooseJoystick();
}

void YokePresenter::ChooseJoystick() {
  std::string error;
  if (!pair_.Joysticks().Choose(Record().JoystickNumber, error)) boxes_.Show(error);
}

void YokePresenter::SetFunction(int offset, int function) {
  if (offset < 0 || offset >= kFfbOffsets) return;
  model_.Yoke1.FfbFunctions[static_cast<std::size_t>(offset)] =
      static_cast<std::int16_t>(std::clamp(function, 0, kFunctions - 1));
  Changed();
}

void YokePresenter::SetForcePoint(Axis axis, std::size_t point, double airspeed, double force) {
  if (point >= model_.GeneralFFB.ForceTable.size() || std::isnan(airspeed) || std::isnan(force)) return;
  auto& row = EditedGeneral().ForceTable[point];
  const auto knots = static_cast<float>(std::clamp(airspeed, 0.0, 1000.0));
  const auto percent = static_cast<float>(std::clamp(force, 0.0, 100.0));
  (axis == Axis::Roll ? row.RollAirspeed : row.PitchAirspeed) = knots;
  (axis == Axis::Roll ? row.RollForce : row.PitchForce) = percent;
  Changed();
}

void YokePresenter::SetLevel(Byte GeneralFFBRecord::*level, int percent) {
  EditedGeneral().*level = ToByte(percent, 100);
  Changed();
}

void YokePresenter::SetGripThreshold(int counts) {
  EditedGeneral().GripThreshold = static_cast<std::int16_t>(std::clamp(counts, 0, kYokeTravel));
  Changed();
}

YokeRecord YokePresenter::Shared() const {
  YokeRecord shared = model_.Yoke1;
  if (EffectsAreBlank(shared)) SetStandardEffects(shared);
  return shared;
}

void YokePresenter::SetShared(std::int16_t YokeRecord::*number, int value) {
  model_.Yoke1.*number = static_cast<std::int16_t>(std::clamp(value, 0, 32767));
  Changed();
}

void YokePresenter::SetEffect(std::size_t place, double frequency, int percent) {
  if (place >= model_.Yoke1.Effects.size() || std::isnan(frequency)) return;
  if (EffectsAreBlank(model_.Yoke1)) SetStandardEffects(model_.Yoke1);
  model_.Yoke1.Effects[place] = {static_cast<float>(std::clamp(frequency, 0.0, kHighestFrequency)),
                                 ToByte(percent, 100)};
  Changed();
}

void YokePresenter::SetStandardForces() {
  const std::int16_t master = model_.GeneralFFB.MasterYoke;
  model_.GeneralFFB = StandardGeneralFFB();
  if (master == 2) model_.GeneralFFB.MasterYoke = 2;
  SetStandardEffects(model_.Yoke1);
  Changed();
}

bool YokePresenter::CheckJoystickSettings() {
  const auto faults = CheckJoystick(Record());
  for (const std::string_view fault : faults) boxes_.Show(fault);
  const bool device = !faults.empty() || pair_.Joysticks().Look(Record()) == PedalState::Usable;
  if (!device) boxes_.Show(JoystickText());
  if (!faults.empty() || !device) boxes_.Show(kJoystickUnusable);
  return faults.empty() && device;
}

}  // namespace tvx
