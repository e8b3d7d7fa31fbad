#include "app/YokesPeripheral.h"

namespace tvx {

YokesPeripheral::YokesPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware,
                                 MessageBoxes& boxes, const Clock& clock)
    : model_(model),
      boxes_(boxes),
      pair_(model, sim, hardware.PortOf(HardwareGroup::Yoke1), hardware.PortOf(HardwareGroup::Yoke2), boxes,
            clock, joystick_, processTimer_) {
  ticks_ = processTimer_.OnTick([this] { pair_.ProcessTimer_Tick(); });
}

void YokesPeripheral::Load() {
  pair_.Load();
  const auto make = [this] {
    return new FfbStatusForm(pair_, [this](int which) { ShowConfiguration(which); });
  };
  form_.GetOrMake(make).show();
}

void YokesPeripheral::Unload() {
  pair_.Unload();
  form_.Unload();
  for (auto& form : configurations_) form.Unload();
}

void YokesPeripheral::Show() {
  if (form_) form_->BringToFront();
}

void YokesPeripheral::ShowConfiguration(int which) {
  const auto make = [&] { return new YokeConfigForm(model_, pair_, boxes_, joystick_, which); };
  configurations_[which == 2 ? 1 : 0].GetOrMake(make).BringToFront();
}

}  // namespace tvx
