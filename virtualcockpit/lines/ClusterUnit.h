// The engine cluster: needles, lighting, and the sweep in which it finds its zeroes again.
#pragma once

#include <array>

#include "virtualcockpit/lines/Unit.h"

namespace tvx::vc {

class ClusterUnit : public Unit {
 public:
  static constexpr int kNeedles = 16, kTop = 1079;
  static constexpr std::int64_t kSweepMs = 2000;

  // Where a needle stands, 0..1079; needles 7 and 8 are one.
  int Needle(int index) const;
  bool Sweeping() const { return sweepStartMs_ >= 0; }
  bool Lit() const { return (lighting_ & kLitBit) != 0 || (oneShot_ & kLitBit) != 0; }
  bool BusPowered() const { return (lighting_ & kPowerBit) != 0; }
  std::uint64_t Sweeps() const { return sweeps_; }
  std::uint64_t Resets() const { return resets_; }
  std::string Words() const override;

 protected:
  void OnBytes(ByteView bytes) override;
  void OnTick(std::int64_t nowMs) override;
  void OnInterrupt() override { length_ = 0; }
  void StartAnew() override;

 private:
  static constexpr std::size_t kFrame = 40;
  static constexpr int kLitBit = 1, kPowerBit = 2;
  void OnFrame();

  std::array<Byte, kFrame> frame_{};
  std::size_t length_ = 0;
  std::array<int, kNeedles> needles_{};
  Byte lighting_ = 0, oneShot_ = 0;
  std::int64_t sweepStartMs_ = -1;
  std::uint64_t sweeps_ = 0, resets_ = 0;
};

}  // namespace tvx::vc
