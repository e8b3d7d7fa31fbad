// What each instrument opens.
#include "instruments/kinds/Registry.h"
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx {
namespace {

std::vector<Port> OpenedBy12(const InstrumentRig& rig) {
  std::vector<Port> ports;
  for (int port = 0; port < rig.sim.PortCount(); ++port) {
    if (rig.sim.PortAt(port).OpenedBy == 12) ports.push_back(static_cast<Port>(port));
  }
  return ports;
}

TEST(InstrumentPorts, AreOpenedInTheirOrderAndRead) {
  const struct {
    int type, options;
    const char* opened;  // Function and sequence number
  } cases[] = {
      {1, 0, "51/3 52/4"},
      {8, 0, "51/3 52/3 53/3 54/3 55/3 56/3 57/3 58/3"},
      {10, 0, "51/3 52/4 50/1 51/1 52/1 53/1 54/1 55/1 56/1 57/1"},
      {101, 0, ""},
      {103, 0, ""},
      {104, 0, "10/1"},
      {105, 0, "51/3 52/4"},
      {106, 0, "33/1 34/1 35/1 36/1 51/3"},
      {107, 0, "33/2 34/2 35/2 36/2 51/3"},
      {108, 0, "31/1 32/1 52/4"},
      {109, 0, "10/1 13/1"},
      {110, 0, "51/3 52/4"},
      {112, 0, "26/1"},
      {112, 15, "26/1 26/2 47/1 47/2 46/1"},
      {122, 0, "26/1 47/1"},
      {122, 6, "26/1 47/1 47/2 46/1"},
      {113, 0, "27/1 28/1 29/1 30/1 27/4 52/4"},
      {123, 1, "27/1 28/1 29/1 30/1 27/4 27/2 28/2 29/2 52/4"},
      {120, 0, "20/3 22/3 23/3"},
      {120, 4, "20/3 22/3 21/3 23/3"},
      {125, 0, "38/1 38/2 38/3"},
      {130, 0, "27/1 143/1 144/1"},
      {130, 12, "27/1 143/1 144/1 143/2 144/2"},
      {140, 0, "281/1 280/1"},
  };
  for (const auto& c : cases) {
    InstrumentRig rig;
    rig.model.Functions[27].FunctionSetting = 1;
    GaugeRecord& gauge = rig.AddGauge(12, c.type);
    gauge.GaugeInstance1 = 3;
    gauge.GaugeInstance2 = 4;
    gauge.GaugeSetting6 = 50;
    rig.StartWith(c.type, c.options, 51, 52);
    std::string opened;
    for (const Port port : OpenedBy12(rig)) {
      const PortRow& row = rig.sim.PortAt(port);
      if (!opened.empty()) opened += ' ';
      opened += std::to_string(row.FunctionNr) + '/' + std::to_string(row.SeqNr);
      EXPECT_EQ(row.ReadEnabled, 1) << c.type;
    }
    EXPECT_EQ(opened, c.opened) << c.type << ", options " << c.options;
  }
}

TEST(InstrumentPorts, AModuleWithoutAFunctionForItsInputsOpensNone) {
  InstrumentRig rig;
  rig.StartWith(10, 0, 51, 52);
  EXPECT_EQ(OpenedBy12(rig).size(), 2u);
}

TEST(InstrumentPorts, TheAutopilotsBlockIsCountedFrom90) {
  InstrumentRig rig;
  rig.StartWith(124, 0, 1, 30);
  const auto ports = OpenedBy12(rig);
  ASSERT_EQ(ports.size(), 22u);
  EXPECT_EQ(rig.sim.PortAt(ports[0]).FunctionNr, 91);
  EXPECT_EQ(rig.sim.PortAt(ports[20]).FunctionNr, 111);
  EXPECT_EQ(rig.sim.PortAt(ports[21]).FunctionNr, 120);
}

// A Function that the dialog asks for is one that the instrument opens.
TEST(InstrumentPorts, WhatTheDialogAsksForIsOpened) {
  for (int type = 1; type < 256; ++type) {
    if (InstrumentOf(type) == nullptr) continue;
    const InstrumentDescription d = InstrumentOf(type)->Describe(type);
    InstrumentRig rig;
    rig.StartWith(type, 1, type == 124 ? 1 : 51, type == 124 ? 30 : 52);
    const auto opens = [&rig](int function) {
      for (const Port port : OpenedBy12(rig))
        if (rig.sim.PortAt(port).FunctionNr == function) return true;
      return false;
    };
    if (!d.function1.label.empty() && d.function1.number) {
      EXPECT_TRUE(opens(type == 124 ? 91 : 51)) << type;
    }
    if (!d.function2.label.empty() && type != 101) {
      EXPECT_TRUE(opens(type == 124 ? 120 : 52)) << type;
    }
  }
}

}  // namespace
}  // namespace tvx
