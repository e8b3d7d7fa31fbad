#include "app/EngineClusterPeripheral.h"

namespace tvx {
namespace {

// Bits of the lighting word.
constexpr std::int32_t kInstrumentLights = 0x4000;
constexpr std::int32_t kFirstBusPowered = 0x02;

}  // namespace

EngineClusterPeripheral::EngineClusterPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware,
                                                 MessageBoxes& boxes,
                                                 std::function<std::int32_t()> lightingWord)
    : model_(model),
      boxes_(boxes),
      lightingWord_(std::move(lightingWord)),
      cluster_(model, sim, hardware, boxes, {processTimer_, secondTimer_}) {
  processTimer_.OnTick([this] {
    const std::int32_t word = lightingWord_();
    cluster_.SetLighting((word & kInstrumentLights) != 0, (word & kFirstBusPowered) != 0);
    cluster_.ProcessTimer_Tick();
  });
  secondTimer_.OnTick([this] { cluster_.Timer1000ms_Tick(); });
  presenter_.SetChanged([this] { ShowEdited(); });
}

EngineClusterPeripheral::~EngineClusterPeripheral() {
  StopTimers();
  delete configuration_;
  delete test_;
  delete form_;
}

void EngineClusterPeripheral::StopTimers() {
  processTimer_.SetEnabled(false);
  secondTimer_.SetEnabled(false);
}

void EngineClusterPeripheral::Load() {
  if (!form_) form_ = new EngineClusterForm(cluster_, model_, *this);
  form_->show();
}

void EngineClusterPeripheral::Unload() {
  cluster_.cmdStop_Click();
  cluster_.ForgetPorts();
  StopTimers();
  if (configuration_) configuration_->Unload();
  if (test_) test_->Unload();
  if (form_) form_->Unload();
  configuration_ = nullptr;
  test_ = nullptr;
  form_ = nullptr;
}

void EngineClusterPeripheral::Show() {
  if (form_) form_->BringToFront();
}

void EngineClusterPeripheral::ShowTest() {
  if (!test_) test_ = new TestEngineClusterForm(cluster_, presenter_);
  test_->BringToFront();
}

void EngineClusterPeripheral::ShowSetUp() {
  if (!configuration_ || configuration_->Unloading()) {
    cluster_.OpenCommPort();
    configuration_ = new ConfigEngineClusterForm(model_, cluster_, presenter_, boxes_, *this);
  }
  configuration_->BringToFront();
}

void EngineClusterPeripheral::ShowPlates(int channel) {
  if (plates_ != nullptr) plates_->OpenClusterPlates(channel, configuration_);
}

void EngineClusterPeripheral::ShowEdited() {
  if (configuration_ && !configuration_->Unloading()) configuration_->Refresh();
  if (test_) test_->Refresh();
  if (form_) form_->ShowChannels();
}

}  // namespace tvx
