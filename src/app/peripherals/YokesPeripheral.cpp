#include "app/peripherals/YokesPeripheral.h"

namespace tvx {
namespace {

constexpr std::int64_t kHeardMs = 2000;

}  // namespace

YokesPeripheral::YokesPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware,
                                 MessageBoxes& boxes, const Clock& clock,
                                 std::unique_ptr<JoystickDevice> joysticks, LastWords& words)
    : model_(model),
      sim_(sim),
      boxes_(boxes),
      joystick_(std::move(joysticks)),
      pair_(model, sim, hardware.PortOf(HardwareGroup::Yoke1), hardware.PortOf(HardwareGroup::Yoke2), boxes,
            clock, *joystick_, processTimer_),
      controls_(words) {
  pair_.Joysticks().KeepIn(std::string(PedalDevices::kFile));
  ticks_ = processTimer_.OnTick([this] { pair_.ProcessTimer_Tick(); });
  taken_ = pair_.SetTaken([this](TakenGroups groups) { controls_.Hold(groups); });
}

YokesPeripheral::~YokesPeripheral() {
  pair_.Unload();
  LetGo();
}

void YokesPeripheral::Load() {
  pair_.Load();
  const auto make = [this] {
    return new FfbStatusForm(pair_, [this](int which) { ShowConfiguration(which); });
  };
  form_.GetOrMake(make).show();
}

void YokesPeripheral::Stop() {
  pair_.cmdStop_Click();
  LetGo();
}

void YokesPeripheral::LetGo() {
  if (!pair_.Controls().YokeTaken() && !pair_.Controls().PedalsTaken()) controls_.LetGo();
}

void YokesPeripheral::GiveBackLeftOnes() {
  const auto silent = sim_.SilentForMs();
  controls_.Tick(silent && *silent <= kHeardMs);
}

void YokesPeripheral::Unload() {
  pair_.Unload();
  LetGo();
  form_.Unload();
  for (auto& form : configurations_) form.Unload();
}

void YokesPeripheral::Show() {
  if (form_) form_->BringToFront();
}

void YokesPeripheral::ShowConfiguration(int which) {
  const auto make = [&] { return new YokeConfigForm(model_, pair_, boxes_, *joystick_, which); };
  configurations_[which == 2 ? 1 : 0].GetOrMake(make).BringToFront();
}

}  // namespace tvx
