// The gauge bus in real time, but simulated: the cycle, a line with the speed of the real one, instruments
// that show what they were told last, and hands that turn their knobs.
#include "core/BusWords.h"
#include "drawn/devices/NeedleDevice.h"
#include "drawn/devices/RadioDevice.h"
#include "tests/fakes/SimulatedBus.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::busintimetest {

constexpr int kRadio = 40, kFrequency = 51;

// Thirty instruments that are polled, one of them a COM radio, and an IO module: a round takes 2.4 s. The
// simulator takes what it is sent and says so `echoMs` later.
class ThirtyPolled : public SimulatedBus {
 public:
  explicit ThirtyPolled(int intervalMs = 40, int echoMs = 100) : SimulatedBus(intervalMs), echoMs_(echoMs) {
    rig_->Define(kFrequency);
    rig_->Define(52);
    for (int id = 1; id <= 29; ++id) rig_->AddGauge(id, 101);
    rig_->model.Gauges[kRadio] = {
        .GaugeType = 110, .GaugeFunction1 = kFrequency, .GaugeFunction2 = 52, .GaugeSetting5 = 4};
    rig_->AddGauge(60, 10);
    Start();
    rig_->Set(kFrequency, 11850);
    rig_->Set(52, 12000);
  }
  vc::RadioDevice& Radio() { return dynamic_cast<vc::RadioDevice&>(*bus_.Find(kRadio)); }
  float Standby() const { return standby_; }
  int ThrownBack() const { return thrownBack_; }
  bool watched_ = false;

 protected:
  void OnTick() override {
    for (const std::string& sent : rig_->socket.TakeSent()) {
      if (sent.substr(0, 4) != "DATA" || static_cast<unsigned char>(sent[5]) != 52) continue;
      standby_ = FloatAt(sent, 9);
      echoes_.emplace_back(nowMs_ + echoMs_, standby_);
    }
    while (!echoes_.empty() && echoes_.front().first <= nowMs_) {
      rig_->Set(52, echoes_.front().second);
      echoes_.pop_front();
    }
  }
  void OnFrame(const vc::Frame& frame) override {
    const auto* command = std::get_if<vc::CommandFrame>(&frame);
    if (!watched_ || command == nullptr || command->gaugeID != kRadio || command->command != 5) return;
    if (command->value != Radio().Frequencies().standby) ++thrownBack_;
  }

 private:
  const int echoMs_;
  float standby_ = 0;
  int thrownBack_ = 0;
  std::deque<std::pair<std::int64_t, float>> echoes_;
};

TEST(BusInTime, AKnobThatIsTurnedForLongIsNotThrownBack) {
  // A simulator that answers after 1.5 s still has the older value when the hand moves on, until the next
  // poll.
  for (const int echoMs : {100, 1500}) {
    ThirtyPolled bus(40, echoMs);
    bus.Run(6000);
    ASSERT_EQ(bus.Radio().Frequencies().standby, 20000) << "the simulator's";
    bus.watched_ = true;
    for (int click = 1; click <= 80; ++click) {
      bus.Radio().TurnCoarse(click % 2 == 0 ? 1 : 2);
      bus.Run(100);
    }
    bus.Run(8000);
    EXPECT_EQ(bus.ThrownBack(), 0) << echoMs;
    EXPECT_EQ(bus.Standby(), static_cast<float>(10000 + bus.Radio().Frequencies().standby / 10))
        << "both agree";
  }
}

TEST(BusInTime, WhatADisplayWasToldIsNoTurnOfItsKnob) {
  ThirtyPolled bus;
  bus.Run(6000);
  // 118.005 MHz: the display shows 118.000, and says so.
  bus.rig_->Set(52, 11800.5f);
  bus.Run(6000);
  EXPECT_EQ(bus.Radio().Frequencies().standby, 18000);
  EXPECT_EQ(bus.Standby(), 0) << "no frequency was ever sent to the simulator";
}

TEST(BusInTime, NearlyEveryPollIsAnsweredAtEveryInterval) {
  for (const int interval : {10, 15, 20, 25, 30, 40, 100}) {
    ThirtyPolled bus(interval);
    bus.Run(1000);
    const auto polls = bus.bus_.Polls();
    const auto answers = bus.answers_;
    bus.Run(10000);
    EXPECT_GE(static_cast<double>(bus.answers_ - answers),
              0.95 * static_cast<double>(bus.bus_.Polls() - polls))
        << interval;
    EXPECT_GT(bus.bus_.Polls() - polls, 90u) << interval;
  }
}

TEST(BusInTime, HalfAnAnswerIsCountedAsDamaged) {
  ThirtyPolled bus;
  bus.Radio().SetFault(vc::DeviceFault::Half);
  bus.Run(12000);
  for (const GaugeHealth& gauge : bus.rig_->cycle.Health().Gauges()) {
    EXPECT_EQ(gauge.damaged > 0, gauge.gaugeID == kRadio) << gauge.gaugeID;
    EXPECT_EQ(gauge.missed > 0, gauge.gaugeID == kRadio) << gauge.gaugeID;
  }
}

