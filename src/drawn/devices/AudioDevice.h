// The audio panel, 125: whom one hears, and the marker lamps.
#pragma once

#include <array>

#include "drawn/Device.h"

namespace tvx::drawn {

class AudioDevice : public Device {
 public:
  enum class Selector { Com1, Com2, Nav1, Nav2, Marker, Dme, Adf };
  static constexpr int kSelectors = 7;

  using Device::Device;
  bool Outer() const { return (markers_ & 1) != 0; }
  bool Middle() const { return (markers_ & 2) != 0; }
  bool Inner() const { return (markers_ & 4) != 0; }
  bool Selected(Selector selector) const { return selected_[static_cast<std::size_t>(selector)]; }
  void Toggle(Selector selector);
  int Volume() const { return volume_; }  // 0..255
  void TurnVolume(int clicks);

 protected:
  void StartAnew() override { markers_ = 0; }  // the buttons stay pressed
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;
  void ReadReply(const Reply& reply) override;

 private:
  std::uint32_t markers_ = 0;
  std::array<bool, kSelectors> selected_{true};
  int volume_ = 160;
};

}  // namespace tvx::drawn
