// The records of the configuration. Each names its fields in the order of the configuration file (`Fields`);
// reader, writer and dump walk that list. A field's C++ type is its type in the file: std::string
// text, Byte 0..255, std::int16_t integer, float single, double double.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "base/NamedTexts.h"

namespace tvx {

// Names of settings.
inline constexpr std::string_view kHearAllSetting = "hearall";  // "yes": not only the simulator's computer
inline constexpr std::string_view kFollowSetting = "follow";  // the host whose X-Plane's address is followed

// The general settings.
struct GeneralRecord {
  std::string ConfigHeader;             // identification line of the loaded file, built when saving
  std::int16_t ComPortEC = 0;           // COM port numbers; 0 or less: not used
  std::int16_t ComPortGS = 0;           // the gauge bus
  std::int16_t TransferInterval = 100;  // of the process timer, ms
  std::int16_t BlockUSEL = 0;           // 1: no USEL leaves the program
  std::int16_t LightsSetting1 = 32;  // lights mode: which lights of the simulator light the faces (bit mask)
  std::int16_t LightsSetting2 = 0;   // lights mode: 1 always lit, 2 never lit, 0 by LightsSetting1
  std::string RemoteIP = "127.0.0.1";  // the simulator computer
  std::string GeneralText2;            // kept and written back
  std::string RemotePort = "49000";    // where the simulator listens
  std::string LocalPort = "49003";     // where the program listens
  std::string GeneralText5;            // kept and written back
  std::string GeneralText6;            // settings of later versions, by name: Setting, SetSetting
  std::int16_t ByteOrderReverse = 0;   // -1: the test console shows values in reverse byte order
  std::int16_t ComPortIOM1 = 0;
  std::int16_t ComPortIOM2 = 0;
  std::int16_t ComPortYoke1 = 0;
  std::int16_t ComPortYoke2 = 0;

  // A setting that has no field of its own; empty: it is off.
  std::string Setting(std::string_view name) const { return NamedText(GeneralText6, name); }
  void SetSetting(std::string_view name, std::string_view value) { SetNamedText(GeneralText6, name, value); }
  // The simulator is at this address and port. `host` is its computer's name: another one's address is not
  // followed any more.
  void UseSimulator(std::string_view address, int port, std::string_view host) {
    RemoteIP = address;
    RemotePort = std::to_string(port);
    if (Setting(kFollowSetting) != host) SetSetting(kFollowSetting, {});
  }

  bool operator==(const GeneralRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("ConfigHeader", r.ConfigHeader);
    visit("ComPortEC", r.ComPortEC);
    visit("ComPortGS", r.ComPortGS);
    visit("TransferInterval", r.TransferInterval);
    visit("BlockUSEL", r.BlockUSEL);
    visit("LightsSetting1", r.LightsSetting1);
    visit("LightsSetting2", r.LightsSetting2);
    visit("RemoteIP", r.RemoteIP);
    visit("GeneralText2", r.GeneralText2);
    visit("RemotePort", r.RemotePort);
    visit("LocalPort", r.LocalPort);
    visit("GeneralText5", r.GeneralText5);
    visit("GeneralText6", r.GeneralText6);
    visit("ByteOrderReverse", r.ByteOrderReverse);
    visit("ComPortIOM1", r.ComPortIOM1);
    visit("ComPortIOM2", r.ComPortIOM2);
    visit("ComPortYoke1", r.ComPortYoke1);
    visit("ComPortYoke2", r.ComPortYoke2);
  }
};

// One definition of an IO module's switch, encoder, analogue input or output.
struct IOModuleRecord {
  std::int16_t Input = 0;       // 0..47 a switch, 100..107 an analogue input, 200..231 an output; + 1000 for
                                // module 1, + 2000 for module 2
  std::int16_t FunctionNr = 0;  // the Function that is changed or shown
  std::int16_t SequenceNr = 0;  // its sequence number
  std::int16_t IncrementFlags = 0;  // bit 0 Off->On steps, bit 1 On->Off steps; of an output: its conditions
  std::int16_t DeadBand = 0;        // smallest change of an analogue input that counts, raw
  Byte ActionKind = 0;              // a character; 'd' a keystroke
  float OffOnValue = 0;             // step, or percentage of the span; of an analogue input: raw minimum
  float OnOffValue = 0;             // the same for the other edge; of an analogue input: raw centre (0: none)
  std::int16_t OnKeystroke = 0;     // keystroke codes
  std::int16_t OffKeystroke = 0;
  float RawMaximum = 0;           // of an analogue input
  std::int16_t SwitchType = 0;    // 0 toggle, 1 encoder A, 2 encoder B
  std::int16_t DebounceTime = 0;  // 0..20

