// How old values are when they reach the needles, on a line with the speed of the real one. Time is
// simulated, so that the figures are the same on every computer: BusBench prints them and sleeps nowhere.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <deque>
#include <memory>
#include <numeric>
#include <vector>

#include "tests/fakes/SimulatedBus.h"

namespace tvx {
namespace {

constexpr int kFirstFunction = 45;  // of the needles
constexpr int kTop = 1079;

// Needles that all move, each at its own speed, up and down.
class MovingNeedles : public SimulatedBus {
 public:
  MovingNeedles(int count, int intervalMs)
      : SimulatedBus(intervalMs), needles_(static_cast<std::size_t>(count)) {
    const auto plate = static_cast<Byte>(rig_->AddPlate(0, kTop, kTop));
    for (int i = 0; i < count; ++i) {
      rig_->Define(kFirstFunction + i);
      rig_->model.Functions[static_cast<std::size_t>(kFirstFunction + i)].boxMaximumValue = kTop;
      GaugeRecord& gauge = rig_->AddGauge(1 + i, 4);
      gauge.GaugeFunction1 = static_cast<std::int16_t>(kFirstFunction + i);
      gauge.GaugeSetting3 = plate;
    }
    Start();
  }
  void Report() {
    Run(5000);  // until it has settled
    ages_.clear();
    for (Needle& needle : needles_) needle.longest = 0;
    error_ = 0;
    samples_ = 0;
    const std::size_t before = arrivals_;
    Run(20000);
    std::ranges::sort(ages_);
    std::int64_t longest = 0;
    for (const Needle& needle : needles_)
      longest = std::max(longest, std::max(needle.longest, nowMs_ - needle.arrivedMs));
    const auto at = [this](double part) {
      return ages_.empty() ? 0
                           : ages_[static_cast<std::size_t>(part * static_cast<double>(ages_.size() - 1))];
    };
    std::printf("| %zu | %lld ms | %lld ms | %lld ms | %.0f ms | %.1f | %.1f |\n", needles_.size(),
                static_cast<long long>(at(0.5)), static_cast<long long>(at(0.95)),
                static_cast<long long>(longest), static_cast<double>(needles_.size()) * 6000.0 / 3490.9,
                error_ / static_cast<double>(samples_),
                static_cast<double>(arrivals_ - before) / 20.0 / static_cast<double>(needles_.size()));
  }

 private:
  struct Needle {
    int shown = 0;
    std::int64_t arrivedMs = 0, longest = 0;
    std::deque<std::pair<std::int64_t, int>> history;  // where it should have stood, tick by tick
  };
  // Positions a second: 2 to 6 in a tick of 40 ms.
  static double SpeedOf(std::size_t needle) { return 50.0 + static_cast<double>(needle * 37 % 100); }
  double PlaceOf(std::size_t needle) const {
    const double way =
        SpeedOf(needle) * static_cast<double>(nowMs_) / 1000.0 + static_cast<double>(needle * 97);
    const double turn = std::fmod(way, 2.0 * kTop);
    return turn < kTop ? turn : 2.0 * kTop - turn;
  }
  void OnTick() override {
    for (std::size_t i = 0; i < needles_.size(); ++i) {
      const auto place = static_cast<float>(std::floor(PlaceOf(i)));
      rig_->Set(kFirstFunction + static_cast<int>(i), place);
      auto& history = needles_[i].history;
      history.emplace_back(nowMs_, static_cast<int>(place));
      if (history.size() > 1000) history.pop_front();
    }
  }
  void OnMillisecond() override {
    if (nowMs_ % 10 != 0) return;
    for (std::size_t i = 0; i < needles_.size(); ++i)
      error_ += std::fabs(needles_[i].shown - PlaceOf(i)), ++samples_;
  }
  void OnFrame(const vc::Frame& frame) override {
    const auto* command = std::get_if<vc::CommandFrame>(&frame);
    if (command == nullptr || command->command != 5) return;
    Needle& needle = needles_[static_cast<std::size_t>(command->gaugeID - 1)];
    needle.shown = command->value;
    if (needle.arrivedMs != 0) needle.longest = std::max(needle.longest, nowMs_ - needle.arrivedMs);
    needle.arrivedMs = nowMs_;
    ++arrivals_;
    const auto found = std::find_if(needle.history.rbegin(), needle.history.rend(),
                                    [&](const auto& was) { return was.second == command->value; });
    if (found != needle.history.rend()) ages_.push_back(nowMs_ - found->first);
  }

  std::vector<Needle> needles_;
  std::vector<std::int64_t> ages_;
  double error_ = 0;
  std::uint64_t samples_ = 0;
  std::size_t arrivals_ = 0;
};

// Instruments that are polled, and some needles.
class Polled : public SimulatedBus {
 public:
  explicit Polled(int intervalMs) : SimulatedBus(intervalMs), interval_(intervalMs) {
    for (int id = 1; id <= 10; ++id) rig_->AddGauge(id, 101);
    Start();
  }
  void Report() {
    Run(2000);
    const std::uint64_t asked = bus_.Polls(), answered = answers_;
    Run(10000);
    const auto polls = static_cast<double>(bus_.Polls() - asked);
    std::printf("| %d ms | %.1f | %.1f %% |\n", interval_, polls / 10.0,
                100.0 * static_cast<double>(answers_ - answered) / polls);
  }

 private:
  const int interval_;
};

}  // namespace
}  // namespace tvx

int main() {
  std::puts(
      "| needles | age, median | age, 95 % | longest wait | round of all | mean error, positions | updates a "
      "second |");
  for (const int count : {22, 24, 60, 255}) tvx::MovingNeedles(count, 40).Report();
  std::puts("\n| interval | polls a second | answered |");
  for (const int interval : {10, 20, 30, 40, 100}) tvx::Polled(interval).Report();
}
