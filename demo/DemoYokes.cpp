// The demonstration with two force-feedback yokes, calibrated for the virtual cockpit's drawn ones.
#include "demo/DemoConfig.h"
#include "ffb/YokeSettings.h"

namespace tvx::demo {
namespace {

// The drawn yokes' raw middle and travel to each side.
constexpr int kRawCentre = 31000;
constexpr int kRawTravel = 24000;

void Calibrate(YokeRecord& yoke, Byte address) {
  yoke.Address = address;
  yoke.StartMode = static_cast<std::int16_t>(YokeMode::Ffb);
  yoke.OptionBits = yokeoption::kStandard;
  yoke.RollLeft = yoke.PitchForward = StoredRaw(kRawCentre - kRawTravel);
  yoke.RollCentre = yoke.PitchCentre = StoredRaw(kRawCentre);
  yoke.RollRight = yoke.PitchBack = StoredRaw(kRawCentre + kRawTravel);
}

}  // namespace

ConfigModel YokesConfig() {
  ConfigModel model = DemoConfig();
  model.ConfigFileName = "Yokes.cfg";
  model.General.ComPortYoke1 = 8;
  model.General.ComPortYoke2 = 9;
  Calibrate(model.Yoke1, 1);
  Calibrate(model.Yoke2, 2);
  return model;
}

}  // namespace tvx::demo
