// What a tick sends to each instrument.
#include "instruments/kinds/Registry.h"
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx::instrumenttickstest {

// What the dialog of an instrument offers for trying must reach every value that a tick sends.
void ExpectTriable(int type, const std::string& sent) {
  std::istringstream words(sent);
  for (std::string word; words >> word;) {
    const int command = std::stoi(word), value = std::stoi(word.substr(word.find(':') + 1));
    const bool flags = command == 11 && (type == 2 || type == 113);
    if (flags || (command == 12 && type == 112)) continue;
    bool found = false;
    for (const TrialField& trial : InstrumentOf(type)->Describe(type).trials)
      found = found || (trial.command == command && trial.lowest <= value && value <= trial.highest);
    EXPECT_TRUE(found) << word;
  }
}

TEST(InstrumentTicks, SendEveryValueWhereTheFaceIsNotKnownAndThenOnlyChanges) {
  const struct {
    const char* what;
    int type, options, function1, function2;
    const char *values, *sent;
  } cases[] = {
      {"needle", 1, 0, 51, 0, "51=50", "5:539"},
      {"needle, at its end", 4, 0, 51, 0, "51=100", "5:1079"},
      {"needle and digits", 2, 0, 51, 52, "51=99.96 52=70", "5:1078 6:1000 11:160"},
      {"digits without a decimal", 2, 0, 51, 0, "51=1000", "5:1079 6:10000 11:11"},
      {"digits, more than five", 2, 0, 51, 0, "51=1e30", "5:1079 6:65535 11:11"},
      {"digits, far below", 2, 0, 51, 0, "51=-1e30", "5:0 6:-65535 11:160"},
      {"two needles", 3, 0, 51, 52, "51=25 52=75", "5:269 6:809"},
      {"the second needle alone", 5, 0, 0, 52, "52=75", "6:809"},
      {"altimeter", 101, 0, 0, 52, "2=31234.6 8=29.92", "4:31235 12:1013"},
      {"altimeter without pressure", 101, 0, 0, 0, "2=-1999.6 8=29.92", "4:-2000"},
      {"attitude indicator", 103, 0, 0, 0, "5=-4.52 4=30.04", "4:-45 5:300"},
      {"attitude indicator, at its ends", 103, 0, 0, 0, "5=-90 4=180", "4:-900 5:1800"},
      {"heading indicator and its bug", 105, 0, 51, 0, "3=90 51=-90", "5:1080 6:3240"},
      {"heading indicator without a bug", 105, 0, 0, 0, "3=359.9 51=45", "5:4319"},
      {"heading just below a full turn", 105, 0, 0, 0, "3=359.99", "5:0"},
      {"VOR", 106, 0, 0, 0, "33=50 34=63.5 35=2 36=1", "5:590 6:623 11:258"},
      {"VOR needles at their stops", 106, 0, 0, 0, "33=300 34=-300", "5:944 6:0 11:0"},
      {"second VOR receiver", 107, 0, 0, 0, "33=9 33/2=-127 34/2=200 36/2=1", "5:172 6:944 11:256"},
      {"ADF indicator", 108, 0, 0, 0, "31=-90 32=10", "5:3240 6:120"},
      {"COM radio", 110, 0, 51, 52, "51=11850 52=13697.4", "4:18500 5:36970"},
      {"a radio is not told a frequency of none", 111, 0, 51, 52, "51=0.2 52=10000", ""},
      {"ADF radio", 121, 0, 51, 52, "51=350 52=1799.9", "4:3500 5:17999"},
      {"a radio made an ADF", 110, 2, 51, 0, "51=350", "4:3500"},
      {"transponder", 114, 1, 0, 0, "26=7777 47=4", "4:7777 6:4"},
      {"transponder without mode", 114, 0, 0, 0, "26=1200 47=4", "4:1200"},
      {"second transponder", 112, 8, 0, 0, "26=7000 26/2=1200", "4:7000 12:1200"},
      {"King transponder", 122, 0, 0, 0, "26=1200 47=2", "4:1200 6:2"},
      {"DME", 113, 0, 0, 0, "27=12.34 28=118 29=6 30=11230 27/4=3", "4:123 5:118 6:6 12:12300 11:49"},
      {"DME out of range", 113, 0, 0, 0, "30=10000 27/4=99", "4:0 5:0 6:0 11:240"},
      {"COM/NAV radio keeps its own", 120, 4, 0, 0, "20=11850 22=12190", ""},
      {"autopilot", 124, 0, 1, 22, "91=2 93=1 99=1 107=65535 109=-9900 111=-100",
       "4:19 5:65535 6:-9900 12:-16000"},
      {"autopilot, NAV and ALT", 124, 0, 1, 22, "91=1 93=2 101=1 111=120", "4:40 5:0 6:0 12:16000"},
      {"autopilot, NAV by its own value", 124, 0, 1, 22, "97=1 109=9900 111=-50", "4:8 5:0 6:9900 12:-8000"},
      {"outer and inner marker", 125, 0, 0, 0, "38=1 38/3=1", "4:5"},
      {"markers at the edge", 125, 0, 0, 0, "38=0.49 38/2=0.5", "4:2"},
      {"RMI, both VORs", 130, 4, 0, 0, "3=180 143=90 143/2=350 144=45 27=7.7", "4:2160 5:1080 6:4200 12:77"},
      {"RMI, both ADFs", 130, 1 | 2 | 8, 0, 0, "144=45 144/2=270", "4:0 5:540 6:3240 12:0"},
      {"RMI, one ADF for both", 130, 1 | 2, 0, 0, "3=359.9 144=359.9", "4:4319 5:4319 6:4319 12:0"},
      {"RMI, told that there is no bearing", 130, 4, 0, 0, "143=-1 143/2=5", "4:0 5:5000 6:60 12:0"},
      {"RMI, no bearing came yet", 130, 2, 0, 0, "144=0", "4:0 5:5000 6:0 12:0"},
      {"RMI, a full turn and no bearing", 130, 4, 0, 0, "143=360 143/2=360.1", "4:0 5:0 6:5000 12:0"},
      {"trim wheel", 140, 0, 0, 0, "281=-0.5 280=1", "5:2500 11:1"},
      {"trim wheel, at its ends", 140, 0, 0, 0, "281=5 280=0.49", "5:10000 11:0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    InstrumentRig rig;
    rig.model.Functions[27].FunctionSetting = 1;
    GaugeRecord& gauge = rig.AddGauge(12, c.type);
    gauge.GaugeSetting3 = gauge.GaugeSetting4 = static_cast<Byte>(rig.AddPlate(0, 100, 1079));
    rig.StartWith(c.type, c.options, c.function1, c.function2);
    EXPECT_EQ(rig.TickText(), "") << "the same as in the first tick";
    rig.SetAll(c.values);
    rig.cycle.GaugeWithID(12)->Driver->Forget();
    EXPECT_EQ(rig.TickText(), c.sent);
    EXPECT_EQ(rig.TickText(), "") << "again";
    ExpectTriable(c.type, c.sent);
  }
}

TEST(InstrumentTicks, ATrimWithoutARangeMovesNoWheel) {
  InstrumentRig rig;
  rig.model.Functions[281].boxMaximumValue = rig.model.Functions[281].boxMinimumValue;
  rig.StartWith(140);
  rig.Play("values 281=5 280=1; tick = 11:1");
}

TEST(InstrumentTicks, AClusterHousingIsSentItsPairEveryTick) {
  const char* pairs[] = {"4:755 5:863", "4:107 5:215", "4:323 5:431", "4:539 5:647"};
  for (int mode = 0; mode < 4; ++mode) {
    InstrumentRig rig;
    GaugeRecord& gauge = rig.AddGauge(12, 8);
    gauge.GaugeSetting3 = gauge.GaugeSetting4 = static_cast<Byte>(rig.AddPlate(0, 100, 1079));
    rig.StartWith(8, mode, 51);
    rig.SetAll("51=10 52=20 53=30 54=40 55=50 56=60 57=70 58=80");
    for (int tick = 0; tick < 2; ++tick) EXPECT_EQ(rig.TickText(), pairs[mode]) << mode;
    ExpectTriable(8, pairs[mode]);
  }
}

TEST(InstrumentTicks, ANeedleParksWhenItsValueIsOldWhereThatIsWanted) {
  const std::tuple<int, const char*, const char*, const char*> rows[] = {
      {1, "51=60", "5:0", "5:500"},
      {106, "33=60 34=60 35=1 36=1", "5:472 6:472 11:0", "5:614 6:614 11:257"},
      {108, "31=60", "5:1080", "5:720"},
      {130, "143=60", "5:5000 6:5000", "5:720 6:720"}};
  for (const auto& [type, value, parked, again] : rows) {
    for (const bool parks : {false, true}) {
      SCOPED_TRACE(std::string(value) + (parks ? " parks" : ""));
      InstrumentRig rig;
      rig.AddPlate(20, 100, 1000);
      rig.StartWith(type, parks ? 0x40 : 0, 51);
      rig.SetAll(value);
      EXPECT_TRUE(Holds(rig.TickText(), again));
      rig.clock.Advance(4000);
      EXPECT_EQ(rig.TickText(), "");
      rig.clock.Advance(1500);
      EXPECT_EQ(rig.TickText(), parks ? parked : "");
      rig.SetAll(value);
      EXPECT_EQ(rig.TickText(), parks ? again : "");
    }
  }
}

TEST(InstrumentTicks, PolledTypesAreAskedAndTheOthersAreNot) {
  for (int type = 1; type < 256; ++type) {
    InstrumentRig rig;
    rig.StartWith(type, 0x7F, 51, 52);
    rig.Set(2, 4290);
    Commands polls;
    for (int i = 0; i < 4; ++i) {
      for (const SentCommand& c : rig.Tick()) {
        if (c.command == 7 || (type == 122 && c.command == 5)) polls.push_back(c);
      }
    }
    const bool polled =
        type == 101 || (type >= 104 && type <= 114) || (type >= 120 && type <= 125) || type == 140;
    const SentCommand poll = type == 122 ? SentCommand{12, 5, 42} : SentCommand{12, 7, 0};
    EXPECT_EQ(polls.empty(), !polled) << type;
    for (const SentCommand& sent : polls) EXPECT_EQ(sent, poll) << type;
    if (InstrumentOf(type) != nullptr) {
      EXPECT_EQ(InstrumentOf(type)->Describe(type).readings.empty(), !polled)
          << "what it is asked for " << type;
    }
  }
}

TEST(InstrumentTicks, ClocksFollowTheSimulatorsTimeAndTheComputersDate) {
  InstrumentRig rig;
  rig.model.Functions[13].FullName = "outside temperature";
  rig.StartWith(109);
  // Functions 10 and 13 select the groups; the rig's groups 1 and 6 carry the time and the temperature.
  rig.Define(1);
  rig.model.Functions[1].XPVal1 = 5;  // UTC hours
  rig.model.Functions[2].XPindex1 = 1;
  rig.model.Functions[2].XPVal1 = 6;  // local hours
  rig.model.Functions[6].XPVal1 = 1;
  rig.SetAll("1=20 2=13.5 6=-7.25");
  EXPECT_EQ(rig.TickText(), "11:1 4:-6465 5:48600 13:-72");
  rig.Set(1, 20.001f);  // 3.6 s later: no jump
  EXPECT_EQ(rig.TickText(), "4:-6468");
  rig.Set(1, 21.0f);
  EXPECT_EQ(rig.TickText(), "11:1 4:-10065");
  rig.cycle.GaugeWithID(12)->Driver->Forget();
  EXPECT_EQ(rig.TickText().substr(0, 18), "4:-10065 5:48600 6") << "and the date";
}

TEST(InstrumentTicks, ClocksTakeTimeAndTemperatureFromDatarefsToo) {
  InstrumentRig rig;
  FunctionRecord& time = rig.model.Functions[10];
  time = {.ShortName = "Time", .FullName = "#1:a/utc\r\n#2:a/local\r\n"};
  FunctionRecord& temperature = rig.model.Functions[13];
  temperature = {.ShortName = "Temperature", .FullName = "#1:a/temperature\r\n"};
  for (FunctionRecord* function : {&time, &temperature}) {
    function->ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    function->XPVal1 = function->XPVal2 = 2;
    function->Multiplier = function->Devider = 1;
  }
  time.Devider = 3600;  // seconds there, hours here
  rig.StartWith(109);
  const auto send = [&rig](int function, int sequenceNr, float value) {
    for (int port = 0; port < rig.sim.PortCount(); ++port) {
      const PortRow& row = rig.sim.PortAt(port);
      if (row.FunctionNr == function && row.SeqNr == sequenceNr)
        rig.socket.Deliver(RrefDatagram({{port, value}}));
    }
  };
  rig.TickText();
  send(10, 1, 72000);
  send(10, 2, 48600);
  send(13, 1, -7.25f);
  EXPECT_EQ(rig.TickText(), "11:1 4:-6465 5:48600 13:-72");
}

TEST(InstrumentTicks, DmeShowsTheReceiverThatItsOwnSelectorChose) {
  InstrumentRig rig;
  rig.StartWith(113, 1);
  rig.Play(
      "values 27=10 27/2=20 28=100 28/2=200 29=1 29/2=2; tick = 4:100 5:100 6:1 11:1; "
      "reply SD 17:04 =; tick = 4:200 5:200 6:2; reply SD 17:03 =; (no position of the selector); "
      "tick =; reply SD 17:02 =; tick = 4:100 5:100 6:1");
}

// What the simulator sends in the second after a knob was turned is older than the hand. What the hand has
// set itself is not sent to it.
TEST(InstrumentTicks, ATurnedKnobIsLeftAloneForASecondAndTheRestIsNot) {
  const struct {
    int type, options, function1, function2;
    const char *reply, *values, *atOnce, *later;
  } cases[] = {
      {101, 0, 0, 52, "PP 7:03F5", "2=5000 8=30.5", "4:5000", "12:1033"},
      {101, 0, 0, 52, "PP 10:01 12:81", "2=5000 8=30.5", "4:5000", "12:1033"},
      {105, 1, 51, 0, "10:0438", "3=90 51=45", "5:1080", "6:540"},
      {108, 0, 0, 0, "CA 7:021E", "31=10 32=20", "5:120", "6:240"},
      {110, 0, 51, 0, "AS 7:493E", "51=11850", "", "4:18500"},
      {114, 1, 0, 0, "XY 15:01 7:1200", "26=7000 47=1", "", "4:7000 6:1"},
      {122, 0, 0, 0, "XF 7:1200", "26=7000 47=1", "", "4:7000 6:1"},
      {124, 0, 1, 17, "AV 10:1388 12:01", "91=2 107=5000 109=-700 111=-50", "4:1 12:-8000", "6:-700"},
      {124, 0, 1, 17, "AV 13:FD44 15:01", "91=2 107=5000 109=-700 111=-50", "4:1 12:-8000", "5:5000"},
      {140, 0, 0, 0, "PT 7:1D4C 13:01", "281=-0.5 280=1", "11:1", "5:2500"},
  };
  for (const auto& c : cases) {
    InstrumentRig rig;
    rig.model.General.TransferInterval = 250;
    rig.StartWith(c.type, c.options, c.function1, c.function2);
    EXPECT_NE(rig.Reply(c.type, c.reply), "") << c.type;
    EXPECT_FALSE(rig.Driver().Hold().Over(rig.cycle.TickNumber())) << c.type;
    rig.SetAll(c.values);
    EXPECT_EQ(rig.TickText(), c.atOnce) << c.type;
    for (int tick = 2; tick < 4; ++tick) EXPECT_EQ(rig.TickText(), "") << c.type << ", tick " << tick;
    EXPECT_EQ(rig.TickText(), c.later) << c.type;
  }
}

}  // namespace tvx::instrumenttickstest
