#include "tests/follow/FollowRig.h"

namespace tvx::followertest {

using Kind = Subject::Kind;
constexpr Subject kNeedle{Kind::Gauge, 12};
constexpr Subject kSwitch{Kind::Input, FollowRig::kSwitch}, kAxis{Kind::Input, FollowRig::kAxis},
    kLamp{Kind::Input, FollowRig::kLamp};

// What was set up before, and what happened in flight.
struct Case {
  const char* says;
  Subject of = kNeedle;
  void (*before)(FollowRig&) = [](FollowRig&) {};
  const char* flight = "speed 120; pass 200";
};

void TwoAltimeters(FollowRig& rig) {
  rig.Define(2);
  for (const int id : {15, 16}) rig.AddGauge(id, 101);
}

const Case kCases[] = {
    {.says = "All is well"},
    {.says = "Halted: press Run, then values flow", .before = [](FollowRig& rig) { rig.running = false; }},
    // X-Plane
    {.says = "X-Plane never answered sim/speed: this aircraft does not have it", .flight = "pass 12000"},
    {.says = "X-Plane was just asked for sim/speed", .flight = "pass 200"},
    {.says = "X-Plane does not answer sim/speed any more, since 7.0 s", .flight = "speed 120; pass 7000"},
    {.says = "Nothing has come from X-Plane yet", .flight = "silent; pass 12000"},
    {.says = "Nothing has come from X-Plane since 12 s", .flight = "silent; speed 120; pass 12000"},
    {.says = "X-Plane never answered data group 60: enter this computer in X-Plane, Settings, Data Output",
     .of = kLamp,
     .flight = "pass 12000"},
    // the Function
    {.says = "No Function is assigned",
     .before = [](FollowRig& rig) { rig.model.Gauges[12].GaugeFunction1 = 0; }},
    {.says = "Function 051 is not defined", .before = [](FollowRig& rig) { rig.Speed().ShortName = ""; }},
    {.says = "Function 051 has no source",
     .before = [](FollowRig& rig) { rig.Speed().FullName = "a description"; }},
    {.says = "Function 051 is only written: it asks for its value 0 times a second",
     .before = [](FollowRig& rig) { rig.Speed().XPVal1 = 0; }},
    // a knob's own Function, which no needle shows
    {.says = "All is well",
     .before = [](FollowRig& rig) { rig.model.Gauges[12] = {.GaugeType = 108}; },
     .flight = "speed 120"},
    {.says = "Function 099 is not defined",
     .of = {Kind::Gauge, 12, 1},
     .before = [](FollowRig& rig) { rig.model.Gauges[12] = {.GaugeType = 105, .GaugeFunction1 = 99}; }},
    {.says = "X-Plane was sent 300 and says 150: it did not take it",
     .flight = "speed 120; pass 200; knob 300; pass 1900; speed 150"},
    {.says = "All is well", .flight = "speed 120; pass 200; knob 150; pass 1900; speed 150.1"},
    {.says = "Function 051 is a command, which has no value",
     .before = [](FollowRig& rig) { rig.Speed().ComboDT = static_cast<Byte>(DataType::XplaneCmnd); }},
    {.says = "Function 051 divides by 0", .before = [](FollowRig& rig) { rig.Speed().Devider = 0; }},
    {.says = "Function 051 multiplies by 0", .before = [](FollowRig& rig) { rig.Speed().Multiplier = 0; }},
    // the Plate
    {.says = "Plate 9 does not exist",
     .before = [](FollowRig& rig) { rig.model.Gauges[12].GaugeSetting3 = 9; }},
    {.says = "Plate 0 has no points: it is not calibrated",
     .before = [](FollowRig& rig) { rig.model.Plates[0] = {}; }},
    {.says = "The Plate ends at 200; the value is 230", .flight = "speed 230; pass 100"},
    {.says = "The Plate begins at 40; the value is 12.5", .flight = "speed 12.5; pass 100"},
    // the line and the instrument
    {.says = "The gauge bus has no COM port",
     .before = [](FollowRig& rig) { rig.model.General.ComPortGS = 0; }},
    {.says = "The gauge bus: COM 5 unplugged: /dev/fake5 went away; waiting for it to come back",
     .flight = "speed 120; pass 200; unplug"},
    {.says = "The line is full: the value waits since 2.0 s",
     .flight = "speed 120; pass 200; refuse 1; speed 150; pass 2000"},
    {.says = "No frame was sent to 012 yet", .flight = "speed 120"},
    {.says = "No instrument is configured at 040", .of = {Kind::Gauge, 40}},
    {.says = "No answer from 012 when it was looked for",
     .before = [](FollowRig& rig) { rig.model.GaugeState[12] = GaugeConnection::NotConnected; }},
    {.says = "No answer from 015 since 12 s; its neighbours answer",
     .of = {Kind::Gauge, 15, 9},
     .before = TwoAltimeters,
     .flight = "answers 16; pass 12000"},
    {.says = "No answer from 015 since 12 s; no other instrument answers either",
     .of = {Kind::Gauge, 15, 9},
     .before = TwoAltimeters,
     .flight = "pass 12000"},
    {.says = "All is well",
     .of = {Kind::Gauge, 16, 9},
     .before = TwoAltimeters,
     .flight = "answers 16; pass 12000"},
    // the engine cluster
    {.says = "All is well", .of = {Kind::Channel, 0}},
    {.says = "The channel is not in use", .of = {Kind::Channel, 3}},
    {.says = "The Plate ends at 200; the value is 230",
     .of = {Kind::Channel, 0},
     .flight = "speed 230; pass 100"},
    {.says = "The engine cluster has no COM port",
     .of = {Kind::Channel, 0},
     .before = [](FollowRig& rig) { rig.model.General.ComPortEC = 0; }},
    // IO modules
    {.says = "Nothing is defined for this input", .of = {Kind::Input, 1047}},
    {.says = "IO module 1 has no COM port",
     .of = kSwitch,
     .before = [](FollowRig& rig) { rig.model.General.ComPortIOM1 = 0; }},
    {.says = "No answer from IO module 1", .of = kSwitch, .flight = "module 0; pass 12000"},
    {.says = "The definition says that the switch does nothing",
     .of = kSwitch,
     .before = [](FollowRig& rig) { rig.Definition(FollowRig::kSwitch).ActionKind = 'n'; }},
    {.says = "It steps a value that has not come yet: no step can start",
     .of = kSwitch,
     .before =
         [](FollowRig& rig) { rig.Definition(FollowRig::kSwitch).IncrementFlags = kIOModuleStepOffOn; }},
    {.says = "No Function is assigned",
     .of = kAxis,
     .before = [](FollowRig& rig) { rig.Definition(FollowRig::kAxis).FunctionNr = 0; }},
    {.says = "The axis has no range: its raw limits meet",
     .of = kAxis,
     .before = [](FollowRig& rig) { rig.Definition(FollowRig::kAxis).RawMaximum = 0; }},
    {.says = "The lamp has no condition at which it is lit",
     .of = kLamp,
     .before = [](FollowRig& rig) { rig.Definition(FollowRig::kLamp).IncrementFlags = 0; },
     .flight = "set 60 1; pass 200"},
    {.says = "X-Plane was sent 1 and says 5: it did not take it",
     .of = kSwitch,
     .flight = "switch; module 0; pass 1900; set 60 5"},
    {.says = "All is well", .of = kSwitch, .flight = "switch; module 0; pass 1900; set 60 1"},
    // yokes
    {.says = "Yoke 1 has no COM port", .of = {Kind::YokeAxis, 1, 0}},
    {.says = "Yoke 1 has not answered yet",
     .of = {Kind::YokeAxis, 1, 1},
     .before = [](FollowRig& rig) { rig.model.General.ComPortYoke1 = 9; }},
    // a Function that nobody has opened
    {.says = "Nobody asks X-Plane for it: Function 070 F70 is not in use",
     .of = {Kind::Function, 70, 1},
     .before = [](FollowRig& rig) { rig.Define(70); }},
};

TEST(Follower, DiagnosesWhereTheValueStops) {
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.says);
    FollowRig rig;
    row.before(rig);
    rig.Fly();
    rig.Play(row.flight);
    const Road road = rig.follower.Follow(row.of);
    EXPECT_EQ(road.Diagnosis, row.says);
    const bool well = road.Diagnosis == "All is well" || road.Diagnosis.starts_with("Halted");
    EXPECT_EQ(road.Trouble, !well);
    EXPECT_EQ(std::ranges::any_of(road.Stations, &Station::Stops), !well);
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
  // The gauge, and its titles with their Functions.
  const std::pair<GaugeRecord, const char*> rows[] = {
      {{.GaugeType = 8, .GaugeFunction1 = 60}, "First needle F66|Second needle F67|"},
      {{.GaugeType = 8, .GaugeFunction1 = 60, .GaugeSetting5 = 2}, "First needle F62|Second needle F63|"},
      {{.GaugeType = 3, .GaugeFunction1 = 60}, "First needle F60|"},
      {{.GaugeType = 3, .GaugeFunction1 = 60, .GaugeInstance1 = 2}, "First needle F60|"},
      {{.GaugeType = 2, .GaugeFunction1 = 60, .GaugeFunction2 = 61}, "First needle F60|"},
      {{.GaugeType = 101, .GaugeFunction1 = 60}, "F2 F2|"},
      // a switch, whatever instance was once chosen for it
      {{.GaugeType = 101, .GaugeFunction2 = 61, .GaugeInstance2 = 3}, "F2 F2|Air pressure F8|"},
      {{.GaugeType = 105, .GaugeFunction1 = 60, .GaugeFunction2 = 61}, "F3 F3|Heading bug F60|"},
      {{.GaugeType = 105, .GaugeFunction1 = 60, .GaugeFunction2 = 61, .GaugeSetting5 = 1},
       "F3 F3|Heading bug F60|Gyro correction F61|"},
      {{.GaugeType = 120}, "F20 F20|F22 F22|"},
      // the second pointer the second VOR receiver's, the first the first one's; and both the second ADF's
      {{.GaugeType = 130, .GaugeSetting5 = 4}, "F3 F3|F27 F27|F143 F143|F143 F143|"},
      {{.GaugeType = 130, .GaugeSetting5 = 6 + 1}, "F3 F3|F27 F27|F144 F144|"},
  };
  for (const auto& [gauge, expected] : rows) {
    FollowRig rig;
    for (const int number : {2, 3, 8, 20, 21, 22, 23, 27, 143, 144}) rig.Define(number);
    for (int number = 60; number < 68; ++number) rig.Define(number);
    rig.model.Gauges[20] = gauge;
    rig.Fly();
    rig.running = false;
    std::string titles;
    for (const Subject& subject : rig.follower.InUse()) {
      if (subject != Subject{Kind::Gauge, 20, subject.part}) continue;
      const std::string title = rig.follower.TitleOf(subject);
      const Station source = rig.follower.Follow(subject).Stations.front();
      titles += title.substr(title.find(": ") + 2) + source.Note.substr(12, source.Note.find(';') - 12) + "|";
    }
    EXPECT_EQ(titles, expected) << int{gauge.GaugeType};
  }
}

}  // namespace tvx::followertest
