#include "tests/Test.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/sim/BadNetwork.h"
#include "virtualcockpit/sim/Simulator.h"

namespace tvx::vc {
namespace {

using test::operator+;

constexpr Peer kOne{0x7F000001, 49003};
constexpr Peer kOther{0x7F000001, 49004};
constexpr std::string_view kRpm = "sim/cockpit2/engine/indicators/engine_speed_rpm[0]";
constexpr std::string_view kBarometer = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot";

struct SimulatorTest : testing::Test {
  SimulatorTest()
      : sim_([this](ByteView datagram, const Peer& to) {
          sent_.emplace_back(datagram.begin(), datagram.end());
          to_.push_back(to);
        }) {}
  void From(const Peer& peer, const Bytes& datagram) { sim_.OnDatagram(datagram, peer); }
  void Tick(int count = 1) {
    for (int i = 0; i < count; ++i) sim_.Tick(now_ += Simulator::kTickMilliseconds);
  }
  double Value(std::string_view name) { return sim_.Datarefs().ValueOf(name).value_or(-12345); }

  std::vector<Bytes> sent_;
  std::vector<Peer> to_;
  std::int64_t now_ = 5000;
  Simulator sim_;
};

TEST_F(SimulatorTest, RatesAreKept) {
  const std::pair<int, std::size_t> repliesInTwoSeconds[] = {{1, 2},   {3, 6},           {10, 20}, {20, 40},
                                                             {99, 40}, {2147483647, 40}, {0, 0},   {-5, 0}};
  for (const auto& [frequency, replies] : repliesInTwoSeconds) {
    sim_.Restart();
    sent_.clear();
    From(kOne, test::SubscribeTo(kRpm, frequency, 7));
    Tick();
    EXPECT_EQ(sent_.empty(), replies == 0) << "the first value comes at once, " << frequency;
    Tick(39);
    EXPECT_EQ(sent_.size(), replies) << frequency;
  }
}

// Data groups go where the simulator's screen says; a request may set that, and only a whole one does.
TEST_F(SimulatorTest, DataGroupsGoToTheirTargetOnly) {
  DataOutput output{.toWhoeverSelects = false, .enabled = true, .target = std::nullopt};
  sim_.SetOutput(output);
  From(kOther, test::Ascii("DSEL0") + test::Little(3) + test::Little(17));
  Tick(3);
  EXPECT_TRUE(sent_.empty()) << "no target is set";
  const auto set = [](std::string_view address, std::string_view port, int enable) {
    return test::Ascii("ISE4") + Bytes{0} + test::Little(64) + test::Padded(test::Ascii(address), 16) +
           test::Padded(test::Ascii(port), 8) + test::Little(enable);
  };
  for (const Bytes& wrong : {set("127.0.0", "49003", 1), set("127.0.0.256", "49003", 1),
                             set("127.0.0.1", "0", 1), set("127.0.0.1", "x", 1)}) {
    From(kOther, wrong);
    EXPECT_EQ(sim_.Output(), output);
  }
  From(kOther, set("127.0.0.1", "49003", 1));
  Tick(3);
  EXPECT_EQ(to_, (std::vector<Peer>{kOne, kOne, kOne})) << "not to the one who selected";
  From(kOther, test::WriteDataref("sim/network/dataout/network_data_rate", 2));
  to_.clear();
  Tick(41);
  EXPECT_NEAR(static_cast<double>(to_.size()), 4, 1);
  From(kOther, test::WriteDataref("sim/network/dataout/data_to_internet[3]", 0));
  From(kOther, test::WriteDataref("sim/network/dataout/data_to_internet[20]", 1));
  EXPECT_EQ(sim_.SelectedGroups(), (std::set<int>{17, 20}));
  From(kOther, set("127.0.0.1", "49003", 0));
  to_.clear();
  Tick(41);
  EXPECT_TRUE(to_.empty());
}

TEST_F(SimulatorTest, ARestartForgetsAndAnotherAircraftLacksNames) {
  From(kOne, test::SubscribeTo(kRpm, 20, 1));
  From(kOne, test::SubscribeTo(kBarometer, 20, 2));
  From(kOne, test::WriteDataref(kBarometer, 28.5f));
  From(kOne, test::Ascii("DSEL0") + test::Little(3));
  sim_.ChangeAircraft(Texts{std::string(kRpm)});
  EXPECT_EQ(sim_.Subscriptions(), 1u);
  From(kOne, test::SubscribeTo(kRpm, 20, 1));
  EXPECT_EQ(sim_.Subscriptions(), 1u) << "it never answers";
  sim_.ChangeAircraft({});
  From(kOne, test::SubscribeTo(kRpm, 20, 1));
  EXPECT_EQ(sim_.Subscriptions(), 2u);
  sim_.Restart(false, false);
  EXPECT_EQ(sim_.Subscriptions(), 0u);
  EXPECT_EQ(sim_.SelectedGroups().size(), 1u);
  EXPECT_FLOAT_EQ(static_cast<float>(Value(kBarometer)), 28.5f);
  sim_.Restart(true, true);
  EXPECT_TRUE(sim_.SelectedGroups().empty());
  EXPECT_FLOAT_EQ(static_cast<float>(Value(kBarometer)), 29.92f);
}

// Each trouble hits about the share that is set, a seed repeats it, and nothing else happens.
TEST(BadNetwork, DoesWhatItIsToldAndRepeatsIt) {
  using Result = std::vector<std::pair<int, std::int64_t>>;  // the number of each datagram, and its delay
  const auto run = [](const NetworkTraits& traits, std::uint32_t seed) {
    Result result;
    std::int64_t now = 0;
    BadNetwork network([&](ByteView bytes, const Peer&) {
      const int number = bytes[0] * 256 + bytes[1];
      result.emplace_back(number, now - number * 10);
    });
    network.SetTraits(traits, seed);
    for (int i = 0; i < 2000; ++i, now += 10) {
      network.Pass(Bytes{static_cast<Byte>(i >> 8), static_cast<Byte>(i & 255)}, kOne, now);
      network.Advance(now);
    }
    network.Advance(now + 1000);
    return result;
  };
  EXPECT_NEAR(static_cast<double>(run({.lost = 3}, 1).size()), 1940, 25);
  EXPECT_NEAR(static_cast<double>(run({.doubled = 10}, 1).size()), 2200, 50);
  const Result swapped = run({.reordered = 10}, 1), delayed = run({.delayed = 10}, 1);
  EXPECT_EQ(std::pair(swapped.size(), delayed.size()), (std::pair<std::size_t, std::size_t>(2000, 2000)));
  int earlier = 0;
  for (std::size_t i = 1; i < swapped.size(); ++i) earlier += swapped[i].first < swapped[i - 1].first;
  EXPECT_NEAR(earlier, 190, 50);
  EXPECT_NEAR(
      static_cast<double>(std::ranges::count_if(delayed, [](const auto& d) { return d.second >= 20; })), 200,
      50);
  EXPECT_EQ(run({.lost = 20}, 5), run({.lost = 20}, 5));
  EXPECT_NE(run({.lost = 20}, 5), run({.lost = 20}, 6));
}

TEST(Datagrams, TheBeaconByteByByte) {
  EXPECT_EQ(BuildBeacon(121100, 49000, "ab"),
            test::Ascii("BECN") + (Bytes{0, 1, 2} + test::Little(1) + test::Little(121100) + test::Little(1) +
                                   Bytes{0x68, 0xBF, 'a', 'b', 0, 0x72, 0xBF}));
}

TEST_F(SimulatorTest, DatarefWritesStayUnlessTheFlightDecides) {
  From(kOne, test::WriteDataref(kBarometer, 30.10f));
  Tick(5);
  EXPECT_FLOAT_EQ(static_cast<float>(Value(kBarometer)), 30.10f);
  EXPECT_FLOAT_EQ(static_cast<float>(Value("sim/cockpit/misc/barometer_setting")), 30.10f)
      << "its older name";
  From(kOne, test::WriteDataref(kRpm, 9999));
  EXPECT_EQ(sim_.Counters().refused, 1u);
  Tick();
  EXPECT_LT(Value(kRpm), 3000);
}

TEST_F(SimulatorTest, GroupWritesOfBothForms) {
  From(kOne, test::WriteSingle(7, 0, 29.80f));
  EXPECT_FLOAT_EQ(static_cast<float>(Value(kBarometer)), 29.80f);
  EXPECT_FALSE(sim_.LastGroupWrite()->integer);
  From(kOne, test::WriteInteger(96, 1, 12345));
  EXPECT_EQ(Value("sim/cockpit/radios/com1_stdby_freq_hz"), 12345);
  EXPECT_EQ(Value("sim/cockpit/radios/com1_freq_hz"), 11850) << "the other values are left alone";
  EXPECT_TRUE(sim_.LastGroupWrite()->integer);
  From(kOne, test::WriteInteger(120, 2, -40));
  EXPECT_EQ(sim_.Groups().Values(120)[2], -40.0f) << "a value that nothing feeds stays as it was written";
  EXPECT_EQ(sim_.Counters().groupWrites, 3u);
  From(kOne, test::WriteSingle(200, 0, 1));
  From(kOne, test::WriteSingle(3, 0, 500));
  EXPECT_EQ(sim_.Counters().refused, 2u);
}

TEST_F(SimulatorTest, HostileDatagramsAreCountedAndNothingElse) {
  const std::vector<Bytes> unknown = {
      {},
      test::Ascii("DSEL0") + Bytes{1, 0, 0},
      test::Ascii("RREF") + Bytes{0, 1, 0, 0, 0},
      test::Padded(test::SubscribeTo(kRpm, 20, 1), 414),
      test::Padded(test::WriteDataref(kRpm, 1), 508),
      test::Ascii("DATA0"),
      test::Padded(test::WriteSingle(3, 0, 1), 42),
      test::Padded(test::Ascii("CMND"), 500),
      test::Padded(test::Ascii("BECN"), 60000, 0xFF),
  };
  for (const Bytes& datagram : unknown) From(kOne, datagram);
  EXPECT_EQ(sim_.Counters().unknown, unknown.size());
  // Known in form, impossible in content.
  From(kOne, test::Padded(test::Ascii("RREF") + Bytes{0} + test::Little(20) + test::Little(1), 413, 'x'));
  From(kOne, test::SubscribeTo("sim/cockpit2/engine/indicators/engine_speed_rpm[99999999999]", 20, 1));
  From(kOne, test::SubscribeTo("[0]", 20, 1));
  From(kOne, test::WriteDataref(kBarometer, std::bit_cast<float>(0x7FC00000)));
  EXPECT_EQ(sim_.Counters().refused, 4u);
  for (int i = 0; i < 6000; ++i) From(kOne, test::SubscribeTo(kRpm, 1, i));
  EXPECT_EQ(sim_.Subscriptions(), Simulator::kMostSubscriptions);
  std::uint32_t seed = 99;
  for (int i = 0; i < 5000; ++i) {
    Bytes noise = test::Ascii(
        std::array{"DSEL0", "RREF0", "DATA0", "DREF0", "CMND0", "CHAR0"}[static_cast<std::size_t>(i % 6)]);
    const std::size_t size = i % 4 == 0 ? 413 : i % 4 == 1 ? 509 : 41;
    while (noise.size() < size)
      noise.push_back(static_cast<Byte>((seed = seed * 1664525u + 1013904223u) >> 24));
    From(kOther, noise);
  }
  Tick();
  EXPECT_FALSE(sim_.Paused() && sent_.empty());
}

}  // namespace
}  // namespace tvx::vc
