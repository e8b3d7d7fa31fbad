// The process cycle over a line with the speed of the real one, in simulated time.
#pragma once

#include <algorithm>
#include <deque>
#include <memory>
#include <vector>

#include "core/GaugeReceiver.h"
#include "tests/fakes/CockpitRig.h"
#include "virtualcockpit/bus/GaugeBus.h"
#include "virtualcockpit/pace/SerialWire.h"

namespace tvx {

// The program's cycle, and behind its port a driver's buffer, the line, and the instruments.
class SimulatedBus {
 public:
  static constexpr std::size_t kDriverTakes =
      4096;  // bytes; what is above waits in the program and refuses more

  explicit SimulatedBus(int intervalMs) {
    rig_->model.General.TransferInterval = static_cast<std::int16_t>(intervalMs);
    events_ = rig_->Bus().SetHandler([this](SerialEvent event) { receiver_.OnComm(event, true); });
    listener_ = receiver_.SetListener([this](std::optional<ReplyView> reply) { answers_ += reply ? 1 : 0; });
  }
  virtual ~SimulatedBus() = default;
  void Start() {
    rig_->Start();
    for (int id = 1; id < kGauges; ++id) {
      const GaugeRecord& gauge = rig_->model.Gauges[static_cast<std::size_t>(id)];
      if (gauge.GaugeType == 0) continue;
      bus_.Add(vc::MakeDevice({static_cast<Byte>(id), gauge.GaugeType, 1, 1, 0}));
    }
  }
  // Runs for so long, in steps of a millisecond.
  void Run(std::int64_t ms) {
    for (const std::int64_t end = nowMs_ + ms; nowMs_ < end; ++nowMs_) {
      rig_->clock.now = nowMs_;
      if (nowMs_ % rig_->model.General.TransferInterval == 0) {
        OnTick();
        rig_->Bus().RefuseWrites = driver_.size() > kDriverTakes;
        rig_->Bus().Writes.clear();
        rig_->cycle.Tick();
        for (const auto& write : rig_->Bus().Writes)
          driver_.insert(driver_.end(), write.begin(), write.end());
      }
      const std::size_t taken = std::min(wire_.Room(), driver_.size());
      const std::vector<Byte> bytes(driver_.begin(), driver_.begin() + static_cast<std::ptrdiff_t>(taken));
      driver_.erase(driver_.begin(), driver_.begin() + static_cast<std::ptrdiff_t>(taken));
      if (taken > 0) wire_.FromProgram(bytes, nowMs_ * vc::kNsPerMs);
      wire_.Advance((nowMs_ + 1) * vc::kNsPerMs - 1);
      OnMillisecond();
    }
  }

  std::unique_ptr<CockpitRig> rig_ = std::make_unique<CockpitRig>();
  std::int64_t nowMs_ = 100000;
  std::uint64_t answers_ = 0;
  vc::GaugeBus bus_{[this](ByteView bytes) { wire_.FromHardware(bytes, takingNs_); }};

 protected:
  virtual void OnTick() {}
  virtual void OnMillisecond() {}
  virtual void OnFrame(const vc::Frame&) {}

 private:
  void Arrive(ByteView bytes, std::int64_t atNs) {
    takingNs_ = atNs;
    decoder_.Take(bytes, [this](const vc::Frame& frame) { OnFrame(frame); });
    bus_.OnBytes(bytes, atNs / vc::kNsPerMs);
  }
  GaugeReceiver receiver_{rig_->model, rig_->serial, rig_->cycle, rig_->sim, rig_->special};
  Registration events_, listener_;
  std::int64_t takingNs_ = 0;
  vc::FrameDecoder decoder_;
  std::deque<Byte> driver_;
  vc::SerialWire wire_{[this](ByteView bytes, std::int64_t atNs) { Arrive(bytes, atNs); },
                       [this](ByteView bytes) { rig_->Bus().Arrive(bytes); }};
};

}  // namespace tvx
