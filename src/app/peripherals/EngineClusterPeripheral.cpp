#include "app/peripherals/EngineClusterPeripheral.h"

namespace tvx {
namespace {

// Bits of the lighting word.
constexpr std::int32_t kInstrumentLights = 0x4000;
constexpr std::int32_t kFirstBusPowered = 0x02;

}  // namespace

EngineClusterPeripheral::EngineClusterPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware,
                                                 MessageBoxes& boxes, const Clock& clock,
                                                 std::function<std::int32_t()> lightingWord)
    : model_(model),
      boxes_(boxes),
      lightingWord_(std::move(lightingWord)),
      cluster_(model, sim, hardware, boxes, clock, {processTimer_, secondTimer_}) {
  processTicks_ = processTimer_.OnTick([this] {
    const std::int32_t word = lightingWord_();
    cluster_.SetLighting((word & kInstrumentLights) != 0, (word & kFirstBusPowered) != 0);
    cluster_.ProcessTimer_Tick();
  });
  secondTicks_ = secondTimer_.OnTick([this] { cluster_.Timer1000ms_Tick(); });
  edits_ = presenter_.SetChanged([this] { ShowEdited(); });
}

void EngineClusterPeripheral::StopTimers() {
  processTimer_.SetEnabled(false);
  secondTimer_.SetEnabled(false);
}

void EngineClusterPeripheral::Load() {
  form_.GetOrMake([this] { return new EngineClusterForm(cluster_, model_, *this); }).show();
}

void EngineClusterPeripheral::Unload() {
  cluster_.cmdStop_Click();
  cluster_.ForgetPorts();
  StopTimers();
  configuration_.Unload();
  test_.Unload();
  form_.Unload();
}

void EngineClusterPeripheral::Show() {
  if (form_) form_->BringToFront();
}

void EngineClusterPeripheral::ShowTest() {
  test_.GetOrMake([this] { return new TestEngineClusterForm(cluster_, presenter_); }).BringToFront();
}

void EngineClusterPeripheral::ShowSetUp() {
  const auto make = [this] {
    cluster_.OpenCommPort();
    return new ConfigEngineClusterForm(model_, cluster_, presenter_, boxes_, *this);
  };
  configuration_.GetOrMake(make).BringToFront();
}

void EngineClusterPeripheral::ShowPlates(int channel) {
  if (plates_ != nullptr) plates_->OpenClusterPlates(channel, configuration_.Get());
}

void EngineClusterPeripheral::ShowEdited() {
  if (configuration_) configuration_->Refresh();
  if (test_) test_->Refresh();
  if (form_) form_->ShowChannels();
}

}  // namespace tvx
