// What yokes and pedals do to the simulator, with the link and the serial ports in memory.
#include <unistd.h>

#include "tests/ffb/YokeRig.h"

namespace tvx::test::simulatortest {

using Ratio = std::array<double, 2>;

TEST(Simulator, GetsItsControlsBack) {
  const std::pair<const char*, void (*)(YokeRig&)> rows[] = {
      {"stop", [](YokeRig& r) { r.pair.cmdStop_Click(); }},
      {"stop after the link was closed", [](YokeRig& r) { r.sim.CloseUDP(), r.pair.cmdStop_Click(); }},
      {"yoke silent", [](YokeRig& r) { r.hardware[0].silent = true, r.Run(2400); }},
      {"not this yoke's to fly",
       [](YokeRig& r) { r.model.Yoke1.OptionBits = 0, r.pair.ApplySettings(), r.Run(80); }},
  };
  for (const auto& [how, happens] : rows) {
    SCOPED_TRACE(how);
    YokeRig rig;
    rig.Play(
        "start 1000; override joystick_roll = 1; override joystick_heading = -1; "
        "(no pedals: never touched)");
    happens(rig);
    rig.Play("override joystick_roll = 0; override joystick_pitch = 0");
  }
}

TEST(Simulator, ButtonsCommandAndDisconnect) {
  YokeRig rig;
  rig.model.Yoke1.Buttons[1].Action = static_cast<Byte>(ButtonAction::AutopilotOff);
  rig.model.Yoke1.Buttons[2] = {static_cast<Byte>(ButtonAction::Command), "sim/lights/landing_lights_toggle"};
  rig.model.Yoke1.Buttons[15].Action = static_cast<Byte>(ButtonAction::ForcesOff);
  rig.deaf = true;
  rig.Play(
      "set 1 2; start 500; press 1 6; run 200; wrote autopilot_mode = 1; "
      "(the flight director stays); commands = sim/lights/landing_lights_toggle; (once a press)");
  // A request that was lost is made again, for a second.
  for (const double again : {1, 1, 1, 0}) {
    rig.written.clear();
    rig.Run(again != 0 ? 280 : 400);
    EXPECT_EQ(std::isnan(rig.Written("autopilot_mode")), again == 0);
  }
  rig.Play("press 1 32768; run 80; role 1 = Master, OFF mode");
}

// Each trim button, of the master alone.
TEST(Simulator, EveryTrimButtonTrimsItsWayWhileItIsHeld) {
  const std::tuple<ButtonAction, const char*, double> rows[] = {
      {ButtonAction::TrimNoseUp, "elevator_trim", 0.1},
      {ButtonAction::TrimNoseDown, "elevator_trim", -0.1},
      {ButtonAction::TrimLeft, "aileron_trim", -0.1},
      {ButtonAction::TrimRight, "aileron_trim", 0.1}};
  for (const auto& [action, dataref, way] : rows) {
    YokeRig rig(2);
    for (YokeRecord* record : {&rig.model.Yoke1, &rig.model.Yoke2})
      record->Buttons[15].Action = static_cast<Byte>(action);
    rig.Play("start 500; press 2 32768; (the slave's); run 400; wrote " + std::string(dataref) + " = nan");
    rig.hardware[0].buttons = 0x8000;
    rig.Cycle();  // its answer says so
    for (int i = 0; i < 25; ++i) rig.Cycle();
    EXPECT_NEAR(rig.Written(dataref), way, 1e-3) << "a second of it";
    rig.hardware[0].buttons = rig.hardware[1].buttons = 0;
    rig.Run(400);
    EXPECT_NEAR(rig.Written(dataref), way, 0.01);
    rig.hardware[0].buttons = 0x8000;
    rig.Run(20000);
    EXPECT_NEAR(rig.Written(dataref), 10 * way, 1e-6) << "its end";
  }
}

TEST(Simulator, ButtonsDoNothingThereWhileHalted) {
  YokeRig rig;
  rig.model.Yoke1.Buttons[0].Action = static_cast<Byte>(ButtonAction::AutopilotOff);
  rig.model.Yoke1.Buttons[1] = {static_cast<Byte>(ButtonAction::Command), "sim/a"};
  rig.model.Yoke1.Buttons[2].Action = static_cast<Byte>(ButtonAction::TrimLeft);
  rig.Play(
      "set 1 2; start 500; stop; press 1 7; run 400; commands =; wrote autopilot_mode = nan; "
      "wrote aileron_trim = nan");
}

TEST(SimControls, WriteWhatChangedAndEverythingOnceASecond) {
  YokeRig rig;
  DefineFfbFunctions(rig.model);
  FfbPorts ports(rig.model, rig.sim, rig.boxes);
  rig.sim.OpenUDP();
  ports.Open();
  rig.socket.TakeSent();
  SimControls controls(rig.sim, ports);
  const auto yoke = [&](std::optional<Ratio> ratios) {
    return controls.Yoke(ratios), rig.socket.TakeSent().size();
  };
  const auto pedals = [&](std::optional<PedalRatios> ratios) {
    return controls.Pedals(ratios), rig.socket.TakeSent().size();
  };
  EXPECT_EQ(yoke(std::nullopt) + pedals(std::nullopt), 0u) << "never taken, never touched";
  controls.GiveBack();
  EXPECT_EQ(rig.socket.Closes, 0);
  EXPECT_EQ(yoke(Ratio{0.5, -0.5}), 4u) << "two overrides, two ratios";
  EXPECT_EQ(yoke(Ratio{0.5, -0.5}), 0u);
  EXPECT_EQ(yoke(Ratio{0.5004, -0.5}), 0u) << "less than the yoke resolves";
  EXPECT_EQ(yoke(Ratio{0.5006, std::nan("")}), 1u);
  EXPECT_EQ(yoke(Ratio{-0.5, 0.5}), 2u);
  int calls = 5;
  do ++calls;
  while (yoke(Ratio{-0.5, 0.5}) == 0 && calls < 100);
  EXPECT_EQ(calls, 26) << "the 25th after the first, whether something changed or not";
  EXPECT_TRUE(controls.YokeTaken());
  EXPECT_EQ(pedals(PedalRatios{0, 0.5, 0}), 5u);
  EXPECT_EQ(pedals(PedalRatios{1, 0, 1}), 3u);
  EXPECT_EQ(yoke(std::nullopt), 2u);
  EXPECT_EQ(yoke(std::nullopt), 0u);
  EXPECT_TRUE(controls.PedalsTaken());
  rig.sim.CloseUDP();
  const int closes = rig.socket.Closes;
  controls.GiveBack();
  rig.Play("override joystick_heading = 0; override toe_brakes = 0");
  EXPECT_EQ(rig.socket.Closes, closes + 1) << "opened for that";
  controls.GiveBack();
  EXPECT_EQ(rig.socket.Closes, closes + 1);
  EXPECT_FALSE(rig.sim.UdpOpen());
}

TEST(Simulator, TrimMovesTheYokeAndNotTheSimulatorsTwice) {
  YokeRig rig;
  rig.Play("set 12 0.5; set 6 150; start 6000");
  EXPECT_NEAR(rig.pair.Of(1).Line().PitchPosition(), 0.5 * 0.4 * 511, 6) << "hands off, it stands trimmed";
  EXPECT_NEAR(rig.Written("yoke_pitch_ratio"), 0, 0.02);
}

TEST(Pedals, AreScaledAndSentWithoutAJump) {
  YokeRig rig;
  rig.UsePedals();
  rig.joystick.info.RPos = 30000;
  rig.Start();
  rig.joystick.info.RPos = 65535, rig.joystick.info.YPos = 30000;
  double before = 0;
  for (int cycle = 0; cycle < 15; ++cycle) {
    rig.Cycle();
    EXPECT_LE(rig.Written("yoke_heading_ratio") - before, FlownRatios::kLargestStep + 1e-6);
    before = rig.Written("yoke_heading_ratio");
  }
  EXPECT_EQ(before, 1);
  rig.Play("override toe_brakes = 1; wrote left_brake_ratio = 0");
  EXPECT_NEAR(rig.Written("right_brake_ratio"), 0.5, 0.01);
}

// Whatever becomes of device and settings in flight: what cannot be relied on is given back and said, and
// used again when it is over.
TEST(Pedals, AreCheckedOnEveryChange) {
  // What happens and, with false, is over; the words then; whether a box tells it.
  const std::tuple<const char*, void (*)(YokeRig&, bool), const char*, bool> rows[] = {
      {"unplugged", [](YokeRig& r, bool now) { r.joystick.present = !now; },
       "Rudder and brakes: \"Pedals\" (joystick 0) is not connected.", false},
      {"may not be read",
       [](YokeRig& r, bool now) { r.joystick.present = !now, r.joystick.trouble = "Ask the administrator."; },
       "Rudder and brakes: \"Pedals\" (joystick 0) is not connected. Ask the administrator.", false},
      {"swapped with another",
       [](YokeRig& r, bool) { std::swap(r.joystick.devices[0], r.joystick.devices[1]); },
       "Rudder and brakes: Joystick 0 is \"Stick\" now, but \"Pedals\" was set up. It is not used. The right "
       "one is joystick 1 now.",
       true},
      {"another of its kind",
       [](YokeRig& r, bool now) { r.joystick.devices[0].identity = now ? "p2" : "p1"; },
       "Rudder and brakes: Joystick 0 is another \"Pedals\" than the one that was set up. It is not used.",
       true},
      {"an axis less", [](YokeRig& r, bool now) { r.joystick.devices[0].axes = now ? 3 : 4; },
       "Rudder and brakes: \"Pedals\" has no R-Axis.", true},
      {"centre at the stop",
       [](YokeRig& r, bool now) { r.model.Yoke1.RudderCentre = StoredRaw(now ? 1000 : 30000); },
       "Joystick settings incorrect or incomplete.", false},
  };
  for (const auto& [what, happens, words, box] : rows) {
    SCOPED_TRACE(what);
    YokeRig rig;
    rig.UsePedals();
    rig.joystick.devices[1] = {"Stick", "s1", 6};
    rig.Start(400);
    ASSERT_EQ(rig.Override("joystick_heading"), 1);
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.pair.PedalText(), "Rudder and brakes: \"Pedals\", 6 axes");
    for (const bool now : {true, false}) {
      happens(rig, now);
      rig.pair.ApplySettings();
      rig.Run(120);
      EXPECT_EQ(rig.Override("joystick_heading"), now ? 0 : 1);
      EXPECT_EQ(rig.Override("toe_brakes"), now ? 0 : 1);
      if (now) {
        EXPECT_EQ(rig.pair.PedalText(), words);
      }
    }
    EXPECT_EQ(rig.boxes.shown.size(), box ? 1u : 0u) << "once";
  }
}

