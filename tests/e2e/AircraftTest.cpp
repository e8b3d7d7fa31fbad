// Another aircraft is loaded in flight, and the configuration follows it.

#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

TEST(AircraftInFlight, TakesItsConfigurationUpAndLosesNothing) {
  Flight flight;
  ConfigModel other = demo::DemoConfig();
  other.General = flight.Model().General;
  other.General.TransferInterval = 40;
  other.ConfigFileName = "Liner.cfg";
  ASSERT_TRUE(ConfigFile(other, flight.boxes).SaveConfigFile());
  flight.Run();
  Program& program = flight.TheProgram();
  ASSERT_TRUE(
      program.AircraftFollowed().SetList({true, {{"B738", "Liner.cfg"}, {"C172", "Flight.cfg"}}, {}}));
  const auto text = [&](const char* name) {
    return program.StatusWindow()->findChild<QLabel*>(name)->text();
  };
  ASSERT_TRUE(Eventually([&] { return text("LabelAircraft") == "For C172 (trainer.acf)"; }));
  EXPECT_EQ(program.Model().ConfigFileName, "Flight.cfg");
  program.Model().General.TransferInterval = 20;
  program.Model().ConfigChanged = true;

  flight.TheCockpit().Simulation().ChangeAircraft(0, 500);
  ASSERT_TRUE(Eventually([&] { return text("LabelAircraft") == "For B738 (airliner.acf)"; }));
  EXPECT_EQ(text("BoxCurrentConfig"), "Liner.cfg");
  EXPECT_EQ(program.Model().General.TransferInterval, 40);
  EXPECT_TRUE(program.Run().Running());
  EXPECT_TRUE(QFile::exists("Flight.cfg.unsaved")) << "what was not saved is kept";
  EXPECT_TRUE(Eventually([&] { return flight.Missing() == 0; }));
  EXPECT_GT(flight.Sim().Subscriptions(), 100u);
  program.Exit();
  EXPECT_TRUE(Eventually([&] {
    return flight.Sim().Subscriptions() == 0 && flight.Sim().SelectedGroups().empty();
  })) << "the letters are cancelled too";
}

}  // namespace
}  // namespace tvx::e2e