TEST(BusInTime, AnInstrumentThatComesBackIsSentEverythingTwiceAndDoesNotUndoTheSimulator) {
  ThirtyPolled bus;
  bus.Run(6000);
  bus.Radio().SetFault(vc::DeviceFault::Dead);
  bus.Run(12000);
  const auto silent = bus.rig_->cycle.Health().Silent(bus.nowMs_);
  ASSERT_EQ(silent.count, 1);
  const std::string words = BusTroubleWords(bus.rig_->model, bus.rig_->cycle.Health(), {}, bus.nowMs_);
  EXPECT_TRUE(Begins(words, "040 has not answered for 1"));
  bus.Radio().SetFault(vc::DeviceFault::None);
  const auto heard = bus.Radio().Heard();
  bus.Run(8000);
  EXPECT_EQ(bus.Radio().Frequencies().active, 18500);
  EXPECT_EQ(bus.Radio().Frequencies().standby, 20000);
  EXPECT_EQ(bus.Radio().Heard() - heard, 6u) << "two frequencies and the lighting, twice";
  EXPECT_EQ(bus.Standby(), 0) << "its zeroes were no turned knobs";
  EXPECT_EQ(bus.rig_->cycle.Health().Silent(bus.nowMs_).count, 0);
}

// Needles that all move at each tick.
class Needles : public SimulatedBus {
 public:
  explicit Needles(int count) : SimulatedBus(40), count_(count) {
    const auto plate = static_cast<Byte>(rig_->AddPlate(0, 1079, 1079));
    rig_->Define(14);
    for (int i = 0; i < count; ++i) {
      rig_->Define(45 + i);
      GaugeRecord& gauge = rig_->AddGauge(1 + i, 4);
      gauge.GaugeFunction1 = static_cast<std::int16_t>(45 + i);
      gauge.GaugeSetting3 = plate;
    }
    Start();
  }
  std::int64_t longestGap_ = 0;  // between two values of a needle, ms
  std::int64_t oldest_ = 0;      // of the values that arrived, ms
  std::uint64_t arrived_ = 0;
  int lightings_ = 0;  // of the first gauge

 protected:
  // The position tells the tick.
  void OnTick() override {
    ++tick_;
    for (int i = 0; i < count_; ++i) rig_->Set(45 + i, static_cast<float>(tick_ % 1079));
    ticks_[static_cast<std::size_t>(tick_ % 1079)] = nowMs_;
  }
  void OnFrame(const vc::Frame& frame) override {
    const auto* command = std::get_if<vc::CommandFrame>(&frame);
    if (command != nullptr && command->command == 8 && command->gaugeID == 1) ++lightings_;
    if (command == nullptr || command->command != 5) return;
    ++arrived_;
    std::int64_t& last = lastMs_[command->gaugeID];
    if (last != 0) longestGap_ = std::max(longestGap_, nowMs_ - last);
    last = nowMs_;
    oldest_ = std::max(oldest_, nowMs_ - ticks_[static_cast<std::size_t>(command->value)]);
  }

 private:
  const int count_;
  int tick_ = 0;
  std::array<std::int64_t, 1079> ticks_{};
  std::array<std::int64_t, 256> lastMs_{};
};

TEST(BusInTime, AFullLineCarriesNewValuesToEveryNeedleAndIsTold) {
  for (const int count : {22, 24, 60, 255}) {
    Needles bus(count);
    bus.Run(3000);
    bus.rig_->cycle.TakeLoad();
    bus.oldest_ = 0;
    bus.arrived_ = 0;
    bus.Run(2000);
    EXPECT_LT(bus.oldest_, 100) << count;
    EXPECT_GT(bus.arrived_, count == 22 ? 1070u : 1140u) << count << ": the line is used";
    const BusLoad load = bus.rig_->cycle.TakeLoad();
    EXPECT_EQ(load.full, count > 22) << count;
    if (count == 60) {
      EXPECT_EQ(BusTroubleWords(bus.rig_->model, bus.rig_->cycle.Health(), load, bus.nowMs_),
                "gauge bus full: needles updated 9 times a second");
    }
  }
}

// Lighting that changes all the time goes before the values, and starves none of them.
TEST(BusInTime, LightingThatNeverRestsStarvesNoNeedle) {
  Needles bus(60);
  bus.Run(3000);
  bus.longestGap_ = 0;
  for (int i = 0; i < 100; ++i) {
    bus.rig_->Set(14, static_cast<float>(64 * (i % 16)));
    bus.Run(120);
  }
  EXPECT_LT(bus.longestGap_, 1500);
}

TEST(BusInTime, TheFirstLightingOfARunGoesOutOnce) {
  for (const int count : {3, 60}) {
    Needles bus(count);
    bus.Run(6000);
    EXPECT_EQ(bus.lightings_, 1) << count;
    bus.rig_->Set(14, 1023);
    bus.Run(2000);
    EXPECT_EQ(bus.lightings_, 2) << count;
  }
}

TEST(BusInTime, OnAFullLineTheLightingComesFirst) {
  Needles bus(60);
  bus.Run(3000);
  bus.rig_->Set(14, 512);
  bus.rig_->cycle.ResendAll();
  bus.Run(200);  // 60 frames of lighting take 103 ms, behind what was on the line
  int lit = 0;
  for (const auto& device : bus.bus_.Devices()) lit += device->Light().told ? 1 : 0;
  EXPECT_EQ(lit, 60);
}

}  // namespace tvx::busintimetest
