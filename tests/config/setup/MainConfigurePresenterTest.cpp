#include "config/setup/GaugeList.h"
#include "config/setup/MainConfigurePresenter.h"
#include "tests/Test.h"

namespace tvx::mainconfigurepresentertest {

TEST(GaugeLines, TellEachGaugeInItsColumns) {
  ConfigModel model;
  model.Functions[1].ShortName = "Airspeed indicated";
  model.Gauges[7] = {
      .GaugeType = 1, .GaugeFunction1 = 1, .GaugeInstance1 = 2, .GaugeFunction2 = 301, .GaugeInstance2 = 1};
  model.Gaugetypes[1] = {1, "Small gauge"};
  model.Gaugetypes[40] = {77, "Own kind"};
  model.Gaugetypes[51] = {78, "Beyond the search"};
  model.Gauges[0] = {.GaugeType = 77};
  model.Gauges[3] = {.GaugeType = 10, .GaugeSetting1 = 2, .GaugeSetting2 = 11};
  model.Gauges[255] = {.GaugeType = 78};
  model.GaugeState[3] = GaugeConnection::Connected;
  model.GaugeState[7] = GaugeConnection::NotConnected;
  EXPECT_EQ(GaugeLines(model), (Texts{"000\tOwn kind\tNot Assigned\t\t\t\t00\t00\tUnkown",
                                      "003\tUnknown\tInput/Switches\tOutput/Leds\t\t\t02\t11\tConnected",
                                      "007\tSmall gauge\tAirspeed indic\tError\t2 #\t\t00\t00\tNot Connected",
                                      "255\tUnknown\tNot Assigned\t\t\t\t00\t00\tUnkown"}));
}

TEST(ClearAllGauges, KeepsGauge0AndTheSpareField) {
  ConfigModel model;
  for (GaugeRecord& gauge : model.Gauges) gauge = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  ClearAllGauges(model);
  EXPECT_EQ(model.Gauges[0].GaugeType, 1);
  for (const std::size_t gaugeID : {1u, 255u}) {
    const GaugeRecord& gauge = model.Gauges[gaugeID];
    EXPECT_EQ(gauge.GaugeType + gauge.GaugeFunction1 + gauge.GaugeFunction2 + gauge.GaugeSetting5, 0);
    EXPECT_EQ(gauge.GaugeSetting6, 11);
  }
}

TEST(LightsModes, FindThePairAndNothingElse) {
  ConfigModel model;
  const std::pair<int, int> pairs[] = {{32, 0}, {0, 1}, {0, 2}, {1, 0}, {63, 0}};
  for (std::size_t i = 0; i < 5; ++i) {
    SetLightsMode(model, i);
    EXPECT_EQ((std::pair<int, int>(model.General.LightsSetting1, model.General.LightsSetting2)), pairs[i]);
    EXPECT_EQ(LightsModeIndex(model), i);
  }
  model.General.LightsSetting2 = 9;
  EXPECT_EQ(LightsModeIndex(model), std::nullopt);
}

TEST(UdpFault, NamesTheFirstFieldThatCannotBe) {
  const char *address =
                 "The address is four numbers, each 0 to 255, with points between, or a computer's name.",
             *remote = "The simulator's port is a number from 1 to 65535.",
             *local = "The port on which we listen is a number from 1 to 65535.";
  const std::pair<UdpSettings, const char*> rows[] = {
      {{"255.0.10.255", "1", "65535"}, ""}, {{"1.2.3", "49000", "49001"}, address},
      {{"1.2.3.4.5", "1", "1"}, address},   {{"1.2.3.256", "1", "1"}, address},
      {{"1..3.4", "1", "1"}, address},      {{"sim-pc", "", ""}, remote},
      {{"sim pc", "1", "1"}, address},      {{"1.2.3.4", "0", "49001"}, remote},
      {{"1.2.3.4", "65536", ""}, remote},   {{"1.2.3.4", "1", "4900x"}, local},
      {{"1.2.3.4", "1", ""}, local},        {{"1.2.3.4", "49,000", "1"}, remote},
      {{"1.2.3.4", "49 000", "1"}, remote}, {{"1.2.3.4", " 49000 ", "1"}, ""}};
  for (const auto& [settings, fault] : rows) EXPECT_EQ(UdpFault(settings), fault) << settings.remoteIP;
  ConfigModel model;
  SetUdp(model, {"1.2.3.4", " 49000 ", "49003"});
  EXPECT_EQ(model.General.RemotePort, "49000") << "without what was typed around it";
}

}  // namespace tvx::mainconfigurepresentertest