// The numbers follow the order of plugging: also between two starts.
TEST(Pedals, TheChosenDeviceIsKeptBesideTheConfiguration) {
  const std::string file = testing::TempDir() + "joysticks-" + std::to_string(getpid());
  YokeRig rig;
  rig.UsePedals();
  std::string error;
  {
    PedalDevices devices(rig.joystick);
    devices.KeepIn(file);
    EXPECT_FALSE(devices.Chosen(0));
    EXPECT_TRUE(devices.Choose(0, error)) << error;
    EXPECT_TRUE(devices.Choose(5, error)) << "nothing there";
  }
  PedalDevices devices(rig.joystick);
  devices.KeepIn(file);
  EXPECT_FALSE(devices.Chosen(5));
  EXPECT_EQ(devices.Look(rig.model.Yoke1), PedalState::Usable);
  rig.joystick.devices[0] = {"Stick", "s1", 6};
  EXPECT_EQ(devices.Look(rig.model.Yoke1), PedalState::Other);
  EXPECT_EQ(devices.Words(rig.model.Yoke1),
            "Joystick 0 is \"Stick\" now, but \"Pedals\" was set up. It is not used.");
  EXPECT_TRUE(devices.Choose(0, error));
  EXPECT_EQ(devices.Look(rig.model.Yoke1), PedalState::Usable) << "the user's word";
  std::ofstream(file) << "what\n0\n1 \n99 a b\n2 id a name\n";
  PedalDevices damaged(rig.joystick);
  damaged.KeepIn(file);
  EXPECT_TRUE(damaged.Chosen(2));
  EXPECT_FALSE(damaged.Chosen(0) || damaged.Chosen(1) || damaged.Chosen(99));
  std::remove(file.c_str());
}

