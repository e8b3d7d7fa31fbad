#include "hwbus/iomodule/IOModuleActions.h"
#include "tests/Test.h"

namespace tvx::iomoduleactionstest {

FunctionRecord Function(float minimum, float maximum) {
  FunctionRecord f;
  f.ShortName = "F";
  f.FullName = "#1:sim/a\r\n#2:sim/b\r\n";
  f.ComboDT = static_cast<Byte>(DataType::Float);
  f.boxMinimumValue = minimum;
  f.boxMaximumValue = maximum;
  return f;
}

TEST(IOModuleActions, ValueOnEveryEdge) {
  const FunctionRecord function = Function(-100, 300);
  const struct {
    char kind;
    int flags;
    float offOn, onOff;
    bool on;
    double current;
    std::optional<float> written;
  } cases[] = {
      // relative: bit 0 the Off->On edge, bit 1 the On->Off edge
      {'v', 1, 10, -10, true, 50, 60.0f},
      {'v', 1, 10, -10, false, 50, {}},
      {'v', 2, 10, -10, true, 50, {}},
      {'v', 2, 10, -10, false, 50, 40.0f},
      {'v', 1, 10, 0, true, 300, 300.0f},    // stays at the maximum
      {'v', 1, -10, 0, true, -95, -100.0f},  // and at the minimum
      {'v', 1, -1, 0, true, 50, 49.0f},      // -1 is a step here
      {'v', 4, 10, 10, true, 50, {}},        // relative, but on no edge
      // absolute: a percentage of the span, without the minimum
      {'v', 0, 100, 0, true, 7, 400.0f},
      {'v', 0, 100, 0, false, 7, 0.0f},
      {'v', 0, 25, 50, false, 7, 200.0f},
      {'v', 0, -1, 50, true, 7, {}},
      {'v', 0, -2, 0, true, 7, -8.0f},
      // a character nobody knows writes the value too
      {'\0', 0, 50, 0, true, 7, 200.0f},
      {'n', 0, 50, 0, true, 7, {}},
      {'u', 1, 50, 0, true, 7, {}},
  };
  for (const auto& c : cases) {
    IOModuleRecord d;
    d.ActionKind = static_cast<Byte>(c.kind);
    d.IncrementFlags = static_cast<std::int16_t>(c.flags);
    d.OffOnValue = c.offOn;
    d.OnOffValue = c.onOff;
    const IOModuleEffect effect = SwitchEffect(d, &function, c.on, c.current);
    const auto written =
        effect.What == IOModuleEffect::Kind::Value ? std::optional<float>(effect.Value) : std::nullopt;
    EXPECT_EQ(written, c.written) << c.kind << " flags " << c.flags << " edge " << c.on << " at "
                                  << c.current;
    EXPECT_EQ(SwitchEffect(d, nullptr, c.on, c.current).What, IOModuleEffect::Kind::Nothing);
  }
}

TEST(IOModuleActions, KeystrokesAndCommandsOnEachEdge) {
  IOModuleRecord key;
  key.ActionKind = 'd';
  key.OnKeystroke = 0x0800;
  key.OffKeystroke = 0x0900;
  EXPECT_EQ(SwitchEffect(key, nullptr, true, 0).Keystroke, 0x0800);
  EXPECT_EQ(SwitchEffect(key, nullptr, false, 0).Keystroke, 0x0900);

  const std::pair<float, int> entries[] = {{1, 1}, {9, 9}, {10, 0}, {0, 0}, {-1, 0}, {2.4f, 2}, {NAN, 0}};
  for (const auto& [value, entry] : entries) {
    IOModuleRecord d;
    d.ActionKind = 'c';
    d.OnOffValue = value;
    EXPECT_EQ(SwitchEffect(d, nullptr, false, 0).Entry, entry) << value;
  }
}

TEST(IOModuleActions, AnalogueScaling) {
  const FunctionRecord function = Function(-20, 100);
  const std::tuple<float, float, float, int, float> cases[] = {
      {0, 0, 4000, 1000, 25},        {0, 0, 4000, 4095, 100},   {0, 0.9f, 4000, 1000, 25},
      {1000, 0, 4000, 0, 25},  // clamped to the raw minimum, measured from 0
      {0, 2000, 4000, 2000, 0},      {0, 2000, 4000, 3000, 50}, {0, 2000, 4000, 4095, 100},
      {0, 2000, 4000, 1000, -10},    {0, 2000, 4000, 0, -20},   {500.5f, 2000, 4000, 0, -20},
      {1000, 2000, 4000, 1500, -10},
  };
  for (const auto& [minimum, centre, maximum, raw, out] : cases) {
    IOModuleRecord d;
    d.OffOnValue = minimum;
    d.OnOffValue = centre;
    d.RawMaximum = maximum;
    EXPECT_FLOAT_EQ(AnalogueValue(d, function, raw), out) << centre << " raw " << raw;
  }
  EXPECT_FALSE(std::isfinite(AnalogueValue(IOModuleRecord{}, function, 7)));
}

TEST(IOModuleActions, LampConditions) {
  const FunctionRecord function = Function(10, 110);
  const std::tuple<int, double, bool> cases[] = {
      {0, 10, false}, {1, 10, true},  {1, 10.5, false}, {2, 110, true},  {2, 10, false},
      {3, 110, true}, {4, 59, false}, {4, 60, true},    {4, 200, true},  {8, 42, true},
      {8, 41, false}, {9, 10, true},  {15, 50, false},  {16, 10, false}, {15, NAN, false},
  };
  for (const auto& [conditions, value, lit] : cases) {
    IOModuleRecord d;
    d.IncrementFlags = static_cast<std::int16_t>(conditions);
    d.OffOnValue = 50;  // percent of the span, from the minimum
    d.OnOffValue = 42;
    EXPECT_EQ(LampLit(d, function, value), lit) << conditions << " at " << value;
  }
}

TEST(IOModuleActions, PreviewTellsWhatWouldBeSent) {
  const FunctionRecord function = Function(0, 200);
  IOModuleRecord d;
  d.ActionKind = 'v';
  d.OffOnValue = 12.25f;
  d.OnOffValue = -1;
  EXPECT_EQ(SwitchPreview(d, &function, true, 5), "Off->On: writes 24.5 to F");
  d.IncrementFlags = 1;
  EXPECT_EQ(SwitchPreview(d, &function, true, 5), "Off->On: writes 17.25 to F (it is now 5)");
  EXPECT_EQ(SwitchPreview(d, &function, true, std::nullopt),
            "Off->On: steps F by 12.25, once its value has come");
  FunctionRecord silent = function;
  silent.ComboDT = static_cast<Byte>(DataType::XplaneDataref);
  EXPECT_EQ(SwitchPreview(d, &silent, true, std::nullopt),
            "Off->On: sends nothing: F is not read from the simulator, so no step can start");
  d.ActionKind = 'c';
  d.OffOnValue = 2;
  EXPECT_EQ(SwitchPreview(d, &function, true, 5), "Off->On: runs sim/b");
  d.OffOnValue = 3;
  EXPECT_EQ(SwitchPreview(d, &function, true, 5), "Off->On: sends nothing: there is no such command");
  d = {};
  d.RawMaximum = 4000;
  EXPECT_EQ(AnaloguePreview(d, &function, 1000), "raw 1000: writes 50 to F");
}

}  // namespace tvx::iomoduleactionstest
