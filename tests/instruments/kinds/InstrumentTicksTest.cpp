// What a tick sends to each dedicated instrument.
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx {
namespace {

struct Value {
  int function;
  float value;
  int sequence = 1;
};

TEST(InstrumentTicks, SendWhatChangedAndThenNothing) {
  const struct {
    const char* what;
    int type, options, function1, function2;
    std::vector<Value> values;
    Commands sent;
  } cases[] = {
      {"attitude indicator", 103, 0, 0, 0, {{5, -4.52f}, {4, 30.04f}}, {{12, 4, -45}, {12, 5, 300}}},
      {"heading indicator with its bug", 105, 0, 51, 0, {{3, 90}, {51, -90}}, {{12, 5, 1080}, {12, 6, 3240}}},
      {"VOR2 takes the second receiver",
       107,
       0,
       0,
       0,
       {{33, 50}, {33, 63.5f, 2}, {35, 2, 2}},
       {{12, 5, 623}, {12, 11, 2}}},
      {"ADF indicator", 108, 0, 0, 0, {{31, -90}, {32, 10}}, {{12, 5, 3240}, {12, 6, 120}}},
      {"ADF radio", 121, 0, 51, 52, {{51, 350}, {52, 1799}}, {{12, 4, 3500}, {12, 5, 17990}}},
      {"a radio is not told a frequency of none", 110, 0, 51, 0, {{51, 0.2f}}, {}},
      {"transponder", 114, 1, 0, 0, {{26, 7000}, {47, 3}}, {{12, 4, 7000}, {12, 6, 3}}},
      {"DME",
       113,
       0,
       0,
       0,
       {{27, 12.34f}, {28, 118}, {29, 6}, {30, 11230}},
       {{12, 4, 123}, {12, 5, 118}, {12, 6, 6}, {12, 12, 12300}, {12, 11, 1}}},
      {"COM/NAV radio keeps its own", 120, 4, 0, 0, {{20, 11850}, {22, 12190}}, {}},
      {"autopilot",
       124,
       0,
       1,
       22,
       {{91, 2}, {93, 1}, {99, 1}, {107, 5000}, {109, -700}, {111, -50}},
       {{12, 4, 0x13}, {12, 5, 5000}, {12, 6, -700}, {12, 12, -8000}}},
      {"audio panel's markers", 125, 0, 0, 0, {{38, 1}, {38, 1, 3}}, {{12, 4, 5}}},
      {"RMI, both VORs",
       130,
       4,
       0,
       0,
       {{3, 180}, {143, 90}, {143, -10, 2}, {144, 45}, {27, 7.7f}},
       {{12, 4, 2160}, {12, 5, 1080}, {12, 6, 4200}, {12, 12, 77}}},
      {"RMI, both ADFs", 130, 1 | 2 | 8, 0, 0, {{144, 45}, {144, 270, 2}}, {{12, 5, 540}, {12, 6, 3240}}},
      {"heading just below a full turn", 105, 0, 0, 0, {{3, 359.99f}, {5, 1}}, {}},
      {"second transponder", 112, 8, 0, 0, {{26, 1200, 2}}, {{12, 12, 1200}}},
      {"RMI, no bearing", 130, 0, 0, 0, {{143, 1000}}, {{12, 5, 5000}, {12, 6, 5000}}},
      {"trim wheel", 140, 0, 0, 0, {{281, -0.5f}, {280, 1}}, {{12, 5, 2500}, {12, 11, 1}}},
  };
  for (const auto& c : cases) {
    InstrumentRig rig;
    rig.StartWith(c.type, c.options, c.function1, c.function2);
    for (const Value& v : c.values) rig.Set(v.function, v.value, v.sequence);
    EXPECT_EQ(rig.TickValues(), c.sent) << c.what;
    EXPECT_EQ(rig.TickValues(), Commands{}) << c.what << ", again";
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
  rig.Set(1, 20.0f);
  rig.Set(2, 13.5f);
  rig.Set(6, -7.25f);
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 11, 1}, {12, 4, -6465}, {12, 5, 48600}, {12, 13, -72}}));
  rig.Set(1, 20.001f);  // 3.6 s later: no jump
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 4, -6468}}));
  rig.Set(1, 21.0f);
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 11, 1}, {12, 4, -10065}}));
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
  rig.TickValues();
  send(10, 1, 72000);
  send(10, 2, 48600);
  send(13, 1, -7.25f);
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 11, 1}, {12, 4, -6465}, {12, 5, 48600}, {12, 13, -72}}));
}

TEST(InstrumentTicks, DmeShowsTheReceiverThatItsOwnSelectorChose) {
  InstrumentRig rig;
  rig.StartWith(113, 1);
  rig.Set(27, 10, 1);
  rig.Set(27, 20, 2);
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 4, 100}, {12, 11, 1}}));
  rig.Reply(113, {{17, 4}}, "SD");
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 4, 200}}));
}

TEST(InstrumentTicks, ATurnedKnobIsLeftAloneForASecond) {
  InstrumentRig rig;
  rig.model.General.TransferInterval = 250;
  rig.StartWith(110, 0, 51);
  rig.Set(51, 11850);
  rig.Reply(110, {{7, 0x49}, {8, 0x3E}}, "AS");
  for (int tick = 1; tick < 4; ++tick) {
    EXPECT_FALSE(rig.Driver().Hold().Over(rig.cycle.TickNumber())) << tick;
    EXPECT_EQ(rig.TickValues(), Commands{}) << tick;
  }
  EXPECT_EQ(rig.TickValues(), (Commands{{12, 4, 18500}}));
}

}  // namespace
}  // namespace tvx
