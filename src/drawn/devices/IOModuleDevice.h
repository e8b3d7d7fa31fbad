// An IO module on the gauge bus: sixteen lamps, a number, a text of its own, eight analogue inputs.
#pragma once

#include <array>
#include <string>

#include "drawn/Device.h"

namespace tvx::drawn {

class IOModuleDevice : public Device {
 public:
  static constexpr int kLamps = 16, kAnalogues = 8;
  static constexpr int kBrightest = 15, kLargestAnalogue = 4095;
  static constexpr int kLampsCommand = 6;  // the module answers it with its reply

  using Device::Device;
  bool Lamp(int number) const { return (lamps_ >> number & 1) != 0; }  // 0..15
  std::int32_t Number() const { return number_; }
  int Brightness() const { return brightness_; }  // of the lamps, 0..15
  // The module's text: six characters.
  const std::string& Text() const { return text_; }

  // An input outside 0..7 is ignored; values are cut to 0..kLargestAnalogue.
  void SetAnalogue(int number, int value);
  int Analogue(int number) const;

  bool AnswersTo(int command) const override {
    return Device::AnswersTo(command) || command == kLampsCommand;
  }

 protected:
  void StartAnew() override {
    lamps_ = 0;
    number_ = 0;
    brightness_ = kBrightest;
  }
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;
  void ReadReply(const Reply& reply) override;

 private:
  std::uint32_t lamps_ = 0;
  std::int32_t number_ = 0;
  int brightness_ = kBrightest;
  std::string text_ = "IO-MOD";
  std::array<int, kAnalogues> analogues_{};
};

}  // namespace tvx::drawn
