// What the configuration form of a yoke makes of what is set there.
#include "ffb/YokePresenter.h"
#include "tests/ffb/YokeRig.h"

namespace tvx::test::yokepresentertest {

struct YokePresenterTest : testing::Test {
  YokeRig rig{2};
  YokePresenter first{rig.model, rig.pair, rig.boxes, rig.joystick, 1};
  YokePresenter second{rig.model, rig.pair, rig.boxes, rig.joystick, 2};
  // Whether the configuration counts as changed since the last call.
  bool TakeChanged() { return std::exchange(rig.model.ConfigChanged, false); }
};

TEST_F(YokePresenterTest, EverySettingIsKeptWithinItsRangeAndMarksTheChange) {
  using P = YokePresenter;
  using G = GeneralFFBRecord;
  const std::tuple<const char*, void (*)(P&, int), int, int, std::function<double(const P&)>> rows[] = {
      {"address", [](P& p, int v) { p.SetAddress(v); }, 0, 255, [](auto& p) { return p.Record().Address; }},
      {"force level", [](P& p, int v) { p.SetForceLevel(v); }, 1, 100,
       [](auto& p) { return p.Record().ForceLevel; }},
      {"joystick", [](P& p, int v) { p.SetJoystick(v, 0, 0, 0); }, 0, 15,
       [](auto& p) { return p.Record().JoystickNumber; }},
      {"rudder axis", [](P& p, int v) { p.SetJoystick(0, v, 0, 0); }, 0, 6,
       [](auto& p) { return p.Record().RudderAxis; }},
      {"left brake axis", [](P& p, int v) { p.SetJoystick(0, 0, v, 0); }, 0, 6,
       [](auto& p) { return p.Record().LeftBrakeAxis; }},
      {"right brake axis", [](P& p, int v) { p.SetJoystick(0, 0, 0, v); }, 0, 6,
       [](auto& p) { return p.Record().RightBrakeAxis; }},
      {"first Function", [](P& p, int v) { p.SetFunction(0, v); }, 0, 300,
       [](auto& p) { return p.Shared().FfbFunctions[0]; }},
      {"last Function", [](P& p, int v) { p.SetFunction(17, v); }, 0, 300,
       [](auto& p) { return p.Shared().FfbFunctions[17]; }},
      {"curve, roll airspeed", [](P& p, int v) { p.SetForcePoint(Axis::Roll, 12, v, 5); }, 0, 1000,
       [](auto& p) { return p.General().ForceTable[12].RollAirspeed; }},
      {"curve, pitch airspeed", [](P& p, int v) { p.SetForcePoint(Axis::Pitch, 0, v, 5); }, 0, 1000,
       [](auto& p) { return p.General().ForceTable[0].PitchAirspeed; }},
      {"curve, roll force", [](P& p, int v) { p.SetForcePoint(Axis::Roll, 0, 9, v); }, 0, 100,
       [](auto& p) { return p.General().ForceTable[0].RollForce; }},
      {"curve, pitch force", [](P& p, int v) { p.SetForcePoint(Axis::Pitch, 12, 9, v); }, 0, 100,
       [](auto& p) { return p.General().ForceTable[12].PitchForce; }},
      {"level", [](P& p, int v) { p.SetLevel(&G::Friction, v); }, 0, 100,
       [](auto& p) { return p.General().Friction; }},
      {"grip threshold", [](P& p, int v) { p.SetGripThreshold(v); }, 0, 511,
       [](auto& p) { return p.General().GripThreshold; }},
      {"shared number", [](P& p, int v) { p.SetShared(&YokeRecord::StallSpeed, v); }, 0, 32767,
       [](auto& p) { return p.Shared().StallSpeed; }},
      {"effect's frequency", [](P& p, int v) { p.SetEffect(11, v, 5); }, 0, 50,
       [](auto& p) { return p.Shared().Effects[11].Frequency; }},
      {"effect's level", [](P& p, int v) { p.SetEffect(0, 5, v); }, 0, 100,
       [](auto& p) { return p.Shared().Effects[0].Level; }},
  };
  for (YokePresenter* yoke : {&first, &second}) {
    for (const auto& [what, set, lowest, highest, kept] : rows) {
      SCOPED_TRACE(what);
      for (const int value : {lowest - 1, highest, highest + 1, lowest}) {
        set(*yoke, value);
        EXPECT_EQ(kept(*yoke), std::clamp(value, lowest, highest)) << value;
        EXPECT_TRUE(TakeChanged()) << value;
      }
    }
  }
  EXPECT_EQ(rig.model.Yoke2.StallSpeed, 0) << "what is shared stands with the first";
  EXPECT_EQ(first.General().MaximumForce, 80) << "the standard values are written with the first change";
  EXPECT_EQ(first.Shared().Effects[3].Level, 20);
}

TEST_F(YokePresenterTest, OptionsModesAndButtonsGoToTheirOwnYokeAtOnce) {
  second.SetOption(yokeoption::kEffects, false);
  EXPECT_TRUE(TakeChanged());
  EXPECT_FALSE(rig.pair.Of(2).Settings().Has(yokeoption::kEffects));
  second.SetOption(yokeoption::kJoystick, true);
  EXPECT_EQ(rig.model.Yoke2.OptionBits,
            (yokeoption::kStandard & ~yokeoption::kEffects) | yokeoption::kJoystick);
  EXPECT_EQ(rig.model.Yoke1.OptionBits, yokeoption::kStandard);
  TakeChanged();
  first.SetStartMode(YokeMode::Centre);
  EXPECT_TRUE(TakeChanged());
  EXPECT_EQ(rig.pair.Of(1).Settings().startMode, YokeMode::Centre);
  first.SetButton(15, ButtonAction::Command, "sim/\"x\"\r\ny");
  EXPECT_TRUE(TakeChanged());
  EXPECT_EQ(rig.model.Yoke1.Buttons[15].Text, "sim/xy");
  EXPECT_EQ(rig.model.Yoke1.Buttons[15].Action, 8);
  rig.model.GeneralFFB.MasterYoke = 2;
  first.SetLevel(&GeneralFFBRecord::MaximumForce, 1);
  first.SetEffect(2, 9, 9);
  TakeChanged();
  first.SetStandardForces();
  EXPECT_TRUE(TakeChanged());
  EXPECT_EQ((std::array<int, 3>{rig.model.GeneralFFB.MasterYoke, rig.model.GeneralFFB.MaximumForce,
                                rig.model.Yoke1.Effects[2].Level}),
            (std::array{2, 80, 20}));
}

TEST_F(YokePresenterTest, WhatHasNoPlaceChangesNothing) {
  first.SetButton(16, ButtonAction::Command, "x");
  first.SetFunction(-1, 5);
  first.SetFunction(18, 5);
  first.SetForcePoint(Axis::Roll, 13, 1, 1);
  first.SetForcePoint(Axis::Roll, 1, std::nan(""), 1);
  first.SetForcePoint(Axis::Roll, 1, 1, std::nan(""));
  first.SetEffect(12, 1, 1);
  first.SetEffect(1, std::nan(""), 1);
  EXPECT_FALSE(TakeChanged());
  EXPECT_TRUE(IsBlank(rig.model.GeneralFFB));
}

TEST_F(YokePresenterTest, EveryPlaceTakesItsAxisAsItStandsNow) {
  rig.UsePedals();
  rig.Start(200);
  rig.hardware[0].Hold(0, 100), rig.hardware[0].Hold(1, -50);
  rig.Run(200);
  rig.joystick.info.RPos = 31000, rig.joystick.info.XPos = 1000, rig.joystick.info.YPos = 2000;
  const std::array<int, 5> raw{32768 + 5000, 32768 - 2500, 31000, 1000, 2000};
  EXPECT_EQ(YokePresenter::Places().size(), 13u);
  for (const YokePresenter::Place& place : YokePresenter::Places()) {
    const YokeRecord before = rig.model.Yoke1;
    first.SetPlace(place);
    EXPECT_EQ(RawOf(rig.model.Yoke1.*place.field), raw[static_cast<std::size_t>(place.source)]) << place.name;
    EXPECT_TRUE(TakeChanged()) << place.name;
    rig.model.Yoke1 = before;
  }
  EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST_F(YokePresenterTest, APlaceThatCannotBeTakenIsSaidSo) {
  using Source = YokePresenter::Place::Source;
  const std::tuple<void (*)(YokeRig&), Source, const char*> rows[] = {
      {[](YokeRig& r) { r.hardware[0].silent = true, r.Run(400); }, Source::Pitch,
       "The yoke does not answer."},
      {[](YokeRig& r) { r.model.Yoke1.RudderAxis = 0; }, Source::Rudder, "No Rudder axe defined"},
      {[](YokeRig& r) { r.model.Yoke1.LeftBrakeAxis = 0; }, Source::LeftBrake, "No Brake axe defined"},
      {[](YokeRig& r) { r.model.Yoke1.RightBrakeAxis = 0; }, Source::RightBrake, "No Brake axe defined"},
      {[](YokeRig& r) { r.model.Yoke1.JoystickNumber = 3; }, Source::RightBrake,
       "The joystick is not there."},
      {[](YokeRig& r) { r.joystick.info.RPos = 1000; }, Source::Rudder,
       "The Center is not in Range; Set Left and Right limts first"},
      {[](YokeRig& r) { r.joystick.info.RPos = 60000; }, Source::Rudder,
       "The Center is not in Range; Set Left and Right limts first"},
  };
  for (const auto& [when, source, words] : rows) {
    YokeRig yokes;
    YokePresenter presenter{yokes.model, yokes.pair, yokes.boxes, yokes.joystick, 1};
    yokes.UsePedals();
    yokes.Start(200);
    when(yokes);
    for (const YokePresenter::Place& place : YokePresenter::Places()) {
      if (place.source != source || (place.source == Source::Rudder && !place.centre)) continue;
      yokes.boxes.shown.clear();
      presenter.SetPlace(place);
      EXPECT_EQ(yokes.boxes.shown, (Texts{words})) << place.name;
    }
    EXPECT_FALSE(yokes.model.ConfigChanged) << words;
  }
}

}  // namespace tvx::test::yokepresentertest