  bool operator==(const IOModuleRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("Input", r.Input);
    visit("FunctionNr", r.FunctionNr);
    visit("SequenceNr", r.SequenceNr);
    visit("IncrementFlags", r.IncrementFlags);
    visit("DeadBand", r.DeadBand);
    visit("ActionKind", r.ActionKind);
    visit("OffOnValue", r.OffOnValue);
    visit("OnOffValue", r.OnOffValue);
    visit("OnKeystroke", r.OnKeystroke);
    visit("OffKeystroke", r.OffKeystroke);
    visit("RawMaximum", r.RawMaximum);
    visit("SwitchType", r.SwitchType);
    visit("DebounceTime", r.DebounceTime);
  }
};

// Data type codes of a Function (`ComboDT`); any other code is "Not used".
enum class DataType : Byte {
  ByteType = 0,
  Integer = 1,
  UnsignedInt = 2,
  Long = 3,
  Float = 4,
  BcdCode = 5,
  XplaneCmnd = 6,
  XplaneDataref = 7,
};

// How a Function is used (`FuncType`).
enum class FunctionUse : Byte {
  None = 0,
  InputSwitch = 1,
  InputAnalogue = 2,
  OutputLed = 3,
  Gauge = 4,
  DedicatedGauge = 5,
  Macro = 6,
  SwitchAndLed = 7,
};

// A numbered simulator value. A value read is (raw + BoxAdd) * Multiplier / Devider.
struct FunctionRecord {
  std::string ShortName;        // empty: the Function is not defined
  std::string FullName;         // datarefs or commands, one "#n:text" line each; otherwise a description
  std::int16_t FunctionNr = 0;  // its own number
  Byte FuncType = 0;            // a FunctionUse
  Byte ComboClass = 0;          // category, 0..11
  std::int16_t XPindex1 = 0;    // data group of sequence numbers 1..4
  std::int16_t XPindex2 = 0;
  std::int16_t XPindex3 = 0;
  std::int16_t XPindex4 = 0;
  float BoxAdd = 0;
  Byte ComboDT = 0;          // a DataType
  Byte FunctionSetting = 0;  // shown with two digits in the editor's list
  float Multiplier = 0;
  float Devider = 0;
  float boxMinimumValue = 0;
  float boxMaximumValue = 0;
  std::int16_t BoxMacroNr = 0;  // of a Macro Function
  Byte XPVal1 = 0;              // value number in the group 0..7, or RREF frequency per second (datarefs)
  Byte XPVal2 = 0;
  Byte XPVal3 = 0;
  Byte XPVal4 = 0;

  // A source of the Function.
  struct Slot {
    std::int16_t index;  // data group
    Byte value;          // value number 0..7, or RREF frequency
  };
  // Sequence numbers 1..4; 0 counts as 1, and any other number as 4.
  Slot SlotOf(Byte sequenceNr) const {
    switch (sequenceNr) {
      case 0:
      case 1:
        return {XPindex1, XPVal1};
      case 2:
        return {XPindex2, XPVal2};
      case 3:
        return {XPindex3, XPVal3};
      default:
        return {XPindex4, XPVal4};
    }
  }
  bool IsMacro() const { return FuncType == static_cast<Byte>(FunctionUse::Macro); }
  bool Is(DataType type) const { return ComboDT == static_cast<Byte>(type); }

  bool operator==(const FunctionRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("ShortName", r.ShortName);
    visit("FullName", r.FullName);
    visit("FunctionNr", r.FunctionNr);
    visit("FuncType", r.FuncType);
    visit("ComboClass", r.ComboClass);
    visit("XPindex1", r.XPindex1);
    visit("XPindex2", r.XPindex2);
    visit("XPindex3", r.XPindex3);
    visit("XPindex4", r.XPindex4);
    visit("BoxAdd", r.BoxAdd);
    visit("ComboDT", r.ComboDT);
    visit("FunctionSetting", r.FunctionSetting);
    visit("Multiplier", r.Multiplier);
    visit("Devider", r.Devider);
    visit("boxMinimumValue", r.boxMinimumValue);
    visit("boxMaximumValue", r.boxMaximumValue);
    visit("BoxMacroNr", r.BoxMacroNr);
    visit("XPVal1", r.XPVal1);
    visit("XPVal2", r.XPVal2);
    visit("XPVal3", r.XPVal3);
    visit("XPVal4", r.XPVal4);
  }
};

// A kind of instrument.
struct GaugetypeRecord {
  std::int16_t Code = 0;
  std::string Name;

