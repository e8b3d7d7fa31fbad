// What every instrument's reply does to the simulator, and what the dialogs tell of it.
#include "instruments/kinds/Registry.h"
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx::repliestest {

TEST(Replies, EachTypeSendsItsValuesToItsTargets) {
  const std::tuple<const char*, int, int, const char*, const char*> cases[] = {
      {"altimeter, hPa", 101, 0, "PP 7:03F5", "DATA 8/0=29.917"},
      {"altimeter, inches", 101, 0, "PP 4:01 7:0BB0", "DATA 8/0=29.92"},
      {"altimeter, knob not moved", 101, 0, "PP 10:01 12:80", ""},
      {"heading indicator", 105, 1, "10:0438 7:0CA8", "DATA 51/0=90., DATA 52/0=-90."},
      {"heading, last before the other side", 105, 1, "10:0864 7:086A", "DATA 51/0=179., DATA 52/0=179.5"},
      {"heading, first of the other side", 105, 1, "10:0865 7:086B",
       "DATA 51/0=-180.917, DATA 52/0=-180.417"},
      {"heading indicator, knobs off", 105, 0, "10:0438", ""},
      {"course knob", 106, 0, "CA 7:010F", "DATA 51/0=270."},
      {"course knob at a full turn", 107, 0, "CA 7:043C", "DATA 51/0=0."},
      {"course knob at its start", 107, 0, "CA 7:0000", "DATA 51/0=0."},
      {"ADF card", 108, 0, "CA 7:021E", "DATA 52/0=180."},
      {"COM radio", 110, 0, "AS 7:4844 10:493E", "DATA 51/0=11850."},
      {"NAV radio with standby", 111, 5, "AS 7:4844 10:493E", "DATA 51/0=11850., DATA 52/0=11875."},
      {"a radio made an ADF", 110, 2, "AS 7:0DB1", "DREF sim/cockpit/radios/adf1_freq_hz=350.5"},
      {"ADF radio", 121, 0, "AS 7:0DB1 10:0FA0", "DREF sim/cockpit/radios/adf1_freq_hz=350.5"},
      {"ADF radio with standby", 121, 4, "AS 7:46A9 10:0FA0",
       "DREF sim/cockpit/radios/adf1_freq_hz=1808.9, DREF sim/cockpit/radios/adf1_stdby_freq_hz=400."},
      {"transponder, the other pair", 112, 0, "XY 7:12 10:77FF", "DATA 26/0=7777."},
      {"transponder, everything", 114, 7, "XY 15:01 7:7000 17:04 13:01",
       "DATA 26/0=7000., DATA 47/0=3., DATA 47/2=1., DATA 46/0=1."},
      {"transponder, mode without altitude", 114, 2, "XY 15:01 7:1000 17:03",
       "DATA 26/0=1000., DATA 47/2=0."},
      {"King transponder, off as it begins", 122, 2, "XF 7:1234 17:01", "DATA 26/0=1234., DATA 47/2=1."},
      {"King transponder, standby", 122, 0, "XF 7:1000 17:02", "DATA 26/0=1000., DATA 47/0=1."},
      {"King transponder, test", 122, 4, "XF 7:1000 17:03 13:01",
       "DATA 26/0=1000., DATA 47/0=4., DATA 46/0=1."},
      {"King transponder, on reports no altitude", 122, 2, "XF 7:1000 17:04",
       "DATA 26/0=1000., DATA 47/0=2., DATA 47/2=0."},
      {"King transponder, altitude", 122, 2, "XF 7:1000 17:05",
       "DATA 26/0=1000., DATA 47/0=3., DATA 47/2=1."},
      {"King transponder, no such position", 122, 2, "XF 7:1000 17:06", "DATA 26/0=1000."},
      {"DME selector 1", 113, 0, "SD 17:02", "DATA 52/0=1."},
      {"DME selector 2", 113, 0, "SD 17:04", "DATA 52/0=2."},
      {"DME selector, local", 113, 1, "SD 17:04", ""},
      {"DME selector between", 113, 0, "SD 17:03", ""},
      {"King DME", 123, 0, "SD 17:03 24:01 19:3412", "DREF sim/cockpit/radios/dme_freq_hz=466."},
      {"King DME that counts from 100 MHz", 123, 2, "SD 17:03 24:01 19:3C28",
       "DREF sim/cockpit/radios/dme_freq_hz=11030."},
      {"King DME, from NAV1", 123, 0, "SD 17:03 24:02 19:0A", "DATA 115/1=1."},
      {"King DME, from NAV2", 123, 0, "SD 17:03 24:03 19:0A", "DATA 115/1=1."},
      {"King DME, no such source", 123, 0, "SD 17:03 24:04 19:0A", ""},
      {"King DME, no frequency", 123, 0, "SD 17:02 24:01 19:0A", ""},
      {"COM/NAV radio", 120, 0, "CS 7:4844 13:493E 10:2710 16:2EE0 23:DF",
       "DATA 20/0=11850., DATA 22/0=11875."},
      {"COM/NAV radio, both", 120, 4, "CS 7:4844 13:493E 10:2710 16:2EE0",
       "DATA 20/0=11850., DATA 22/0=11875., DATA 21/0=11000., DATA 23/0=11200."},
      {"COM/NAV radio, not valid", 120, 4, "CS 7:4844 23:20", ""},
      {"autopilot's first and last button", 124, 0, "AV 7:81", "DATA 92/0=1., DATA 92/0=8."},
      {"autopilot's altitude", 124, 0, "AV 10:1388 12:01 13:FD44", "DATA 107/0=5000."},
      {"autopilot's vertical speed", 124, 0, "AV 10:1388 13:FD44 15:01", "DATA 118/2=-700."},
      {"trim wheel, by hand", 140, 0, "PT 7:1D4C 13:01", "DATA 131/1=0.5"},
      {"trim wheel, beyond its end", 140, 0, "PT 7:7530 13:01", "DATA 131/1=1."},
      {"trim wheel, by its motor", 140, 0, "PT 7:1D4C", ""},
      {"attitude indicator says nothing", 103, 0, "PP 7:01", ""},
  };
  for (const auto& [what, type, options, reply, sent] : cases) {
    InstrumentRig rig;
    rig.StartWith(type, options, type == 124 ? 1 : 51, type == 124 ? 17 : 52);
    if (type != 105) {
      std::string other = reply;
      for (const std::size_t letter : {0u, 1u}) {
        other[letter] = '!';
        EXPECT_EQ(rig.Reply(type, other), "") << what << ", other letters";
        other[letter] = reply[letter];
      }
    }
    EXPECT_EQ(rig.Reply(type, reply), sent) << what;
  }
}

TEST(Replies, AreToldInWords) {
  const std::tuple<int, const char*, const char*> cases[] = {
      {101, "7:03F5 10:01", "1013|1|"},
      {104, "7:1A0B15 11:17053A", "2026-11-21|23:05:58|"},
      {105, "10:0438 7:0CA8", "1080|3240|"},
      {106, "7:010F", "270°|"},
      {108, "7:021E", "180°|"},
      {110, "7:4844 10:493E", "118.500 MHz|118.750 MHz|"},
      {121, "7:0DB1 10:0FA0", "3505|4000|"},
      {114, "7:1234 10:7654 17:03", "1234|7654|3|"},
      {122, "7:0012 17:02", "0012|2|"},
      {113, "17:04", "4|"},
      {123, "24:03", "3|"},
      {120, "7:4844 13:493E 10:2710 16:2EE0", "118.500 MHz|118.750 MHz|110.000 MHz|112.000 MHz|"},
      {124, "7:81 10:1388", "129|5000|"},
      {125, "7:01 8:02 10:09", "1|2|9|"},
      {140, "7:1D4C 13:01", "7500|hand|"},
      {140, "7:0100", "256|motor|"},
  };
  for (const auto& [type, reply, words] : cases) {
    const Bytes bytes = InstrumentRig::ReplyOf(type, reply);
    std::string told;
    for (const ReadingField& reading : InstrumentOf(type)->Describe(type).readings)
      told += reading.text(ReplyView(bytes.data(), kReplySize)) + '|';
    EXPECT_EQ(told, words) << type;
  }
}

TEST(Replies, AudioPanelWritesSevenDatarefsInOrderWhenItsSelectorChanges) {
  InstrumentRig rig;
  rig.StartWith(125);
  const std::string all =
      "DREF X/audio_selection_com1=1., DREF X/audio_selection_com2=0., DREF X/audio_selection_nav1=0., "
      "DREF X/audio_selection_nav2=0., DREF X/audio_marker_enabled=0., DREF X/audio_dme_enabled=0., "
      "DREF X/audio_selection_adf1=1.";
  rig.Reply(125, "7:20 8:04 10:09");
  EXPECT_EQ(rig.Driver().KeptText(), "Volume 9");
  const std::pair<const char*, int> buttons[] = {
      {"7:01", 0x40}, {"7:02", 0x08}, {"7:20", 0x80 | 0x20}, {"7:21", 0x80 | 0x40},  {"8:01", 0x10},
      {"8:02", 0x04}, {"8:04", 0x01}, {"8:08", 0x02},        {"7:5C 8:F0", 0x40 & 0}};
  for (const auto& [pressed, bits] : buttons) {
    EXPECT_NE(rig.Reply(125, pressed), "") << pressed;
    EXPECT_EQ(rig.special.AudioPanelBits, bits) << pressed;
  }
  std::string sent = rig.Reply(125, "7:20 8:04");
  for (std::size_t at; (at = sent.find("sim/cockpit2/radios/actuators")) != std::string::npos;)
    sent.replace(at, 29, "X");
  EXPECT_EQ(sent, all);
  EXPECT_EQ(rig.Reply(125, "7:20 8:04"), "") << "no change";
  rig.cycle.StartRun();
  EXPECT_NE(rig.Reply(125, "7:20 8:04"), "") << "a new run tells it again";
}

// What a reply sends depends on what was said and heard before.
TEST(Replies, KnobsAndTheSimulatorDoNotFight) {
  const std::tuple<const char*, int, int, int, const char*> rows[] = {
      {"the pressure knob counts from the simulator's setting", 101, 0, 0,
       "values 8=29.5; cycle; reply PP 10:01 12:82 = DATA 8/0=29.52; cycle; (not answered yet: the next turn "
       "counts on); "
       "reply PP 10:01 12:7F = DATA 8/0=29.51; reply PP 7:03F5 = DATA 8/0=29.917; "
       "(a setting that repeats would undo what was set elsewhere); reply PP 7:03F5 =; values 8=0; cycle; "
       "(unless the simulator has none); reply PP 7:03F5 = DATA 8/0=29.917"},
      {"repeated reports do not undo what the simulator changed", 110, 0, 51,
       "reply AS 7:4844 = DATA 51/0=11850.; values 51=12190; reply AS 7:493E = DATA 51/0=11875.; reply AS "
       "7:493E =; "
       "(the simulator is given a second); hold; reply AS 7:493E = DATA 51/0=11875.; (it has not taken it); "
       "values 51=11875.004; reply AS 7:493E =; values 51=12190; reply AS 7:493E =; (it is newer, even back "
       "at its old "
       "value); reply AS 7:4844 = DATA 51/0=11850.; (the knob again)"},
      {"what the simulator cannot tell of is sent each time", 121, 0, 0,
       "reply AS 7:0DB1 = DREF sim/cockpit/radios/adf1_freq_hz=350.5; reply AS 7:0DB1 = "
       "DREF sim/cockpit/radios/adf1_freq_hz=350.5"},
      {"a King transponder is switched off", 122, 2, 0,
       "reply XF 17:02 = DATA 47/0=1., DATA 47/2=1.; reply XF 17:01 = DATA 47/0=0."},
      // Sent back, the beginning would put the simulator's own bug to 0 at every start.
      {"what a face shows before the first value is not reported", 105, 1, 51,
       "reply 10:0000 =; values 51=150; tick = 6:1800; hold; hold; hold; reply 10:0708 ="},
      {"and a knob at 0 is where no value comes", 105, 1, 51,
       "reply 10:0000 =; hold; hold; hold; reply 10:0000 = DATA 51/0=0."},
      {"the trim wheel ignores jitter", 140, 0, 0,
       "reply PT 7:1398 13:01 = DATA 131/1=0.003; reply PT 7:139A 13:01 =; reply PT 7:139B 13:01 = DATA "
       "131/1=0.004; "
       "reply PT 7:1399 13:01 =; reply PT 7:1398 13:01 = DATA 131/1=0.003"},
  };
  for (const auto& [what, type, options, function1, story] : rows) {
    SCOPED_TRACE(what);
    InstrumentRig rig;
    rig.StartWith(type, options, function1);
    rig.Play(story);
  }
}

// Those that report a place of the hand, or a button, tell it once.
TEST(Replies, WhatStandsIsNotSentAgain) {
  const std::tuple<int, int, const char*, const char*> cases[] = {
      {105, 1, "7:0CA8", "DATA 52/0=-90."},  // the bug is where it was told to be
      {106, 0, "CA 7:021E", "DATA 51/0=180."},
      {114, 2, "XY 15:01 17:03", "DATA 47/2=0."},
      {123, 0, "SD 17:03 24:01 19:3412", "DREF sim/cockpit/radios/dme_freq_hz=466."},
      {140, 0, "PT 7:1D4C 13:01", "DATA 131/1=0.5"},
  };
  for (const auto& [type, options, reply, sent] : cases) {
    InstrumentRig rig;
    rig.StartWith(type, options, 51, 52);
    rig.SetAll("51=77 52=88 47/2=5 26=0 281=0.2");
    EXPECT_EQ(rig.Reply(type, reply), sent) << type;
    rig.SetAll("51=0");  // taken; the others not
    rig.Reply(type, reply);
    rig.PassHold();
    EXPECT_EQ(rig.Reply(type, reply), "") << type;
  }
}

TEST(Replies, ModuleReportsTextAndEightAnalogueValues) {
  InstrumentRig rig;
  for (int n = 51; n <= 58; ++n) rig.model.Functions[static_cast<std::size_t>(n)].boxMaximumValue = 4095;
  rig.model.Functions[52].boxMinimumValue = -4095;
  rig.AddGauge(12, 10).GaugeSetting6 = 51;
  rig.Start();
  rig.cycle.Tick();
  EXPECT_EQ(rig.Reply(10, "6:4D4F 13:F0 17:FF07 16:21 23:0304"),
            "DATA 51/0=4095., DATA 52/0=-4081., DATA 53/0=0., DATA 54/0=0., DATA 55/0=0., DATA 56/0=0., "
            "DATA 57/0=515., DATA 58/0=260.");
  EXPECT_EQ(rig.Driver().KeptText(), "MO");
  EXPECT_EQ(rig.Reply(10, "13:F0 17:FC0A 16:21 23:0304"), "") << "within the dead band";
  EXPECT_EQ(rig.Reply(10, "13:F0 17:FB07 16:21 23:0304"), "DATA 51/0=4091.");
}

TEST(Replies, ClockSetByHandIsKept) {
  InstrumentRig rig;
  rig.StartWith(104);
  EXPECT_EQ(rig.Reply(109, "7:010203 11:040506"), "");
  EXPECT_EQ(rig.special.ClockSetTo.Year, 0) << "the other clock has no knobs";
  EXPECT_EQ(rig.Reply(104, "7:1A0B15 11:173B3A"), "");
  const auto& time = rig.special.ClockSetTo;
  EXPECT_EQ((std::array<int, 6>{time.Year, time.Month, time.Day, time.Hour, time.Minute, time.Second}),
            (std::array<int, 6>{2026, 11, 21, 23, 59, 58}));
}

TEST(Replies, OfAnotherKindThanTheConfigurationSaysAreLeftAlone) {
  InstrumentRig rig;
  rig.StartWith(110, 0, 51);
  EXPECT_EQ(rig.Reply(101, "PP 7:03F5"), "");
  EXPECT_EQ(rig.Reply(111, "AS 7:4844"), "DATA 51/0=11850.") << "the same kind";
}

}  // namespace tvx::repliestest
