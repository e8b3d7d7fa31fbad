// What must hold whatever happens, tried at random: settings, flights, stalls, losses, hands and hand-overs.
#include "tests/ffb/Chain.h"
#include "virtualcockpit/pace/Chance.h"

namespace tvx::test::atrandomtest {

constexpr int kFreeMs = 1000;  // after any cause the hand is free

class Life {
 public:
  explicit Life(std::uint32_t seed) : chance_(seed) {
    chain_.model.GeneralFFB = StandardGeneralFFB();
    SetStandardEffects(chain_.model.Yoke1);
    chain_.after = [this] { LookAtFrames(); };
    chain_.Begin(Number(0, 4000));
    for (Seen& seen : seen_) seen.fineMs.fill(chain_.clock.now);
  }
  void Live(int events) {
    for (int i = 0; i < events && !testing::Test::HasFatalFailure(); ++i) {
      Happen();
      for (int ms = Number(20, 1500); ms > 0; ms -= 20) {
        chain_.Pass(20);
        LookAtHands();
      }
    }
  }

 private:
  struct Seen {
    double limit = 0, largest = 0;
    std::int64_t zeroMs = 0, noisyMs = 0;
    std::array<std::int64_t, 8> fineMs{};  // by cause: when it was not there last
  };
  int Number(int least, int most) { return static_cast<int>(chance_.Between(least, most)); }
  float Share() { return static_cast<float>(Number(-100, 100)) / 100; }
  bool Half() { return Number(0, 1) == 1; }
  Byte Percent() { return static_cast<Byte>(Number(0, 100)); }

  // Causes come and go; each keeps for how long it has lasted.
  void Happen() {
    Chain& c = chain_;
    const int which = Number(1, 2);
    Chain::Side& side = c.Of(which);
    YokeRecord& record = which == 1 ? c.model.Yoke1 : c.model.Yoke2;
    GeneralFFBRecord& general = c.model.GeneralFFB;
    const std::function<void()> events[] = {
        [&] { c.simulatorAlive = !c.simulatorAlive || Half(); },
        [&] { c.frozen = Half() ? std::set<int>{} : std::set<int>{frozen_}; },
        [&] { c.SetValue(6, Half() ? std::nanf("") : static_cast<float>(Number(0, 300))); },
        [&] { c.repliesFirst = Half(), Cut(1), Cut(2), c.Suspend(Number(50, 2000)); },
        [&] { side.device.SetFault(vc::kYokeFaults[Half() ? 0 : Number(0, 5)]); },
        [&] { side.device.SetStopButton(Number(0, 2) == 0); },
        [&] { Cut(which), c.Plug(which, !side.plugged || Half()); },
        [&] { c.pair.HandOver(which); },
        [&] { side.device.Grip(Half() ? 1 : 0, Share()); },
        [&] { side.device.Let(); },
        [&] { c.pair.SelectMode(which, static_cast<YokeMode>(Number(0, 4))); },
        [&] { c.pair.Running() && Number(0, 2) == 0 ? c.pair.cmdStop_Click() : c.pair.cmdRun_Click(); },
        [&] { c.SetValue(1, static_cast<float>(Number(0, 2))), c.SetValue(10 + which - 1, Share()); },
        [&] { c.SetValue(12, Share()), c.SetValue(13, Share()); },
        [&] { c.SetValue(14, 1 + 2 * Share()), c.SetValue(2, Half()), c.SetValue(0, Half()); },
        [&] { c.SetValue(3, Number(0, 3) == 0), c.SetValue(7, static_cast<float>(Number(0, 80))); },
        [&] { general.MaximumForce = Percent(); },
        [&] { record.ForceLevel = static_cast<Byte>(Number(1, 100)), general.Friction = Percent(); },
        [&] { record.OptionBits = static_cast<std::int16_t>(Number(0, 31)); },
        [&] { record.RollCentre = static_cast<std::int16_t>(record.RollCentre + Number(-900, 900)); },
    };
    events[Number(0, std::size(events) - 1)]();
    if (Half()) general.GroundForce = Percent(), general.PitchTrimRange = Percent();
    if (Half()) c.model.Yoke1.Effects[static_cast<std::size_t>(Number(0, 11))].Level = Percent();
    if (Half()) general.ForceTable[static_cast<std::size_t>(Number(0, 12))].PitchForce = Percent();
    c.pair.ApplySettings();
  }