  bool operator==(const GaugetypeRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("Code", r.Code);
    visit("Name", r.Name);
  }
};

// An instrument on the gauge bus; its index is its GaugeID.
struct GaugeRecord {
  Byte GaugeType = 0;               // Gaugetype code; 0: none here
  Byte GaugeSetting1 = 0;           // model
  Byte GaugeSetting2 = 0;           // firmware version
  Byte GaugeSetting3 = 0;           // number of the first Plate
  std::int16_t GaugeFunction1 = 0;  // first Function; 0: none
  Byte GaugeInstance1 = 0;          // its sequence number
  Byte GaugeSetting4 = 0;           // number of the second Plate
  std::int16_t GaugeFunction2 = 0;  // second Function; 0: none
  Byte GaugeInstance2 = 0;          // its sequence number
  std::int16_t GaugeSetting5 = 0;   // option bits, by instrument (docs/instruments.md)
  std::int16_t GaugeSetting6 = 0;   // spare; kept by "clear all"

  bool operator==(const GaugeRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("GaugeType", r.GaugeType);
    visit("GaugeSetting1", r.GaugeSetting1);
    visit("GaugeSetting2", r.GaugeSetting2);
    visit("GaugeSetting3", r.GaugeSetting3);
    visit("GaugeFunction1", r.GaugeFunction1);
    visit("GaugeInstance1", r.GaugeInstance1);
    visit("GaugeSetting4", r.GaugeSetting4);
    visit("GaugeFunction2", r.GaugeFunction2);
    visit("GaugeInstance2", r.GaugeInstance2);
    visit("GaugeSetting5", r.GaugeSetting5);
    visit("GaugeSetting6", r.GaugeSetting6);
  }
};

// A setting of the engine cluster. Settings 0..7 are its channels; 8 the cluster itself.
struct EngineClusterRecord {
  std::int16_t Value1 = 0;  // channel: 1 enabled. 8: engine version
  std::int16_t Value2 = 0;  // channel: Function number. 8: backlight
  std::int16_t Value3 = 0;  // channel: Plate number. 8: options

  bool operator==(const EngineClusterRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("Value1", r.Value1);
    visit("Value2", r.Value2);
    visit("Value3", r.Value3);
  }
};

// The calibration of a gauge face: simulator values against needle positions. Entry 2 is the lowest value,
// entry 3 the highest, entries 4..24 the points between in rising order. Entry 25 is room only, never stored
// in the file.
struct PlateRecord {
  static constexpr int kStoredPoints = 25;
  static constexpr int kPoints = 26;

  std::string Name;
  std::array<double, kPoints> Value{};
  std::array<std::int16_t, kPoints> Position{};

  bool operator==(const PlateRecord&) const = default;
};

// The force-feedback settings that both yokes share. A record whose numbers and percentages are all 0 was
// never set; the standard values count then (docs/force-feedback.md).
struct GeneralFFBRecord {
  // One point of both force tables.
  struct ForcePoint {
    float RollAirspeed = 0;   // kt
    float RollForce = 0;      // centring force at full deflection, % of what the yoke can give
    float PitchAirspeed = 0;  // kt
    float PitchForce = 0;     // %
    bool operator==(const ForcePoint&) const = default;
  };
  std::int16_t MasterYoke = 0;  // 1 or 2: who flies after the start; any other number counts as 1
  std::int16_t GripThreshold =
      0;                    // counts of deflection (0..511) against the servo that take over; 0: none do
  Byte MaximumForce = 0;    // % of what the yoke can give; nothing ever exceeds it
  Byte Friction = 0;        // %
  Byte Damping = 0;         // %
  Byte GroundForce = 0;     // %: least centring force on the ground
  Byte RollTrimRange = 0;   // % of the travel that full trim moves the centre
  Byte PitchTrimRange = 0;  // %
  std::array<ForcePoint, 13> ForceTable{};

