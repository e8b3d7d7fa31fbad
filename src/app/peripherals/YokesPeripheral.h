// The yokes as run control reaches them: the pair, its timer and its forms.
#pragma once

#include <array>

#include "core/Peripheral.h"
#include "ffb/TakenControls.h"
#include "ffb/YokePair.h"
#include "ffb/forms/FfbStatusForm.h"
#include "ffb/forms/YokeConfigForm.h"
#include "hwbus/HardwarePorts.h"
#include "platform/JoystickDevice.h"
#include "platform/qt/QtHost.h"

namespace tvx {

class YokesPeripheral final : public Peripheral {
 public:
  // `joysticks`: the game controllers. `words`: what is said where the program crashes.
  YokesPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware, MessageBoxes& boxes,
                  const Clock& clock, std::unique_ptr<JoystickDevice> joysticks, LastWords& words);
  ~YokesPeripheral() override;

  bool Configured() const override { return pair_.Configured(1) || pair_.Configured(2); }
  void Load() override;
  void Unload() override;
  void Show() override;
  void OpenPorts() override { pair_.OpenPorts(); }
  void Run() override { pair_.cmdRun_Click(); }
  void Stop() override;
  // About once a second, whether there are yokes or not: gives back what a program that was killed left.
  void GiveBackLeftOnes();

  // Opens the form of yoke 1 or 2.
  void ShowConfiguration(int which);

  YokePair& Pair() { return pair_; }
  FfbStatusForm* Form() const { return form_.Get(); }
  YokeConfigForm* ConfigurationForm(int which) const { return configurations_[which == 2 ? 1 : 0].Get(); }

 private:
  void LetGo();

  ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  std::unique_ptr<JoystickDevice> joystick_;
  QtTimer processTimer_{QStringLiteral("Yokes.ProcessTimer")};
  YokePair pair_;
  TakenControls controls_;
  Registration ticks_, taken_;
  FormHolder<FfbStatusForm> form_;
  std::array<FormHolder<YokeConfigForm>, 2> configurations_;
};

}  // namespace tvx