// Who has only given a yoke its port flies it once it is calibrated; what somebody has set stays.
TEST(Newcomer, AYokeThatWasNeverSetUpFlies) {
  YokeRig rig;
  const YokeRecord calibrated = rig.model.Yoke1;
  rig.model.Yoke1 = {};
  rig.model.GeneralFFB = {};
  rig.pair.Load();
  EXPECT_TRUE(rig.model.ConfigChanged);
  EXPECT_FALSE(IsBlank(rig.model.GeneralFFB));
  EXPECT_FALSE(EffectsAreBlank(rig.model.Yoke1));
  EXPECT_EQ(rig.model.Yoke2.OptionBits, calibrated.OptionBits) << "not configured, not touched";
  YokeRecord& record = rig.model.Yoke1;
  record.RollLeft = calibrated.RollLeft, record.RollRight = calibrated.RollRight;
  record.PitchForward = calibrated.PitchForward, record.PitchBack = calibrated.PitchBack;
  rig.Play("set 6 120; start 3000; state 1 = Forces on; override joystick_roll = 1");
  EXPECT_GT(rig.hardware[0].gradient[1], 0);
  record.OptionBits = 0;
  rig.model.ConfigChanged = false;
  rig.pair.Load();
  EXPECT_EQ(record.OptionBits, 0);
  EXPECT_FALSE(rig.model.ConfigChanged);
}

}  // namespace tvx::test::simulatortest
