// Instruments with discs, cards and pointers: attitude, heading, ADF and RMI.
#pragma once

#include <optional>

#include "drawn/Device.h"
#include "drawn/Wire.h"

namespace tvx::drawn {

// 103. Degrees, up and right positive.
class AttitudeDevice : public Device {
 public:
  using Device::Device;
  double Pitch() const { return pitch_ / 10.0; }
  double Bank() const { return bank_ / 10.0; }
  bool Told() const { return told_; }

 protected:
  void StartAnew() override {
    pitch_ = bank_ = 0;
    told_ = false;
  }
  void OnCommand(int command, std::int32_t value) override;

 private:
  std::int32_t pitch_ = 0, bank_ = 0;
  bool told_ = false;
};

// 105. Disc and bug in steps: the heading under the lubber line, and the heading that the bug marks.
class HeadingDevice : public Device {
 public:
  using Device::Device;
  int Disc() const { return disc_; }
  int Bug() const { return bug_; }
  int Gyro() const { return gyro_; }
  // One click is a degree.
  void TurnBug(int clicks);
  void TurnGyro(int clicks);

 protected:
  void StartAnew() override { disc_ = bug_ = gyro_ = 0; }
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  int disc_ = 0, bug_ = 0, gyro_ = 0;
};

// 108. The pointer in steps from the top, or parked; the card as the heading under the index.
class AdfDevice : public Device {
 public:
  using Device::Device;
  int Pointer() const { return pointer_; }
  int Card() const { return card_; }
  // Turns the card by degrees; the knob then stands at what the card shows.
  void TurnCard(int degrees);
  int KnobDegrees() const { return knob_; }

 protected:
  void StartAnew() override { pointer_ = card_ = 0; }  // the knob stands where it stands
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  int pointer_ = kParked, card_ = 0, knob_ = 0;
};

// 130. The card as the heading under the index; pointers as bearings on the card, or parked.
class RmiDevice : public Device {
 public:
  using Device::Device;
  int Card() const { return card_; }
  int Pointer1() const { return pointer1_; }
  int Pointer2() const { return pointer2_; }
  const std::optional<std::int32_t>& Distance() const { return distance_; }  // tenths of a nautical mile

 protected:
  void StartAnew() override {
    card_ = pointer1_ = pointer2_ = 0;
    distance_.reset();
  }
  void OnCommand(int command, std::int32_t value) override;

 private:
  int card_ = 0, pointer1_ = kParked, pointer2_ = kParked;
  std::optional<std::int32_t> distance_;
};

}  // namespace tvx::drawn
