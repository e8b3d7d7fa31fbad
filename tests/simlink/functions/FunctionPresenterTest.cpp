#include "config/NameTables.h"
#include "simlink/datagrams/Packets.h"
#include "simlink/functions/FunctionListPresenter.h"
#include "simlink/functions/FunctionPresenter.h"
#include "simlink/references/FunctionEntries.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::functionpresentertest {

constexpr const char* kDatarefCode = "7";
constexpr const char* kCommandCode = "6";

struct FunctionEditTest : testing::Test {
  FunctionEditTest() {
    FillNameTables(model);
    FunctionRecord& used = model.Functions[60];
    used = {.ShortName = "Flaps", .FullName = "one\r\ntwo"};
    used.FunctionSetting = 3, used.Multiplier = 0.1f, used.Devider = 1, used.XPVal1 = 7;
  }
  FunctionRecord& At(int number) { return model.Functions[static_cast<std::size_t>(number)]; }

  ConfigModel model;
  FakeMessageBoxes boxes;
};

TEST_F(FunctionEditTest, EveryFieldReachesTheModel) {
  FunctionPresenter edit(model, boxes);
  ASSERT_TRUE(edit.Choose(60));
  EXPECT_EQ(edit.Draft().At("FullName"), "one\ntwo");
  EXPECT_EQ(edit.Draft().At("Multiplier"), "0.1");
  FunctionRecord wanted;
  int number = 0;
  FunctionRecord::Fields(wanted, [&](std::string_view name, auto& value) {
    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>) {
      value = std::string(name) + " '1'\r\n2";
      edit.Set(name, std::string(name) + " \"1\"\n2");
    } else if (name != "FunctionNr") {
      value = static_cast<std::decay_t<decltype(value)>>(++number % 7);
      edit.Set(name, ' ' + std::to_string(number % 7) + ' ');
    }
  });
  wanted.FunctionNr = 60;
  ASSERT_FALSE(edit.Save()) << edit.Problem()->field;
  EXPECT_EQ(DraftOf(At(60)), DraftOf(wanted));
  EXPECT_EQ(At(60).FullName, wanted.FullName);
  EXPECT_FALSE(edit.Changed());
  EXPECT_TRUE(model.ConfigChanged);
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(FunctionEditTest, WhatIsWrongIsNamedAndNothingIsSaved) {
  const std::array<const char*, 4> rows[] = {
      {"0", "ShortName", "  ", "The Short name of the function is missing"},
      {"0", "BoxAdd", "1.000,5", "Incorrect data"},
      {"0", "Multiplier", "inf", "Incorrect data"},
      {"0", "Devider", "1e39", "Incorrect data"},
      {"0", "XPindex2", "151", "Incorrect data"},
      {"0", "XPindex2", "-1", "Incorrect data"},
      {kDatarefCode, "XPindex2", "32768", "Incorrect data"},
      {"5", "XPVal4", "8", "Incorrect data"},
      {kDatarefCode, "XPVal4", "256", "Incorrect data"},
      {"0", "ComboClass", "12", "Incorrect data"},
      {"0", "BoxMacroNr", "x", "Incorrect data"},
      {"256", "ComboDT", "256", "Incorrect data"},
  };
  for (const auto& [type, field, text, message] : rows) {
    FunctionPresenter edit(model, boxes);
    edit.Choose(60);
    const FunctionDraft before = edit.Draft();
    edit.Set("ComboDT", type);
    edit.Set(field, text);
    const auto problem = edit.Save();
    ASSERT_TRUE(problem) << field << '=' << text;
    EXPECT_EQ(problem->field, field) << text;
    EXPECT_EQ(boxes.shown.back(), message);
    EXPECT_FALSE(problem->words.empty());
    EXPECT_EQ(DraftOf(At(60)), before);
  }
  EXPECT_FALSE(model.ConfigChanged);
}

TEST_F(FunctionEditTest, OnlyConfigurableFunctionsAreSaved) {
  for (const auto& [number, editable] : {std::pair{50, false}, {51, true}, {269, true}, {270, false}}) {
    FunctionPresenter edit(model, boxes);
    boxes.shown.clear();
    edit.Choose(number);
    EXPECT_EQ(edit.Editable(), editable) << number;
    edit.Set("ShortName", "New");
    EXPECT_EQ(!edit.Save().has_value(), editable) << number;
    EXPECT_EQ(At(number).ShortName, editable ? "New" : "");
  }
  EXPECT_EQ(boxes.shown, Texts{"Function number must be between 51 and 269"});
  EXPECT_EQ(At(269).FunctionNr, 269);
  EXPECT_EQ(At(269).Multiplier, 1) << "a new Function's factors leave the value as it is";
  FunctionPresenter edit(model, boxes);
  for (const int number : {0, 301, -1}) EXPECT_FALSE(edit.Choose(number));
}

