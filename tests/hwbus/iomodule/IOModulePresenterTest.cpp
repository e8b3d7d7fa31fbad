#include "hwbus/iomodule/IOModulePresenter.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::iomodulepresentertest {

struct IOModuleEditorTest : testing::Test {
  IOModuleEditorTest() {
    for (const int number : {60, 61}) {
      FunctionRecord& f = model.Functions[static_cast<std::size_t>(number)];
      f.ShortName = "F";
      f.FullName = "#1:sim/a\r\n";
      f.boxMaximumValue = 50;
      f.ComboDT = static_cast<Byte>(number == 60 ? DataType::Float : DataType::XplaneCmnd);
    }
  }
  ConfigModel model;
  FakeMessageBoxes boxes;
  IOModulePresenter editor{model, boxes};
};

constexpr IOModuleInput kSwitch{1, IOModuleKind::Switch, 10};
constexpr IOModuleInput kLastOfB{1, IOModuleKind::Switch, 15}, kFirstOfC{1, IOModuleKind::Switch, 16};
constexpr IOModuleInput kAxis{2, IOModuleKind::Analogue, 7};
constexpr IOModuleInput kLamp{1, IOModuleKind::Lamp, 31};
const std::string kLimits = "One of the definitions is incorrect or out of limits";
const std::string kEncoder =
    "Encoders must have two switches defined with successive numbers\r\n"
    "and must be within the same group (A to F) and lowest number must be encoder A.";

TEST_F(IOModuleEditorTest, RefusesWithTheRightMessage) {
  using Change = std::function<void(IOModuleRecord&)>;
  const struct {
    IOModuleInput input;
    Change change;
    std::string message;  // empty: stored
  } cases[] = {
      {kSwitch, [](IOModuleRecord&) {}, ""},
      {kSwitch, [](IOModuleRecord& d) { d.FunctionNr = 62; }, "No function selected"},  // not defined
      {kSwitch, [](IOModuleRecord& d) { d.FunctionNr = 400; }, "No function selected"},
      {kSwitch, [](IOModuleRecord& d) { d.OffOnValue = 101; }, kLimits},
      {kSwitch, [](IOModuleRecord& d) { d.IncrementFlags = 1, d.OffOnValue = 51; }, kLimits},
      {kSwitch, [](IOModuleRecord& d) { d.IncrementFlags = 1, d.OffOnValue = -50, d.OnOffValue = 999; }, ""},
      {kSwitch, [](IOModuleRecord& d) { d.DebounceTime = 21; }, "A debounce time must be between 0 and 20"},
      {kSwitch, [](IOModuleRecord& d) { d.ActionKind = 'd', d.FunctionNr = 0; }, "No keystroke(s) selected"},
      {kSwitch, [](IOModuleRecord& d) { d.ActionKind = 'n', d.FunctionNr = 0; }, ""},
      {kSwitch, [](IOModuleRecord& d) { d.ActionKind = 'c', d.OffOnValue = 1; }, "No function selected"},
      {kSwitch, [](IOModuleRecord& d) { d.ActionKind = 'c', d.FunctionNr = 61, d.OffOnValue = 2; }, kLimits},
      {kSwitch, [](IOModuleRecord& d) { d.SwitchType = 3; }, kEncoder},
      {kLastOfB, [](IOModuleRecord& d) { d.SwitchType = 1; }, kEncoder},
      {kFirstOfC, [](IOModuleRecord& d) { d.SwitchType = 2; }, kEncoder},
      {kAxis, [](IOModuleRecord& d) { d.RawMaximum = 4096; }, kLimits},
      {kAxis, [](IOModuleRecord& d) { d.OnOffValue = 2048; }, ""},
      {kAxis, [](IOModuleRecord& d) { d.OffOnValue = 3000, d.OnOffValue = 2048; }, kLimits},
      {kAxis, [](IOModuleRecord& d) { d.DeadBand = -1; }, kLimits},
      {kLamp, [](IOModuleRecord& d) { d.IncrementFlags = 0; }, kLimits},
      {kLamp, [](IOModuleRecord& d) { d.IncrementFlags = 4, d.OffOnValue = 101; }, kLimits},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(i);
    boxes.shown.clear();
    editor.Remove(cases[i].input);
    IOModuleRecord definition = editor.DefinitionOf(cases[i].input);
    definition.FunctionNr = 60;
    cases[i].change(definition);
    const bool good = cases[i].message.empty();
    EXPECT_EQ(editor.Store(definition), good);
    EXPECT_EQ(boxes.shown, good ? Texts{} : Texts{cases[i].message});
    EXPECT_EQ(editor.Defined(cases[i].input), good);
    editor.Remove(cases[i].input);
  }
}

TEST_F(IOModuleEditorTest, TheTwoHalvesOfAnEncoderFitTogether) {
  IOModuleRecord a = editor.DefinitionOf(kSwitch);
  a.FunctionNr = 60;
  a.SwitchType = 1;
  ASSERT_TRUE(editor.Store(a));
  IOModuleRecord b = a;
  b.Input = static_cast<std::int16_t>(a.Input + 1);
  EXPECT_FALSE(editor.Store(b)) << "two encoders A side by side";
  b.SwitchType = 2;
  EXPECT_TRUE(editor.Store(b));
  b.SwitchType = 0;
  a.SwitchType = 1;
  EXPECT_TRUE(editor.Store(b));
  EXPECT_FALSE(editor.Store(a)) << "its other half is a toggle now";
}

TEST_F(IOModuleEditorTest, StoringReplacesAndRemovingKeepsTheOthers) {
  for (const IOModuleInput& input : {kSwitch, kAxis, kLamp}) {
    IOModuleRecord definition = editor.DefinitionOf(input);
    definition.FunctionNr = 60;
    ASSERT_TRUE(editor.Store(definition));
    ASSERT_TRUE(editor.Store(definition));
  }
  EXPECT_EQ(model.IOMCount(), 3);
  EXPECT_TRUE(model.ConfigChanged);
  EXPECT_TRUE(editor.Remove(kAxis));
  EXPECT_FALSE(editor.Remove(kAxis));
  ASSERT_EQ(model.IOMCount(), 2);
  EXPECT_EQ(model.IOModuleInputs[1].Input, 1231);
}

TEST(IOModuleInput, NumbersAndWhatTheyMean) {
  for (const int input : {0, 999, 1048, 1108, 1232, 3000, -1000})
    EXPECT_FALSE(IOModuleInputOf(input)) << input;
  for (const IOModuleInput& input : {kSwitch, kAxis, kLamp})
    EXPECT_EQ(IOModuleInputOf(IOModuleInputNumber(input)), input);
  EXPECT_EQ(IOModuleInputNumber(kAxis), 2107);
}

TEST(IOModuleTouch, FindsTheSwitchOrAxisThatMoves) {
  IOModuleTouch touch(2);
  IOModuleReport report;
  report.Groups[5] = 0xFF;
  report.Analogue[3] = 1000;
  EXPECT_FALSE(touch.Take(report)) << "the first report is where everything stands";
  report.Analogue[3] = 1199;
  EXPECT_FALSE(touch.Take(report)) << "noise";
  report.Analogue[3] = 1200;
  EXPECT_EQ(touch.Take(report), (IOModuleInput{2, IOModuleKind::Analogue, 3}));
  EXPECT_FALSE(touch.Take(report));
  report.Groups[5] = 0xFE;
  EXPECT_EQ(touch.Take(report), (IOModuleInput{2, IOModuleKind::Switch, 47}));
  EXPECT_FALSE(touch.Take(report));
}

}  // namespace tvx::iomodulepresentertest