  // A yoke that no command reaches any more keeps its forces for its hold time, whatever was wrong before.
  void Cut(int which) { seen_[static_cast<std::size_t>(which - 1)].fineMs.fill(chain_.clock.now); }

  void LookAtFrames() {
    // The greatest force as it was set, or what was set before and is being left at the stated rate.
    budget_ = std::max(chain_.pair.Settings().forces.maximum, budget_ - kLimitSlew * 0.036);
    for (int i = 0; i < 2; ++i) {
      const Chain::Side& side = chain_.Of(i + 1);
      Seen& seen = seen_[static_cast<std::size_t>(i)];
      if (!side.told) continue;
      ASSERT_LE(side.limit - seen.limit, kLargestStep);
      ASSERT_LE(side.Sum(), budget_ + 0.001);
      if (side.limit == 0) seen.zeroMs = chain_.clock.now;
      seen.largest = side.limit == 0 ? 0 : std::max(seen.largest, side.limit);
      const double full = chain_.pair.Settings().forces.maximum;
      if (seen.limit < full * 0.99 && side.limit >= full * 0.99 && full > 0.05) {
        ASSERT_GE(chain_.clock.now - seen.zeroMs, 1000 - YokePair::kIntervalMs) << "from none to all";
      }
      seen.limit = side.limit;
    }
    ASSERT_LE(chain_.largestJump, 0.1 + 1e-6);
  }

  // What has to take the yoke's forces away now, each by itself.
  using Causes = std::array<bool, 8>;
  Causes CausesOf(const Chain::Side& side, int which) {
    // Pieces of answers may make a whole one: its first half, with the place and the status, is a true one.
    using Fault = vc::YokeFault;
    const Fault fault = side.device.Fault();
    return {!chain_.simulatorAlive,
            !chain_.frozen.empty(),
            fault == Fault::Silent || fault == Fault::Garbled || fault == Fault::NoPower,
            side.device.StopButton(),
            !side.plugged,
            !chain_.pair.Running(),
            chain_.pair.Of(which).Mode() == YokeMode::Off,
            std::isnan(chain_.pair.Ports().Variables.Airspeed)};
  }
  std::string Told(const Seen& seen, const Chain::Side& side) {
    std::string words = ", causes for";
    for (const std::int64_t ms : seen.fineMs) words += ' ' + std::to_string(chain_.clock.now - ms);
    return words + " ms, limit " + std::to_string(side.limit);
  }
  void LookAtHands() {
    for (int which : {1, 2}) {
      const Chain::Side& side = chain_.Of(which);
      Seen& seen = seen_[static_cast<std::size_t>(which - 1)];
      // Also on a line that loses bytes: a frame that lost one is dropped, and the next cycle's comes.
      const bool noisy = side.device.Fault() == vc::YokeFault::Noisy;
      if (noisy) seen.noisyMs = chain_.clock.now;
      noisy_ += noisy && side.Most() > 0;
      const double late = chain_.clock.now - seen.noisyMs < 100 ? 0.13 : 0.05;
      ASSERT_LE(side.Most(), budget_ + kLimitSlew * late + 0.001);
      const Causes causes = CausesOf(side, which);
      std::int64_t longest = 0;
      for (std::size_t i = 0; i < causes.size(); ++i) {
        if (!causes[i]) seen.fineMs[i] = chain_.clock.now;
        longest = std::max(longest, chain_.clock.now - seen.fineMs[i]);
      }
      if (longest <= kFreeMs) continue;
      ASSERT_EQ(side.Most(), 0) << "yoke " << which << ": " << chain_.pair.StateText(which) << ", "
                                << vc::FaultText(side.device.Fault()) << Told(seen, side);
      ++free_;
    }
  }

 public:
  int free_ = 0, noisy_ = 0;

 private:
  vc::Chance chance_;
  Chain chain_{2};
  std::array<Seen, 2> seen_{};
  double budget_ = 0.8;
  int frozen_ = Number(10, 14);  // the value that this life can freeze
};

TEST(AtRandom, ForcesRiseSlowlyKeepTheirBudgetAndGoInTime) {
  int free = 0, noisy = 0;
  for (std::uint32_t seed = 1; seed <= 60 && !HasFatalFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Life life(seed * 7919);
    life.Live(60);
    free += life.free_;
    noisy += life.noisy_;
  }
  EXPECT_GT(noisy, 1000) << "forces on lines that lose bytes";
  EXPECT_GT(free, 1000) << "causes lasted long enough to tell";
}

}  // namespace tvx::test::atrandomtest
