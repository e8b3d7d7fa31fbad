// The simulator link against a stand-in that reads, forgets and loses as a simulator does: everything that is
// wanted arrives, and arrives again, in time. Times are counted in the simulator's frames, 30 a second, so
// that a busy computer changes nothing.

#include <iostream>

#include "platform/linux/LinuxClock.h"
#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

constexpr int kFrameMs = 33;
constexpr int kFirstGauge = 100;
// Datarefs that every aircraft of the stand-in has.
const char* const kDatarefs[] = {"sim/cockpit2/gauges/indicators/airspeed_kts_pilot",
                                 "sim/cockpit2/gauges/indicators/altitude_ft_pilot",
                                 "sim/cockpit2/engine/indicators/engine_speed_rpm[0]"};
constexpr int kFunctions0 = 200;  // their Functions begin here

// Gauges beside those of the demonstration, each with two datarefs, until so many subscriptions are made.
void AddGauges(ConfigModel& model, int gauges) {
  for (std::size_t i = 0; i < std::size(kDatarefs); ++i) {
    FunctionRecord& function = model.Functions[kFunctions0 + i];
    function = {};
    function.ShortName = "Extra";
    function.FunctionNr = static_cast<std::int16_t>(kFunctions0 + i);
    function.ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    function.FullName = "#1:" + std::string(kDatarefs[i]) + "\r\n";
    function.XPVal1 = 20;
    function.Multiplier = function.Devider = 1;
  }
  for (int i = 0; i < gauges; ++i) {
    GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(kFirstGauge + i)];
    gauge = model.Gauges[22];  // with two needles
    gauge.GaugeFunction1 = static_cast<std::int16_t>(kFunctions0 + i % 3);
    gauge.GaugeFunction2 = static_cast<std::int16_t>(kFunctions0 + (i + 1) % 3);
  }
}

struct Variant {
  const char* name;
  int gauges;           // beside the demonstration's
  std::size_t atLeast;  // subscriptions
  double lostPerCent;
  bool dataOutputStays;     // groups go on by themselves after a restart
  int completeMs, againMs;  // the longest, after Run and after the simulator's return
};

struct SimulatorLink : testing::Test {
  void Fly(const Variant& v) {
    vc::Traits traits = vc::Traits::Default();
    traits.simulator.frameMs = kFrameMs;
    traits.simulator.network.lost = v.lostPerCent;
    traits.simulator.keepsGroups = v.dataOutputStays;
    flight.reset();  // its folder first
    flight = std::make_unique<Flight>([&](ConfigModel& model) { AddGauges(model, v.gauges); }, traits);
    QObject::connect(&Service(), &vc::SimulatorService::Ticked, [this] {
      ++frames;
      const std::uint64_t received = flight->Sim().Counters().received;
      mostInAFrame = std::max(mostInAFrame, received - receivedBefore);
      receivedBefore = received;
    });
    flight->Start();
    flight->TheProgram().Run().cmdRun_Click();
  }
  vc::SimulatorService& Service() { return flight->TheCockpit().Simulation(); }
  SimCom& Link() { return flight->TheProgram().Sim(); }
  // Milliseconds of the simulator until all have come since now; what is missing then, is said.
  int MsToComplete() {
    const std::int64_t since = clock.MonotonicMs();
    const int before = frames;
    EXPECT_TRUE(Eventually([&] { return flight->Missing(since) == 0; }, std::chrono::seconds(60)))
        << flight->Missing(since) << " of " << Link().Rrefs().size();
    return (frames - before) * kFrameMs;
  }

  LinuxClock clock;
  std::unique_ptr<Flight> flight;
  int frames = 0;
  std::uint64_t receivedBefore = 0, mostInAFrame = 0;
};

TEST_F(SimulatorLink, IsCompleteAfterRunAndAfterARestart) {
  for (const Variant& v : {Variant{"three hundred", 92, 300, 0, false, 3000, 5000},
                           {"data output stays", 37, 190, 0, true, 3000, 5000},
                           {"losses", 37, 190, 3, false, 10000, 10000}}) {
    SCOPED_TRACE(v.name);
    mostInAFrame = receivedBefore = 0;
    Fly(v);
    const int complete = MsToComplete();
    EXPECT_LE(complete, v.completeMs);
    EXPECT_GE(Link().Rrefs().size(), v.atLeast);
    EXPECT_LE(Link().Rrefs().size(), v.atLeast + 3);
    Service().Stop();
    const StatusView& view = flight->TheProgram().Run().View();
    ASSERT_TRUE(Eventually([&] { return view.Simulator.Trouble; }));
    ASSERT_TRUE(Service().Return());
    const int again = MsToComplete();
    EXPECT_LE(again, v.againMs);
    std::cout << v.name << ": " << Link().Rrefs().size() << " subscriptions, complete after " << complete
              << " ms, after a restart " << again << " ms, at most " << mostInAFrame
              << " datagrams a frame\n";
  }
}

TEST_F(SimulatorLink, DatarefsThatComeLateAndThoseOfAnotherAircraftArrive) {
  Fly({"", 37, 190, 0, false, 0, 0});
  // While it loads, most names do not exist yet.
  flight->Sim().ChangeAircraft(Texts{kDatarefs[0], kDatarefs[2]});
  const std::int64_t begin = clock.MonotonicMs();
  ASSERT_TRUE(Eventually([&] { return flight->Missing(begin) == 0; }));
  flight->Sim().ChangeAircraft(Texts{});
  EXPECT_GT(flight->Missing(begin), 30u);
  EXPECT_LE(MsToComplete(), 9000) << "asked for less and less often, woken by the first that answers";

  // Another aircraft: a pause, and names vanish that come back with the next one.
  Service().ChangeAircraft(30, 1500);
  ASSERT_TRUE(Eventually([&] { return !Service().Loading(); }));
  EXPECT_LE(MsToComplete(), 5000);
  const std::size_t before = flight->Sim().Subscriptions();
  flight->Sim().ChangeAircraft(Texts{});
  EXPECT_LE(MsToComplete(), 15000);
  EXPECT_GT(flight->Sim().Subscriptions(), before);
}

}  // namespace
}  // namespace tvx::e2e
