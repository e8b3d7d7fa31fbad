#include "app/YokesPeripheral.h"

namespace tvx {

YokesPeripheral::YokesPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware,
                                 MessageBoxes& boxes, const Clock& clock)
    : model_(model),
      boxes_(boxes),
      pair_(model, sim, hardware.PortOf(HardwareGroup::Yoke1), hardware.PortOf(HardwareGroup::Yoke2), boxes,
            clock, joystick_, processTimer_) {
  processTimer_.OnTick([this] { pair_.ProcessTimer_Tick(); });
}

YokesPeripheral::~YokesPeripheral() {
  pair_.Unload();
  delete form_;
  for (const auto& form : configurations_) delete form;
}

void YokesPeripheral::Load() {
  pair_.Load();
  if (!form_) form_ = new FfbStatusForm(pair_, [this](int which) { ShowConfiguration(which); });
  form_->show();
}

void YokesPeripheral::Unload() {
  pair_.Unload();
  if (form_) form_->Unload();
  form_ = nullptr;
  for (auto& form : configurations_) {
    if (form) form->Unload();
    form = nullptr;
  }
}

void YokesPeripheral::Show() {
  if (form_) form_->BringToFront();
}

void YokesPeripheral::ShowConfiguration(int which) {
  QPointer<YokeConfigForm>& form = configurations_[which == 2 ? 1 : 0];
  if (!form || form->Unloading()) form = new YokeConfigForm(model_, pair_, boxes_, joystick_, which);
  form->BringToFront();
}

}  // namespace tvx
