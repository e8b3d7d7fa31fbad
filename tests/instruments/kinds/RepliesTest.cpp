// What every instrument's reply does to the simulator.
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx {
namespace {

TEST(Replies, EachTypeSendsItsValuesToItsTargets) {
  const struct {
    const char* what;
    int type, options;
    const char* letters;
    std::initializer_list<ByteAt> bytes;
    Texts sent;
  } cases[] = {
      {"altimeter, hPa", 101, 0, "PP", {{7, 0x03}, {8, 0xF5}}, {"DATA 8/0=29.917"}},
      {"altimeter, inches", 101, 0, "PP", {{4, 1}, {7, 0x0B}, {8, 0xB0}}, {"DATA 8/0=29.92"}},
      {"altimeter, knob not moved", 101, 0, "PP", {{10, 1}, {12, 128}}, {}},
      {"heading indicator",
       105,
       1,
       "",
       {{10, 0x04}, {11, 0x38}, {7, 0x0C}, {8, 0xA8}},
       {"DATA 51/0=90.", "DATA 52/0=-90."}},
      {"heading indicator, knobs off", 105, 0, "", {{10, 0x04}, {11, 0x38}}, {}},
      {"course knob", 106, 0, "CA", {{7, 0x01}, {8, 0x0F}}, {"DATA 51/0=270."}},
      {"course knob at a full turn", 107, 0, "CA", {{7, 0x04}, {8, 0x3C}}, {"DATA 51/0=0."}},
      {"ADF card", 108, 0, "CA", {{7, 0x02}, {8, 0x1E}}, {"DATA 52/0=180."}},
      {"COM radio", 110, 0, "AS", {{7, 0x48}, {8, 0x44}, {10, 0x49}, {11, 0x3E}}, {"DATA 51/0=11850."}},
      {"ADF radio with standby",
       121,
       4,
       "AS",
       {{7, 0x0D}, {8, 0xB1}, {10, 0x0F}, {11, 0xA0}},
       {"DREF sim/cockpit/radios/adf1_freq_hz=350.5", "DREF sim/cockpit/radios/adf1_stdby_freq_hz=400."}},
      {"transponder, the other pair", 112, 0, "XY", {{7, 0x12}, {10, 0x77}, {11, 0xFF}}, {"DATA 26/0=7777."}},
      {"transponder, everything",
       114,
       7,
       "XY",
       {{15, 1}, {7, 0x70}, {8, 0x00}, {17, 4}, {13, 1}},
       {"DATA 26/0=7000.", "DATA 47/0=3.", "DATA 47/2=1.", "DATA 46/0=1."}},
      {"transponder, mode without altitude",
       114,
       2,
       "XY",
       {{15, 1}, {17, 3}},
       {"DATA 26/0=0.", "DATA 47/2=0."}},
      {"King transponder, test",
       122,
       4,
       "XF",
       {{17, 3}, {13, 1}},
       {"DATA 26/0=0.", "DATA 47/0=4.", "DATA 46/0=1."}},
      {"King transponder, no such position", 122, 0, "XF", {{17, 200}}, {"DATA 26/0=0."}},
      {"DME selector 2", 113, 0, "SD", {{17, 4}}, {"DATA 52/0=2."}},
      {"DME selector, local", 113, 1, "SD", {{17, 4}}, {}},
      {"King DME",
       123,
       0,
       "SD",
       {{17, 3}, {24, 1}, {19, 0x34}, {20, 0x12}},
       {"DREF sim/cockpit/radios/dme_freq_hz=466."}},
      {"King DME, from NAV2", 123, 0, "SD", {{17, 3}, {24, 3}, {19, 0x0A}}, {"DATA 115/1=1."}},
      {"King DME, no such source", 123, 0, "SD", {{17, 3}, {24, 4}, {19, 0x0A}}, {}},
      {"COM/NAV radio, both",
       120,
       4,
       "CS",
       {{7, 0x48}, {8, 0x44}, {13, 0x49}, {14, 0x3E}, {10, 0x27}, {11, 0x10}, {16, 0x2E}, {17, 0xE0}},
       {"DATA 20/0=11850.", "DATA 22/0=11875.", "DATA 21/0=11000.", "DATA 23/0=11200."}},
      {"COM/NAV radio, not valid", 120, 4, "CS", {{7, 0x48}, {8, 0x44}, {23, 0x20}}, {}},
      {"trim wheel, by hand", 140, 0, "PT", {{7, 0x1D}, {8, 0x4C}, {13, 1}}, {"DATA 131/1=0.5"}},
      {"trim wheel, by its motor", 140, 0, "PT", {{7, 0x1D}, {8, 0x4C}}, {}},
      {"attitude indicator says nothing", 103, 0, "PP", {{7, 1}}, {}},
  };
  for (const auto& c : cases) {
    InstrumentRig rig;
    rig.StartWith(c.type, c.options, 51, 52);
    EXPECT_EQ(rig.Reply(c.type, c.bytes, c.letters), c.sent) << c.what;
  }
}

TEST(Replies, AudioPanelWritesSevenDatarefsInOrderWhenItsSelectorChanges) {
  InstrumentRig rig;
  rig.StartWith(125);
  const std::string prefix = "DREF sim/cockpit2/radios/actuators/audio_";
  const Texts com1AndAdf{prefix + "selection_com1=1.", prefix + "selection_com2=0.",
                         prefix + "selection_nav1=0.", prefix + "selection_nav2=0.",
                         prefix + "marker_enabled=0.", prefix + "dme_enabled=0.",
                         prefix + "selection_adf1=1."};
  EXPECT_EQ(rig.Reply(125, {{7, 0x21}, {8, 0x04}, {10, 9}}).size(), 7u);
  EXPECT_EQ(rig.Driver().KeptText(), "Volume 9");
  EXPECT_EQ(rig.special.AudioPanelBits, 0x80 | 0x40 | 0x01);
  EXPECT_EQ(rig.Reply(125, {{7, 0x20}, {8, 0x04}}), com1AndAdf);
  EXPECT_EQ(rig.special.AudioPanelBits, 0x80 | 0x20 | 0x01) << "the first alone";
  EXPECT_EQ(rig.Reply(125, {{7, 0x20}, {8, 0x04}}), Texts{}) << "no change";
}

TEST(Replies, PressureKnobCountsFromTheSimulatorsSetting) {
  InstrumentRig rig;
  rig.StartWith(101);
  rig.Set(8, 29.5f);
  rig.cycle.Tick();
  EXPECT_EQ(rig.Reply(101, {{10, 1}, {12, 130}}, "PP"), (Texts{"DATA 8/0=29.52"}));
  rig.cycle.Tick();  // the simulator has not answered yet: the next turn counts on
  EXPECT_EQ(rig.Reply(101, {{10, 1}, {12, 127}}, "PP"), (Texts{"DATA 8/0=29.51"}));
}

TEST(Replies, RepeatedReportsDoNotUndoWhatTheSimulatorChanged) {
  InstrumentRig rig;
  rig.StartWith(110, 0, 51);
  const std::initializer_list<ByteAt> turned{{7, 0x48}, {8, 0x44}};
  rig.Set(51, 12190);
  EXPECT_EQ(rig.Reply(110, turned, "AS"), (Texts{"DATA 51/0=11850."}));
  EXPECT_EQ(rig.Reply(110, turned, "AS"), Texts{}) << "the simulator is given a second";
  for (std::uint32_t i = 0; i <= rig.cycle.TicksPerSecond(); ++i) rig.cycle.Tick();
  EXPECT_EQ(rig.Reply(110, turned, "AS"), (Texts{"DATA 51/0=11850."})) << "it has not taken it";
  rig.Set(51, 11850);
  EXPECT_EQ(rig.Reply(110, turned, "AS"), Texts{});
  rig.Set(51, 12190);
  EXPECT_EQ(rig.Reply(110, turned, "AS"), Texts{}) << "the simulator is newer, even back at its old value";
  EXPECT_EQ(rig.Reply(110, {{7, 0x48}, {8, 0x4E}}, "AS"), (Texts{"DATA 51/0=11851."})) << "the knob again";
}

TEST(Replies, ACourseKnobThatStandsIsNotSentAgain) {
  InstrumentRig rig;
  rig.StartWith(106, 0, 51);
  EXPECT_EQ(rig.Reply(106, {{7, 0x02}, {8, 0x1E}}, "CA").size(), 1u);
  for (std::uint32_t i = 0; i <= rig.cycle.TicksPerSecond(); ++i) rig.cycle.Tick();
  EXPECT_EQ(rig.Reply(106, {{7, 0x02}, {8, 0x1E}}, "CA"), Texts{});
}

TEST(Replies, TrimWheelIgnoresJitter) {
  InstrumentRig rig;
  rig.StartWith(140);
  const auto at = [&rig](int position) {
    return rig.Reply(140, {{7, position / 256}, {8, position % 256}, {13, 1}}, "PT").size();
  };
  EXPECT_EQ(at(5000), 1u);
  EXPECT_EQ(at(5002), 0u);
  EXPECT_EQ(at(5003), 1u);
}

TEST(Replies, ModuleReportsTextAndEightAnalogueValues) {
  InstrumentRig rig;
  for (int n = 51; n <= 58; ++n) rig.model.Functions[static_cast<std::size_t>(n)].boxMaximumValue = 4095;
  rig.AddGauge(12, 10).GaugeSetting6 = 51;
  rig.Start();
  rig.cycle.Tick();
  EXPECT_EQ(
      rig.Reply(10, {{6, 'M'}, {7, 'O'}, {13, 0xF0}, {17, 0xFF}, {18, 7}, {16, 0x21}, {23, 3}, {24, 4}}),
      (Texts{"DATA 51/0=4095.", "DATA 52/0=7.", "DATA 53/0=0.", "DATA 54/0=0.", "DATA 55/0=0.",
             "DATA 56/0=0.", "DATA 57/0=515.", "DATA 58/0=260."}));
  EXPECT_EQ(rig.Driver().KeptText(), "MO");
  EXPECT_EQ(rig.Reply(10, {{13, 0xF0}, {17, 0xFC}, {18, 10}, {16, 0x21}, {23, 3}, {24, 4}}), Texts{})
      << "within the dead band";
  EXPECT_EQ(rig.Reply(10, {{13, 0xF0}, {17, 0xFB}, {18, 7}, {16, 0x21}, {23, 3}, {24, 4}}),
            (Texts{"DATA 51/0=4091."}));
}

TEST(Replies, ClockSetByHandIsKept) {
  InstrumentRig rig;
  rig.StartWith(104);
  EXPECT_EQ(rig.Reply(104, {{7, 26}, {8, 11}, {9, 21}, {11, 23}, {12, 59}, {13, 58}}), Texts{});
  EXPECT_EQ(rig.special.ClockSetTo.Year, 2026);
  EXPECT_EQ(rig.special.ClockSetTo.Second, 58);
}

TEST(Replies, OfAnotherKindThanTheConfigurationSaysAreLeftAlone) {
  InstrumentRig rig;
  rig.StartWith(110, 0, 51);
  EXPECT_EQ(rig.Reply(101, {{7, 0x03}, {8, 0xF5}}, "PP"), Texts{});
  EXPECT_EQ(rig.Reply(111, {{7, 0x48}, {8, 0x44}}, "AS"), (Texts{"DATA 51/0=11850."})) << "the same kind";
}

}  // namespace
}  // namespace tvx
