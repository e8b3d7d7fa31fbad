#include <gtest/gtest.h>

#include "tests/follow/FollowRig.h"

namespace tvx {
namespace {

using Kind = Subject::Kind;
constexpr Subject kNeedle{Kind::Gauge, 12};
constexpr Subject kSwitch{Kind::Input, FollowRig::kSwitch}, kAxis{Kind::Input, FollowRig::kAxis},
    kLamp{Kind::Input, FollowRig::kLamp};

// What was set up, and what happened in flight.
struct Case {
  const char* diagnosis;
  Subject subject = kNeedle;
  void (*before)(FollowRig&) = [](FollowRig&) {};
  void (*inFlight)(FollowRig&) = [](FollowRig& rig) { rig.SendSpeed(120), rig.Pass(200); };
};

constexpr auto kNeverSpeaks = [](FollowRig& rig) { rig.Pass(12000); };
constexpr auto kSpeedOf230 = [](FollowRig& rig) { rig.SendSpeed(230), rig.Pass(100); };
constexpr auto kTwoAltimeters = [](FollowRig& rig) {
  rig.Define(2);
  for (const int id : {15, 16}) rig.AddGauge(id, 101);
};

const Case kCases[] = {
    {"All is well"},
    {"Halted: press Run, then values flow", kNeedle, [](FollowRig& rig) { rig.running = false; }},
    // X-Plane
    {"X-Plane never answered sim/speed: this aircraft does not have it", kNeedle, [](FollowRig&) {},
     kNeverSpeaks},
    {"X-Plane was just asked for sim/speed", kNeedle, [](FollowRig&) {},
     [](FollowRig& rig) { rig.Pass(200); }},
    {"X-Plane does not answer sim/speed any more, since 7.0 s", kNeedle, [](FollowRig&) {},
     [](FollowRig& rig) { rig.SendSpeed(120), rig.Pass(7000); }},
    {"Nothing has come from X-Plane yet", kNeedle, [](FollowRig& rig) { rig.simulatorSends = false; },
     kNeverSpeaks},
    {"Nothing has come from X-Plane since 12 s", kNeedle, [](FollowRig& rig) { rig.simulatorSends = false; },
     [](FollowRig& rig) { rig.SendSpeed(120), rig.Pass(12000); }},
    {"X-Plane never answered data group 60: enter this computer in X-Plane, Settings, Data Output", kLamp,
     [](FollowRig&) {}, kNeverSpeaks},
    // the Function
    {"No Function is assigned", kNeedle, [](FollowRig& rig) { rig.model.Gauges[12].GaugeFunction1 = 0; }},
    {"Function 051 is not defined", kNeedle, [](FollowRig& rig) { rig.Speed().ShortName = ""; }},
    {"Function 051 has no source", kNeedle, [](FollowRig& rig) { rig.Speed().FullName = "a description"; }},
    {"Function 051 is only written: it asks for its value 0 times a second", kNeedle,
     [](FollowRig& rig) { rig.Speed().XPVal1 = 0; }},
    // a knob's own Function, which no needle shows
    {"All is well", kNeedle,
     [](FollowRig& rig) {
       rig.model.Gauges[12].GaugeType = 108;
       rig.model.Gauges[12].GaugeFunction1 = 0;
     },
     [](FollowRig& rig) { rig.SendSpeed(120); }},
    {"Function 099 is not defined",
     {Kind::Gauge, 12, 1},
     [](FollowRig& rig) {
       rig.model.Gauges[12].GaugeType = 105;
       rig.model.Gauges[12].GaugeFunction1 = 99;
     }},
    {"X-Plane was sent 300 and says 150: it did not take it", kNeedle, [](FollowRig&) {},
     [](FollowRig& rig) {
       rig.SendSpeed(120), rig.Pass(200), rig.WriteSpeed(300), rig.Pass(1900), rig.SendSpeed(150);
     }},
    {"All is well", kNeedle, [](FollowRig&) {},
     [](FollowRig& rig) {
       rig.SendSpeed(120), rig.Pass(200), rig.WriteSpeed(150), rig.Pass(1900), rig.SendSpeed(150.1f);
     }},
    {"Function 051 is a command, which has no value", kNeedle,
     [](FollowRig& rig) { rig.Speed().ComboDT = static_cast<Byte>(DataType::XplaneCmnd); }},
    {"Function 051 divides by 0", kNeedle, [](FollowRig& rig) { rig.Speed().Devider = 0; }},
    {"Function 051 multiplies by 0", kNeedle, [](FollowRig& rig) { rig.Speed().Multiplier = 0; }},
    // the Plate
    {"Plate 9 does not exist", kNeedle, [](FollowRig& rig) { rig.model.Gauges[12].GaugeSetting3 = 9; }},
    {"Plate 0 has no points: it is not calibrated", kNeedle,
     [](FollowRig& rig) { rig.model.Plates[0] = {}; }},
    {"The Plate ends at 200; the value is 230", kNeedle, [](FollowRig&) {}, kSpeedOf230},
    {"The Plate begins at 40; the value is 12.5", kNeedle, [](FollowRig&) {},
     [](FollowRig& rig) { rig.SendSpeed(12.5f), rig.Pass(100); }},
    // the line and the instrument
    {"The gauge bus has no COM port", kNeedle, [](FollowRig& rig) { rig.model.General.ComPortGS = 0; }},
    {"The gauge bus: COM 5 unplugged: /dev/fake5 went away; waiting for it to come back", kNeedle,
     [](FollowRig&) {}, [](FollowRig& rig) { rig.SendSpeed(120), rig.Pass(200), rig.Bus().Unplug(); }},
    {"The line is full: the value waits since 2.0 s", kNeedle, [](FollowRig&) {},
     [](FollowRig& rig) {
       rig.SendSpeed(120), rig.Pass(200);
       rig.Bus().RefuseWrites = true;
       rig.SendSpeed(150), rig.Pass(2000);
     }},
    {"No frame was sent to 012 yet", kNeedle, [](FollowRig&) {}, [](FollowRig& rig) { rig.SendSpeed(120); }},
    {"No instrument is configured at 040", {Kind::Gauge, 40}},
    {"No answer from 012 when it was looked for", kNeedle,
     [](FollowRig& rig) { rig.model.GaugeState[12] = GaugeConnection::NotConnected; }},
    {"No answer from 015 since 12 s; its neighbours answer",
     {Kind::Gauge, 15, 9},
     kTwoAltimeters,
     [](FollowRig& rig) { rig.answers = 16, rig.Pass(12000); }},
    {"No answer from 015 since 12 s; no other instrument answers either",
     {Kind::Gauge, 15, 9},
     kTwoAltimeters,
     [](FollowRig& rig) { rig.Pass(12000); }},
    {"All is well",
     {Kind::Gauge, 16, 9},
     kTwoAltimeters,
     [](FollowRig& rig) { rig.answers = 16, rig.Pass(12000); }},
    // the engine cluster
    {"All is well", {Kind::Channel, 0}},
    {"The channel is not in use", {Kind::Channel, 3}},
    {"The Plate ends at 200; the value is 230", {Kind::Channel, 0}, [](FollowRig&) {}, kSpeedOf230},
    {"The engine cluster has no COM port",
     {Kind::Channel, 0},
     [](FollowRig& rig) { rig.model.General.ComPortEC = 0; }},
    // IO modules
    {"Nothing is defined for this input", {Kind::Input, 1047}},
    {"IO module 1 has no COM port", kSwitch, [](FollowRig& rig) { rig.model.General.ComPortIOM1 = 0; }},
    {"No answer from IO module 1", kSwitch, [](FollowRig& rig) { rig.moduleReports = false; }, kNeverSpeaks},
    {"The definition says that the switch does nothing", kSwitch,
     [](FollowRig& rig) { rig.Definition(FollowRig::kSwitch).ActionKind = 'n'; }},
    {"It steps a value that has not come yet: no step can start", kSwitch,
     [](FollowRig& rig) { rig.Definition(FollowRig::kSwitch).IncrementFlags = kIOModuleStepOffOn; }},
    {"No Function is assigned", kAxis,
     [](FollowRig& rig) { rig.Definition(FollowRig::kAxis).FunctionNr = 0; }},
    {"The axis has no range: its raw limits meet", kAxis,
     [](FollowRig& rig) { rig.Definition(FollowRig::kAxis).RawMaximum = 0; }},
    {"The lamp has no condition at which it is lit", kLamp,
     [](FollowRig& rig) { rig.Definition(FollowRig::kLamp).IncrementFlags = 0; },
     [](FollowRig& rig) { rig.Set(60, 1), rig.Pass(200); }},
    {"X-Plane was sent 1 and says 5: it did not take it", kSwitch, [](FollowRig&) {},
     [](FollowRig& rig) {
       rig.Report(true);
       rig.moduleReports = false;
       rig.Pass(1900);
       rig.Set(60, 5);
     }},
    {"All is well", kSwitch, [](FollowRig&) {},
     [](FollowRig& rig) {
       rig.Report(true);
       rig.moduleReports = false;
       rig.Pass(1900);
       rig.Set(60, 1);
     }},
    // yokes
    {"Yoke 1 has no COM port", {Kind::YokeAxis, 1, 0}},
    {"Yoke 1 has not answered yet",
     {Kind::YokeAxis, 1, 1},
     [](FollowRig& rig) { rig.model.General.ComPortYoke1 = 9; }},
    // a Function that nobody has opened
    {"Nobody asks X-Plane for it: Function 070 F70 is not in use",
     {Kind::Function, 70, 1},
     [](FollowRig& rig) { rig.Define(70); }},
};

TEST(Follower, DiagnosesWhereTheValueStops) {
  for (const Case& row : kCases) {
    FollowRig rig;
    row.before(rig);
    rig.Fly();
    row.inFlight(rig);
    const Road road = rig.follower.Follow(row.subject);
    EXPECT_EQ(road.Diagnosis, row.diagnosis);
    const bool well = road.Diagnosis == "All is well" || road.Diagnosis.starts_with("Halted");
    EXPECT_EQ(road.Trouble, !well) << row.diagnosis;
    EXPECT_EQ(std::ranges::any_of(road.Stations, &Station::Stops), !well) << row.diagnosis;
  }
}

TEST(Follower, NamesTheStationsOfANeedleAndOfASwitch) {
  FollowRig rig;
  rig.Fly();
  rig.SendSpeed(120);
  rig.Pass(200);
  const auto words = [&](const Subject& subject) {
    std::string all;
    for (const Station& s : rig.follower.Follow(subject).Stations) all += s.Name + ": " + s.Value + "|";
    return all;
  };
  EXPECT_EQ(words(kNeedle),
            "X-Plane's name: sim/speed, 10 times a second|Raw: 120|Scaled: 120|Plate: Plate 0 |Needle: 500|"
            "Frame: 00 0C 58 F5 03 FF|Line: COM 5 open (/dev/fake5)|Instrument: 012|");
  rig.Report(true);
  EXPECT_EQ(words(kSwitch),
            "Line: COM 7 open (/dev/fake7)|Report: On|Definition: number 1|"
            "Value or command: Off->On: writes 1 to F60|To X-Plane: 1 to Data group 60, value 0|"
            "X-Plane says now: |");
  EXPECT_EQ(rig.follower.Follow(kSwitch).Stations[4].Note, "Function 060 F60");
}

TEST(Follower, ListsWhatIsInUseAndFindsWhoOpenedAPort) {
  FollowRig rig;
  rig.model.General.ComPortIOM2 = 8;
  rig.Define(61);
  IOModuleRecord& second = rig.model.IOModuleInputs.back();
  second = rig.Definition(FollowRig::kSwitch);
  second.Input = opener::kIOModule2 + 3;
  second.FunctionNr = 61;
  rig.model.IOModuleInputs.emplace_back();
  rig.Fly();
  rig.module2.OpenPorts();
  std::string titles;
  for (const Subject& subject : rig.follower.InUse()) titles += rig.follower.TitleOf(subject) + "|";
  EXPECT_EQ(titles,
            "012: First needle|Engine cluster, channel 1|IO module 1, switch A4|IO module 1, axis 2|"
            "IO module 1, lamp 5|IO module 2, switch A4|");
  std::string owners;
  for (int port = 0; port < rig.sim.PortCount(); ++port) {
    if (rig.sim.PortAt(port).OpenedBy != opener::kInternal)
      owners += rig.follower.TitleOf(rig.follower.OwnerOf(port)) + "|";
  }
  EXPECT_EQ(owners,
            "012: First needle|IO module 1, switch A4|IO module 1, lamp 5|Engine cluster, channel 1|"
            "IO module 2, switch A4|");
}

// What a kind shows as it is set up, and not all that it opens.
TEST(Follower, ListsWhatAGaugeShowsAsItIsSetUp) {
  struct Shown {
    int type;
    void (*set)(GaugeRecord&);
    const char* titles;
  };
  const auto first60 = [](GaugeRecord& gauge) { gauge.GaugeFunction1 = 60; };
  constexpr int kOption1 = 1, kOption6 = 6;
  const Shown kShown[] = {
      {8, first60, "First needle F66|Second needle F67|"},
      {8, [](GaugeRecord& gauge) { gauge.GaugeFunction1 = 60, gauge.GaugeSetting5 = 2; },
       "First needle F62|Second needle F63|"},
      {3, first60, "First needle F60|"},
      {3, [](GaugeRecord& gauge) { gauge.GaugeFunction1 = 60, gauge.GaugeInstance1 = 2; },
       "First needle F60|"},
      {2, [](GaugeRecord& gauge) { gauge.GaugeFunction1 = 60, gauge.GaugeFunction2 = 61; },
       "First needle F60|"},
      {101, first60, "F2 F2|"},
      // a switch, whatever instance was once chosen for it
      {101, [](GaugeRecord& gauge) { gauge.GaugeFunction2 = 61, gauge.GaugeInstance2 = 3; },
       "F2 F2|Air pressure F8|"},
      {105, [](GaugeRecord& gauge) { gauge.GaugeFunction1 = 60, gauge.GaugeFunction2 = 61; },
       "F3 F3|Heading bug F60|"},
      {105,
       [](GaugeRecord& gauge) {
         gauge.GaugeFunction1 = 60, gauge.GaugeFunction2 = 61, gauge.GaugeSetting5 = kOption1;
       },
       "F3 F3|Heading bug F60|Gyro correction F61|"},
      {120, [](GaugeRecord&) {}, "F20 F20|F22 F22|"},
      // the second pointer the second VOR receiver's, the first the first one's; and both the second ADF's
      {130, [](GaugeRecord& gauge) { gauge.GaugeSetting5 = 4; }, "F3 F3|F27 F27|F143 F143|F143 F143|"},
      {130, [](GaugeRecord& gauge) { gauge.GaugeSetting5 = kOption6 + kOption1; },
       "F3 F3|F27 F27|F144 F144|"},
  };
  for (const Shown& row : kShown) {
    FollowRig rig;
    for (const int number : {2, 3, 8, 20, 21, 22, 23, 27, 143, 144}) rig.Define(number);
    for (int number = 60; number < 68; ++number) rig.Define(number);
    GaugeRecord& gauge = rig.AddGauge(20, row.type);
    row.set(gauge);
    rig.Fly();
    rig.running = false;
    std::string titles;
    for (const Subject& subject : rig.follower.InUse()) {
      if (subject != Subject{Kind::Gauge, 20, subject.part}) continue;
      const std::string title = rig.follower.TitleOf(subject);
      const Station source = rig.follower.Follow(subject).Stations.front();
      titles += title.substr(title.find(": ") + 2) + source.Note.substr(12, source.Note.find(';') - 12) + "|";
    }
    EXPECT_EQ(titles, row.titles) << row.type;
  }
}

}  // namespace
}  // namespace tvx
