// What each instrument opens.
#include "instruments/kinds/Registry.h"
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx::portstest {

// What the instrument has opened: Function and sequence number, a "-" where it is not read.
std::string OpenedBy12(const InstrumentRig& rig) {
  std::ostringstream opened;
  for (int port = 0; port < rig.sim.PortCount(); ++port) {
    const PortRow& row = rig.sim.PortAt(port);
    if (row.OpenedBy != 12) continue;
    opened << (opened.tellp() > 0 ? " " : "") << row.FunctionNr << '/' << int{row.SeqNr}
           << (row.ReadEnabled ? "" : "-");
  }
  return opened.str();
}

TEST(InstrumentPorts, AreOpenedInTheirOrderAndRead) {
  const std::tuple<int, int, const char*> cases[] = {
      {101, 0, ""},
      {104, 0, "10/1"},
      {112, 0, "26/1"},
      {1, 0, "51/3 52/4"},
      {103, 0, ""},
      {109, 0, "10/1 13/1"},
      {105, 0, "51/3 52/4"},
      {110, 0, "51/3 52/4"},
      {122, 0, "26/1 47/1"},
      {140, 0, "281/1 280/1"},
      {108, 0, "31/1 32/1 52/4"},
      {120, 0, "20/3 22/3 23/3"},
      {125, 0, "38/1 38/2 38/3"},
      {130, 0, "27/1 143/1 144/1"},
      {122, 6, "26/1 47/1 47/2 46/1"},
      {120, 4, "20/3 22/3 21/3 23/3"},
      {112, 15, "26/1 26/2 47/1 47/2 46/1"},
      {106, 0, "33/1 34/1 35/1 36/1 51/3"},
      {107, 0, "33/2 34/2 35/2 36/2 51/3"},
      {130, 12, "27/1 143/1 144/1 143/2 144/2"},
      {113, 0, "27/1 28/1 29/1 30/1 27/4 52/4"},
      {8, 0, "51/3 52/3 53/3 54/3 55/3 56/3 57/3 58/3"},
      {123, 1, "27/1 28/1 29/1 30/1 27/4 27/2 28/2 29/2 52/4"},
      {10, 0, "51/3 52/4 50/1 51/1 52/1 53/1 54/1 55/1 56/1 57/1"},
  };
  for (const auto& [type, options, opened] : cases) {
    InstrumentRig rig;
    rig.model.Functions[27].FunctionSetting = 1;
    GaugeRecord& gauge = rig.AddGauge(12, type);
    gauge.GaugeInstance1 = 3;
    gauge.GaugeInstance2 = 4;
    gauge.GaugeSetting6 = 50;
    rig.StartWith(type, options, 51, 52);
    EXPECT_EQ(OpenedBy12(rig), opened) << type << ", options " << options;
  }
}

TEST(InstrumentPorts, AModuleWithoutAFunctionForItsInputsOpensNone) {
  InstrumentRig rig;
  rig.StartWith(10, 0, 51, 52);
  EXPECT_EQ(OpenedBy12(rig), "51/1 52/1");
}

TEST(InstrumentPorts, TheAutopilotsBlockIsCountedFrom90) {
  InstrumentRig rig;
  rig.StartWith(124, 0, 1, 30);
  std::string expected;
  for (int function = 91; function <= 111; ++function) expected += std::to_string(function) + "/1 ";
  EXPECT_EQ(OpenedBy12(rig), expected + "120/1");
}

// A Function that the dialog asks for is one that the instrument opens.
TEST(InstrumentPorts, WhatTheDialogAsksForIsOpened) {
  for (int type = 1; type < 256; ++type) {
    if (InstrumentOf(type) == nullptr) continue;
    const InstrumentDescription d = InstrumentOf(type)->Describe(type);
    const bool autopilot = type == 124;
    InstrumentRig rig;
    rig.StartWith(type, 1, autopilot ? 1 : 51, autopilot ? 30 : 52);
    const std::string opened = " " + OpenedBy12(rig);
    EXPECT_TRUE(d.function1.label.empty() || !d.function1.number ||
                Holds(opened, autopilot ? " 91/" : " 51/"))
        << type;
    EXPECT_TRUE(d.function2.label.empty() || type == 101 || Holds(opened, autopilot ? " 120/" : " 52/"))
        << type;
  }
}

}  // namespace tvx::portstest
