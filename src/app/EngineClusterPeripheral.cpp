#include "app/EngineClusterPeripheral.h"

namespace tvx {
namespace {

// Bits of the lighting word.
constexpr std::int32_t kInstrumentLights = 0x4000;
constexpr std::int32_t kFirstBusPowered = 0x02;

}  // namespace

EngineClusterPeripheral::EngineClusterPeripheral(ConfigModel& model, SimCom& sim, Serial& serial,
                                                 MessageBoxes& boxes,
                                                 std::function<std::int32_t()> lightingWord)
    : model_(model),
      lightingWord_(std::move(lightingWord)),
      cluster_(model, sim, serial, boxes, {processTimer_, secondTimer_}) {
  processTimer_.OnTick([this] {
    const std::int32_t word = lightingWord_();
    cluster_.SetLighting((word & kInstrumentLights) != 0, (word & kFirstBusPowered) != 0);
    cluster_.ProcessTimer_Tick();
  });
  secondTimer_.OnTick([this] { cluster_.Timer1000ms_Tick(); });
}

EngineClusterPeripheral::~EngineClusterPeripheral() {
  StopTimers();
  delete test_;
  delete form_;
}

void EngineClusterPeripheral::StopTimers() {
  processTimer_.SetEnabled(false);
  secondTimer_.SetEnabled(false);
}

void EngineClusterPeripheral::Load() {
  if (!form_) form_ = new EngineClusterForm(cluster_, model_, [this] { ShowTest(); });
  form_->show();
}

void EngineClusterPeripheral::Unload() {
  cluster_.cmdStop_Click();
  StopTimers();
  if (test_) test_->Unload();
  if (form_) form_->Unload();
  test_ = nullptr;
  form_ = nullptr;
}

void EngineClusterPeripheral::Show() {
  if (!form_) return;
  form_->show();
  form_->raise();
  form_->activateWindow();
}

void EngineClusterPeripheral::ShowTest() {
  if (!test_) test_ = new TestEngineClusterForm(cluster_, model_);
  test_->show();
  test_->raise();
  test_->activateWindow();
}

}  // namespace tvx