  bool operator==(const GeneralFFBRecord&) const = default;
  template <typename Self, typename Visit>
  static void Fields(Self& r, Visit&& visit) {
    visit("MasterYoke", r.MasterYoke);
    visit("GripThreshold", r.GripThreshold);
    visit("MaximumForce", r.MaximumForce);
    visit("Friction", r.Friction);
    visit("Damping", r.Damping);
    visit("GroundForce", r.GroundForce);
    visit("RollTrimRange", r.RollTrimRange);
    visit("PitchTrimRange", r.PitchTrimRange);
    for (auto& p : r.ForceTable) {
      visit("ForceTable.RollAirspeed", p.RollAirspeed);
      visit("ForceTable.RollForce", p.RollForce);
      visit("ForceTable.PitchAirspeed", p.PitchAirspeed);
      visit("ForceTable.PitchForce", p.PitchForce);
    }
  }
};

// The settings of one yoke. `Head` goes up to and including the line of option bits and is the same for both;
// the rest of the section differs between the yokes and between reading and writing (ConfigReader.cpp). So
// that rest is used in yoke 1's record only, for what both yokes share. Raw positions 0..65535 of the yoke's
// and the joystick's axes are kept less 32768, so that they fit; 0 is the middle.
struct YokeRecord {
  struct Button {
    Byte Action = 0;   // what pressing it does (ffb/YokeSettings.h)
    std::string Text;  // the simulator command of the action that runs one
    bool operator==(const Button&) const = default;
  };
  struct Effect {
    float Frequency = 0;  // Hz
    Byte Level = 0;       // %
    bool operator==(const Effect&) const = default;
  };
  std::int16_t StartMode = 0;                   // YokeMode after the start, 0..4
  Byte Address = 0;                             // of the yoke in its frames; 0: any sender is accepted
  std::array<std::int16_t, 18> FfbFunctions{};  // Function numbers by FFB offset; 0: the standard one
  std::int16_t JoystickNumber = 0;              // 0-based
  Byte RudderAxis = 0;                          // places in the list of axes; 0: none
  Byte LeftBrakeAxis = 0;
  Byte RightBrakeAxis = 0;
  std::int16_t RollLeft = 0;  // raw less 32768, and so are all below; left = right: not calibrated
  std::int16_t RollCentre = 0;
  std::int16_t RollRight = 0;
  std::int16_t PitchForward = 0;
  std::int16_t PitchCentre = 0;
  std::int16_t PitchBack = 0;
  std::int16_t RudderLeft = 0;
  std::int16_t RudderCentre = 0;
  std::int16_t RudderRight = 0;
  std::int16_t LeftBrakeReleased = 0;
  std::int16_t LeftBrakePressed = 0;
  std::int16_t RightBrakeReleased = 0;
  std::int16_t RightBrakePressed = 0;
  Byte ForceLevel = 0;  // % of the computed forces that this yoke gives; 0 counts as 100
  std::array<Button, 16> Buttons{};
  std::int16_t OptionBits = 0;  // ffb/YokeSettings.h
  // Yoke 1, for both. Each number: 0 counts as the standard value. Effects that are all 0 were never set.
  Byte StallMargin = 0;               // % above the stall speed where the buffet begins
  float GustTime = 0;                 // s: how long a gust's force lasts
  std::int16_t TailZero = 0;          // yoke 2's line in place of the two above: always 0
  std::int16_t StallSpeed = 0;        // kt at 1 g
  std::int16_t NeverExceedSpeed = 0;  // kt
  std::int16_t ServoSpeed = 0;        // counts (0..511) a second
  std::int16_t RunwayBumps = 0;       // dm: distance of the runway's bumps
  std::array<Effect, 12> Effects{};   // by effect and axis: 2 e the roll axis, 2 e + 1 the pitch axis

  bool operator==(const YokeRecord&) const = default;
  template <typename Self, typename Visit>
  static void Head(Self& r, Visit&& visit) {
    visit("StartMode", r.StartMode);
    visit("Address", r.Address);
    for (auto& number : r.FfbFunctions) visit("FfbFunctions", number);
    visit("JoystickNumber", r.JoystickNumber);
    visit("RudderAxis", r.RudderAxis);
    visit("LeftBrakeAxis", r.LeftBrakeAxis);
    visit("RightBrakeAxis", r.RightBrakeAxis);
    visit("RollLeft", r.RollLeft);
    visit("RollCentre", r.RollCentre);
    visit("RollRight", r.RollRight);
    visit("PitchForward", r.PitchForward);
    visit("PitchCentre", r.PitchCentre);
    visit("PitchBack", r.PitchBack);
    visit("RudderLeft", r.RudderLeft);
    visit("RudderCentre", r.RudderCentre);
    visit("RudderRight", r.RudderRight);
    visit("LeftBrakeReleased", r.LeftBrakeReleased);
    visit("LeftBrakePressed", r.LeftBrakePressed);
    visit("RightBrakeReleased", r.RightBrakeReleased);
    visit("RightBrakePressed", r.RightBrakePressed);
    visit("ForceLevel", r.ForceLevel);
    for (auto& button : r.Buttons) {
      visit("Buttons.Action", button.Action);
      visit("Buttons.Text", button.Text);
    }
    visit("OptionBits", r.OptionBits);
  }
  // What follows the line(s) after the option bits: four numbers and the effects.
  template <typename Self, typename Visit>
  static void TailNumbers(Self& r, Visit&& visit) {
    visit("StallSpeed", r.StallSpeed);
    visit("NeverExceedSpeed", r.NeverExceedSpeed);
    visit("ServoSpeed", r.ServoSpeed);
    visit("RunwayBumps", r.RunwayBumps);
  }
};

}  // namespace tvx
