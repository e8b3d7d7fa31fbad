// The transponders 112, 114 and 122.
#pragma once

#include <optional>
#include <string>

#include "drawn/Device.h"
#include "drawn/Gaugetypes.h"

namespace tvx::drawn {

class TransponderDevice : public Device {
 public:
  enum class Mode { Off = 0, Standby = 1, On = 2, Altitude = 3, Test = 4 };

  static constexpr int kFlightLevelCommand = 5;  // 122 answers it with its reply

  using Device::Device;
  bool HasKeys() const { return Id().type == gaugetype::kKeyedTransponder; }  // and shows the flight level
  int Code() const { return code_; }  // four octal digits, read as a decimal number
  Mode Knob() const { return mode_; }
  const std::optional<std::int32_t>& FlightLevel() const { return flightLevel_; }
  const std::optional<std::int32_t>& SecondCode() const { return secondCode_; }
  bool IdentWaits() const { return ident_; }

  // Turns one digit, 0 the first; others stay.
  void TurnDigit(int digit, int clicks);
  // A key 0..7: the fourth key makes a new code of the four.
  void Key(int digit);
  void ClearKeys();
  // The keys pressed so far; less than four.
  const std::string& Typed() const { return typed_; }
  // Turns the mode knob by positions, in their order; it stops at its ends.
  void TurnMode(int clicks);
  void Ident();

  bool AnswersTo(int command) const override {
    return Device::AnswersTo(command) || (HasKeys() && command == kFlightLevelCommand);
  }

 protected:
  void StartAnew() override;
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;
  void ReadReply(const Reply& reply) override;

 private:
  int code_ = 7000;
  Mode mode_ = Mode::Standby;
  bool ident_ = false;
  std::string typed_;
  std::optional<std::int32_t> flightLevel_, secondCode_;
};

}  // namespace tvx::drawn
