// From a simulator's datagram to a moving needle, through the whole program.

#include "drawn/devices/AltimeterDevice.h"
#include "drawn/devices/NeedleDevice.h"
#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

// GaugeIDs of the demonstration.
constexpr int kAirspeedGauge = 10;
constexpr int kAltimeter = 12;

// Where the face must put the airspeed's needle: the Plate's points are 40 kt at 90, 100 kt at 507, 120 kt at
// 636.
bool ShowsAirspeed(Flight& flight) {
  const auto& needle = flight.Instrument<vc::NeedleDevice>(kAirspeedGauge).First();
  const double airspeed = flight.Sim().State().airspeed;
  if (!needle || airspeed < 100 || airspeed > 120) return false;
  return std::abs(*needle - (507 + (airspeed - 100) / 20 * (636 - 507))) < 12;
}

bool ShowsAltitude(Flight& flight) {
  const auto& feet = flight.Instrument<vc::AltimeterDevice>(kAltimeter).Feet();
  return feet && std::abs(*feet - flight.Sim().State().altitude) < 30;
}

TEST(FirstFlight, StartsByItselfAndTheNeedlesFollow) {
  Flight flight;
  flight.Sim().RestartFlight(130);  // in cruise
  flight.TheProgram().Begin();
  ASSERT_TRUE(Eventually([&] { return flight.TheProgram().Run().Running(); }));
  EXPECT_EQ(flight.TheProgram().StartWindow(), nullptr);
  ASSERT_NE(flight.TheProgram().StatusWindow(), nullptr);
  EXPECT_TRUE(flight.TheProgram().StatusWindow()->isVisible());
  EXPECT_TRUE(Eventually([&] { return ShowsAirspeed(flight); }));
  EXPECT_TRUE(Eventually([&] { return ShowsAltitude(flight); }));
  flight.Sim().SetSpeed(20);
  const double before = flight.Sim().State().altitude;
  ASSERT_TRUE(Eventually([&] { return std::fabs(flight.Sim().State().altitude - before) > 200; }));
  flight.Sim().SetPaused(true);
  EXPECT_TRUE(Eventually([&] { return ShowsAltitude(flight); }));
  EXPECT_TRUE(flight.boxes.shown.empty()) << flight.boxes.shown[0];
  EXPECT_EQ(flight.TheCockpit().Gauges().Decoder().Garbage(), 0u) << "every byte on the bus is understood";
}

// Every kind of instrument, both IO modules, the engine cluster and the yokes: what works is no trouble.
TEST(FirstFlight, NothingOfTheCockpitIsInTrouble) {
  Cruise flight;
  flight.TheProgram().StatusWindow()->findChild<QPushButton*>("cmdCockpit")->click();
  const CockpitForm* form = flight.TheProgram().Watch().Cockpit();
  ASSERT_NE(form, nullptr);
  const auto* count = form->findChild<QLabel*>("LabelCount");
  const auto* list = form->findChild<QTreeWidget*>("ListCockpit");
  EXPECT_TRUE(Eventually([&] { return count->text().endsWith("none in trouble"); }))
      << count->text().toStdString() << ", the first: " << list->topLevelItem(0)->text(0).toStdString()
      << ", " << list->topLevelItem(0)->text(4).toStdString();
  EXPECT_GT(list->topLevelItemCount(), 100);
}

// Out from the beginning, and pulled out in flight.
TEST(FirstFlight, AnAdapterThatIsOutIsSaidAndComesBackByItself) {
  Flight flight([](ConfigModel& model) { model.General.ComPortGS = 9; });
  auto& adapter = flight.TheCockpit().GaugeLine();
  adapter.Unplug();
  QFile::remove("comports/com9");
  flight.Sim().RestartFlight(130);
  flight.Run();
  const StatusPresenter& run = flight.TheProgram().Run();
  for (const int time : {90, 130}) {
    adapter.Unplug();
    ASSERT_TRUE(Eventually([&] { return run.View().GaugeBus.Trouble; }));
    EXPECT_TRUE(run.Running());
    flight.Sim().RestartFlight(time);
    ASSERT_TRUE(adapter.Plug());
    EXPECT_TRUE(Eventually([&] { return ShowsAltitude(flight) && !run.View().GaugeBus.Trouble; }));
  }
  EXPECT_TRUE(flight.boxes.shown.empty());
}

TEST(FirstFlight, ASimulatorThatVanishesAndReturnsIsFoundAgain) {
  Cruise flight;
  ASSERT_TRUE(Eventually([&] { return ShowsAltitude(flight); }));
  flight.TheCockpit().Simulation().Stop();
  const StatusView& view = flight.TheProgram().Run().View();
  ASSERT_TRUE(Eventually([&] { return view.Simulator.Trouble; }));
  EXPECT_TRUE(Holds(view.Simulator.Text, "silent"));
  ASSERT_TRUE(flight.TheCockpit().Simulation().Return());
  flight.Sim().RestartFlight(200);
  EXPECT_TRUE(Eventually([&] { return ShowsAltitude(flight) && !view.Simulator.Trouble; }));
}

TEST(FirstFlight, DuskLightsTheFaces) {
  Flight flight;
  flight.Sim().RestartFlight(60);
  flight.Run();
  auto& gauge = flight.Instrument<vc::NeedleDevice>(kAirspeedGauge);
  ASSERT_TRUE(Eventually([&] { return gauge.First().has_value(); }));
  const char* const rheostat = "sim/cockpit2/switches/instrument_brightness_ratio[0]";
  flight.SetDataref(rheostat, 0);
  ASSERT_TRUE(Eventually([&] { return gauge.Light().told && !gauge.Light().lit; }));
  flight.SetDataref(rheostat, 1);
  EXPECT_TRUE(Eventually([&] { return gauge.Light().lit && gauge.Light().brightness == 15; }));
}

}  // namespace
}  // namespace tvx::e2e