TEST_F(FunctionEditTest, CopiedEntriesGetTheNextNumber) {
  const std::tuple<const char*, const char*, const char*, int, const char*> rows[] = {
      {kDatarefCode, "", "sim/a", 5, "#1:sim/a\n"},
      {kDatarefCode, "#1:sim/a\n", "sim/n1[0]", 2, "#1:sim/a\n#2:sim/n1[2]\n"},
      {kDatarefCode, "#3:sim/c", "sim/d[12]", 0, "#3:sim/c\n#4:sim/d[0]\n"},
      {kDatarefCode, "", "sim/d[12", 0, "#1:sim/d[12\n"},
      {kCommandCode, "#1:a/b\n#8:a/c\n#2:a/d\n", "a/e", 0, "#1:a/b\n#8:a/c\n#2:a/d\n#9:a/e\n"},
      {kCommandCode, "# 5:x\n#x\n#7\n#99999999999:z\n", "a/e", 0, "# 5:x\n#x\n#7\n#99999999999:z\n#1:a/e\n"},
  };
  for (const auto& [type, before, path, element, after] : rows) {
    FunctionPresenter edit(model, boxes);
    edit.Set("ShortName", "N");
    edit.Set("ComboDT", type);
    edit.Set("FullName", before);
    const int number = NextEntryNumber(before);
    EXPECT_TRUE(edit.CopyEntry(path, element)) << after;
    EXPECT_EQ(edit.Draft().At("FullName"), after);
    ASSERT_FALSE(edit.Save());
    const auto found = CutEntry(At(51).FullName, number);
    ASSERT_TRUE(found) << At(51).FullName;
    EXPECT_EQ(*found, WithElement(path, element));
  }
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(FunctionEditTest, WhatCannotBeCopiedChangesNothing) {
  const std::tuple<const char*, const char*, std::optional<std::string_view>, const char*> rows[] = {
      {kDatarefCode, "", {}, "Incorrect X-Plane command; Cannot be copied"},
      {kCommandCode, "", "===== Not Found =====", "Incorrect X-Plane command; Cannot be copied"},
      {kCommandCode, "", "a/#2:b", "Incorrect X-Plane command; Cannot be copied"},
      {kDatarefCode, "#4:a/b\n", "a/c", "This Function has no room for entry #5: its data type holds 4."},
      {"4", "", "a/c", "This Function has no room for entry #1: its data type holds 0."},
  };
  for (const auto& [type, before, path, message] : rows) {
    FunctionPresenter edit(model, boxes);
    edit.Set("ComboDT", type);
    edit.Set("FullName", before);
    EXPECT_FALSE(edit.CopyEntry(path, 0)) << message;
    EXPECT_EQ(boxes.shown.back(), message);
    EXPECT_EQ(edit.Draft().At("FullName"), before);
  }
}

TEST_F(FunctionEditTest, ACopiedDatarefIsReadUnlessItsRateWasSet) {
  FunctionPresenter edit(model, boxes);
  edit.Set("ComboDT", kDatarefCode);
  edit.Set("XPVal2", "25");
  for (const char* path : {"sim/a", "sim/b"}) edit.CopyEntry(path, 0);
  EXPECT_EQ(edit.Draft().At("XPVal1") + ' ' + edit.Draft().At("XPVal2"), "10 25");
}

TEST(AdviceOnFunctions, SaysWhatWillHardlyWork) {
  using enum DataType;
  const struct {
    DataType type;
    const char* lines;
    Byte rate1, rate2;
    float factor;
    const char* words;  // empty: there is no advice
    FunctionUse use = FunctionUse::Gauge;
  } rows[] = {{XplaneDataref, "Left tank\r\n#1:a/b\r\n", 10, 0, 1, ""},
              {XplaneDataref, "#1:a/b\r\n", 0, 0, 1, "#1 is written only"},
              {XplaneDataref, "#1:a/b\r\n", 10, 5, 1, "no line #2:"},
              {XplaneDataref, "text", 0, 0, 1, "No data reference yet"},
              {XplaneDataref, "#1:a/b\r\n", 10, 0, 0, "0"},
              {XplaneCmnd, "", 0, 0, 0, "No command yet"},
              {XplaneCmnd, "#1:a/b\r\n", 0, 0, 0, ""},
              {Float, "", 0, 0, 1, ""},
              {Float, "", 0, 0, 0, "0"},
              {Float, "", 0, 0, 1, "", FunctionUse::InputSwitch},
              {Integer, "", 0, 0, 1, ""},
              {Integer, "", 0, 0, 1, "high byte first", FunctionUse::InputSwitch},
              {XplaneDataref, "#1 a/b\r\n", 10, 0, 1, "goes on with"},
              {XplaneDataref, "#0:a/b\r\n", 10, 0, 1, "goes on with"},
              {XplaneDataref, "#01:a/b\r\n", 10, 0, 1, "goes on with"},
              {XplaneDataref, "#1:a/b\r\n#5:a/c\r\n", 10, 0, 1, "#5: is never"},
              {XplaneDataref, "#1:a/b \r\n", 10, 0, 1, "#1: is followed by no path"},
              {XplaneDataref, "#1:a/b\r\n#1:a/c\r\n", 10, 0, 1, "twice"}};
  for (const auto& row : rows) {
    FunctionRecord f{.ShortName = "F", .FullName = row.lines};
    f.ComboDT = static_cast<Byte>(row.type);
    f.FuncType = static_cast<Byte>(row.use);
    f.XPVal1 = row.rate1;
    f.XPVal2 = row.rate2;
    f.Multiplier = f.Devider = row.factor;
    const std::string said = AdviceOn(f);
    EXPECT_EQ(said.empty(), *row.words == 0) << row.lines << said;
    EXPECT_TRUE(Holds(said, row.words)) << row.lines << said;
  }
}

TEST_F(FunctionEditTest, TheListTellsEachFunctionInItsColumns) {
  At(1) = {.ShortName = "Airspeed", .FullName = "a\tb\r\nc\r\n", .FuncType = 4, .ComboClass = 7};
  At(60).ComboClass = 2;
  At(60).FuncType = 7;
  At(70) = {.ShortName = "Odd", .FullName = "", .FuncType = 99, .ComboClass = 77};
  At(300).ShortName = "Version";
  const FunctionListPresenter list(model, boxes);
  const auto texts = [&list](const FunctionFilter& filter) {
    Texts all;
    for (const FunctionLine& line : list.Lines(filter)) all.push_back(line.text.substr(0, 40));
    return all;
  };
  const std::string standard = "----------------- Standard Functions for",
                    configurable = "----------------------- Configurable Fun",
                    airspeed = "001\tAirspeed\ta b c\tPlane\tGauge",
                    flaps = "060\tFlaps\tone two\tSurfaces\tSwitch and LE";
  EXPECT_EQ(texts({.definedOnly = true}),
            (Texts{standard, airspeed, "300\tVersion\t\t\t--", configurable, flaps, "070\tOdd\t\t\t"}));
  EXPECT_EQ(texts({.category = 2}), (Texts{standard, configurable, flaps}));
  EXPECT_EQ(texts({.use = 4}), (Texts{standard, airspeed, configurable}));
  EXPECT_EQ(texts({}).size(), 1 + 50 + 1 + 1 + 219u);
}

TEST_F(FunctionEditTest, EditsInTheListAreKeptUntilTheyAreSaved) {
  FunctionListPresenter list(model, boxes);
  list.Edit(61, {"Gear", "Gear handle", 2, 1});
  list.Edit(1, {"Not mine", "", 0, 0});
  list.Edit(60, list.Fields(60));
  EXPECT_EQ(list.Lines({.category = 2})[2].text, "061\tGear\tGear handle\tSurfaces\tInput Switch");
  EXPECT_EQ(At(61).ShortName, "");
  EXPECT_FALSE(list.MayClose());
  EXPECT_EQ(boxes.asked, Texts{"Updates are not saved yet; Continue?"});

  for (const ListedFunction& bad : {ListedFunction{"Flaps", "changed", 12, 0}, {" ", "", 0, 0}}) {
    list.Edit(60, bad);
    EXPECT_EQ(list.CmdSave(), 60);
    EXPECT_EQ(At(61).ShortName, "") << "all or nothing";
  }
  EXPECT_EQ(boxes.shown, Texts(2, "Incorrect data"));

  list.Edit(60, {"Fl\"aps", "lost", 11, 6});
  EXPECT_EQ(list.CmdSave(), std::nullopt);
  EXPECT_EQ(At(60).ShortName, "Fl'aps");
  EXPECT_EQ(At(60).FullName, "one\r\ntwo") << "several lines cannot be edited in one";
  EXPECT_EQ((std::tuple{At(60).FuncType, At(61).FullName, At(61).FunctionNr}),
            (std::tuple{6, "Gear handle", 61}));
  EXPECT_FALSE(list.Changed());
  EXPECT_TRUE(list.MayClose());
}

}  // namespace tvx::functionpresentertest
