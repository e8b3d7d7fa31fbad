// The engine cluster: needles, lighting, and the sweep in which it finds its zeroes again.
#pragma once

#include <array>

#include "drawn/units/ClusterState.h"
#include "virtualcockpit/lines/Unit.h"

namespace tvx::vc {

class ClusterUnit : public Unit {
 public:
  static constexpr std::int64_t kSweepMs = drawn::ClusterState::kSweepMs;

  const drawn::ClusterState& State() const { return state_; }
  int Needle(int index) const { return state_.Needle(index); }
  bool Sweeping() const { return state_.Sweeping(); }
  bool Lit() const { return state_.Lit(); }
  bool BusPowered() const { return state_.BusPowered(); }
  std::uint64_t Sweeps() const { return sweeps_; }
  std::uint64_t Resets() const { return resets_; }
  std::string Words() const override;

 protected:
  void OnBytes(ByteView bytes) override;
  void OnTick(std::int64_t nowMs) override;
  void OnInterrupt() override { length_ = 0; }
  void StartAnew() override { state_.StartAnew(); }

 private:
  static constexpr std::size_t kFrame = drawn::ClusterState::kFrameSize;
  void OnFrame();

  std::array<Byte, kFrame> frame_{};
  std::size_t length_ = 0;
  drawn::ClusterState state_;
  std::uint64_t sweeps_ = 0, resets_ = 0;
};

}  // namespace tvx::vc
