#include "config/plates/PlateLookup.h"
#include "config/plates/PlatePresenter.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::platetest {

struct Point {
  std::size_t box;
  const char *value, *needle;
};

PlateBoxes Boxes(std::initializer_list<Point> points) {
  PlateBoxes boxes;
  for (const Point& p : points) {
    boxes.value[p.box] = p.value;
    boxes.needle[p.box] = p.needle;
  }
  return boxes;
}

TEST(PlateCheck, TellsTheFirstFault) {
  const std::pair<PlateBoxes, const char*> rows[] = {
      {Boxes({{0, "0", "0"}, {1, "10", "100"}}), "Plate verified and no errors found"},
      {Boxes({{0, "-5", ""}, {3, "-1", "10"}, {20, "7.5", "900"}}), "Plate verified and no errors found"},
      {Boxes({{1, "10", "100"}}), "Minimum value missing; Please correct"},
      {Boxes({{0, "low", "0"}, {1, "10", "100"}}), "At valuebox 0: value is no number; Please correct."},
      {Boxes({{0, "29,92", "0"}, {1, "30.1", "100"}}), "Plate verified and no errors found"},
      {Boxes({{0, "0", "0"}, {1, "10", "1080"}}),
       "At valuebox 1: Needle position must be 0 to 1079; Please correct."},
      {Boxes({{0, "0", "0"}, {1, "10", ""}}), "At valuebox 1: Needle position is empty; Please correct."},
      {Boxes({{0, "0", "0"}, {4, "20", "1"}, {20, "10", "2"}}),
       "At valuebox 20: value lower than or equal to previous; Please correct."},
      {Boxes({{0, "0", "0"}, {2, "x", "1"}}), "At valuebox 2: value is no number; Please correct."},
      {Boxes({{0, "5", "0"}}), "Minimum and maximum values are equal; Please correct."},
  };
  for (const auto& [boxes, text] : rows) {
    const PlateVerdict verdict = CheckPlateBoxes(boxes);
    EXPECT_EQ(verdict.text, text);
    EXPECT_EQ(verdict.good, verdict.text == "Plate verified and no errors found");
  }
}

TEST(PlateBoxes, GoIntoTheirEntries) {
  const PlateBoxes boxes = Boxes({{0, "40", "90"}, {1, "50.5", "146.5"}, {2, "60", "216"}});
  const PlateRecord plate = PlateOfBoxes(boxes, "Airspeed");
  EXPECT_EQ(plate, (PlateRecord{.Name = "Airspeed",
                                .Value = {0, 0, 40, 60, 40, 50.5, 60},
                                .Position = {0, 0, 90, 216, 90, 146, 216}}));
  const PlateBoxes back = BoxesOfPlate(plate);
  EXPECT_EQ(back.value, boxes.value);
  EXPECT_EQ(back.needle[1], "146");
}

// The lookup walks over all entries: an empty box in between must not bend the curve.
TEST(PlateBoxes, GapsDoNotBendTheCurve) {
  const PlateRecord plate =
      PlateOfBoxes(Boxes({{0, "-10", "0"}, {3, "10", "200"}, {4, "20", "400"}, {9, "30", "500"}}), "");
  for (const auto& [value, position] :
       {std::pair{-10.0, 0}, {0.0, 100}, {10.0, 200}, {15.0, 300}, {25.0, 450}, {99.0, 500}})
    EXPECT_NEAR(PlatePositionOf(plate, value), position, 1.0) << value;
}

// Whatever the order, and however few: a user must see what the needle follows.
TEST(PlateBoxes, ShowThePointsAsTheyWereStored) {
  const char *good = "Plate verified and no errors found",
             *equal = "Minimum and maximum values are equal; Please correct.",
             *lower = "At valuebox 1: value lower than or equal to previous; Please correct.";
  const std::tuple<decltype(PlateRecord::Value), decltype(PlateRecord::Position), PlateBoxes, const char*>
      rows[] = {
          {{0, 0, 5, 30, 5, 0, 20, 30, 0},
           {0, 0, 1, 3, 1, 0, 2, 3, 0},
           Boxes({{0, "5", "1"}, {1, "0", "0"}, {2, "20", "2"}, {3, "30", "3"}}),
           lower},
          {{0, 0, 5, 5, 5}, {0, 0, 7, 7, 7}, Boxes({{0, "5", "7"}}), equal},
          {{0, 0, 9, 1, 9, 1}, {0, 0, 7, 8, 7, 8}, Boxes({{0, "9", "7"}, {1, "1", "8"}}), lower},
          {{0, 0, -10, 0, -10, 0}, {0, 0, 500, 0, 500, 0}, Boxes({{0, "-10", "500"}, {1, "0", "0"}}), good},
          {{}, {}, {}, "Minimum value missing; Please correct"},
      };
  for (const auto& [value, position, boxes, words] : rows) {
    PlateRecord plate;
    plate.Value = value;
    plate.Position = position;
    EXPECT_EQ(BoxesOfPlate(plate), boxes) << words;
    EXPECT_EQ(CheckPlateBoxes(BoxesOfPlate(plate)).text, words);
  }
}

TEST(PlateBoxes, AFullPlateHasNoBoxBeyondItsLast) {
  PlateRecord plate;
  for (std::size_t entry = 2; entry < PlateRecord::kStoredPoints; ++entry) {
    plate.Value[entry] = static_cast<double>(entry) - 100;
    plate.Position[entry] = static_cast<std::int16_t>(entry);
  }
  plate.Value[3] = plate.Position[3] = 0;  // the highest value is a 0 at position 0
  const PlateBoxes boxes = BoxesOfPlate(plate);
  EXPECT_EQ(boxes.value.front() + " " + boxes.value.back() + " " + boxes.needle.back(), "-96 -76 24");
}

TEST(PlateBoxes, WhatIsFilledInIsShownBefore) {
  EXPECT_EQ(FilledIn(Boxes({{0, "0", ""}, {2, "10", "200"}, {3, "", "7"}})),
            Boxes({{0, "", "0"}, {1, "5", "100"}}));
  EXPECT_EQ(FilledIn(PlateBoxes{}), PlateBoxes{});
}

TEST(PlateLinear, FillsBetweenMinimumAndLastBox) {
  PlateBoxes boxes = Boxes({{0, "0", ""}, {2, "99", "7"}, {3, "1", ""}});
  EXPECT_TRUE(FillLinear(boxes).good);
  EXPECT_EQ(boxes.value[1] + ' ' + boxes.value[2] + ' ' + boxes.needle[2], "0.33 0.67 7");
  boxes = Boxes({{0, "-100", ""}, {4, "100", ""}});
  EXPECT_TRUE(FillLinear(boxes).good);
  EXPECT_EQ(boxes.value[1] + ' ' + boxes.value[3], "-50.0 50.0");
  boxes = Boxes({{4, "100", ""}});
  EXPECT_EQ(FillLinear(boxes).text, "Minimum value missing; Please correct");
}

struct PlateControlTest : testing::Test {
  PlateControlTest() { model.Plates = {PlateOfBoxes(Boxes({{0, "0", "0"}, {1, "10", "500"}}), "first")}; }
  ConfigModel model;
  FakeMessageBoxes boxes;
  PlatePresenter plates{model, boxes};
};

TEST_F(PlateControlTest, ANewPlateNeedsAName) {
  plates.CmdCreateNewPlate();
  plates.Boxes = Boxes({{0, "1", "0"}, {1, "2", "9"}});
  for (const auto& [name, message] :
       {std::pair{"  ", "Platename missing"}, {"5\" gauge", "Plate name missing or incorrect"}}) {
    plates.Name = name;
    EXPECT_FALSE(plates.CmdSaveNewPlate());
    EXPECT_EQ(boxes.shown.back(), message);
  }
  EXPECT_TRUE(plates.Unsaved());
  plates.Name = "second";
  EXPECT_TRUE(plates.CmdSaveNewPlate());
  ASSERT_EQ(model.PlateCount(), 2);
  EXPECT_EQ((std::tuple{model.Plates[0].Name + model.Plates[1].Name, model.Plates[1].Position[3],
                        plates.PlateNumber()}),
            (std::tuple{"firstsecond", 9, 1}));
  EXPECT_FALSE(plates.Unsaved());
  EXPECT_TRUE(model.ConfigChanged);
}

TEST_F(PlateControlTest, WhatIsNoNumberIsStoredNowhere) {
  for (const auto& [value, needle] : {std::pair{"1.000,5", "9"}, {"2", "1080"}, {"2", "-1"}, {"2", "9o"}}) {
    const PlateRecord before = model.Plates[0];
    plates.CmdCreateNewPlate();
    plates.Name = "new";
    plates.Boxes = Boxes({{0, "1", "0"}, {1, value, needle}});
    EXPECT_FALSE(plates.CmdSaveNewPlate()) << value;
    plates.Select(0);
    plates.CmdUpdatePlate();
    plates.Boxes.value[1] = value;
    plates.Boxes.needle[1] = needle;
    EXPECT_FALSE(plates.cmdSavePlate()) << value;
    EXPECT_EQ(model.Plates.size(), 1u);
    EXPECT_EQ(model.Plates[0].Value, before.Value);
    EXPECT_EQ(boxes.asked.size(), 0u) << "refused before it is asked about";
  }
  EXPECT_EQ(boxes.shown.back(), "At valuebox 1: Needle position must be 0 to 1079; Please correct.");
}

TEST_F(PlateControlTest, ANumberThatAGaugeCannotHoldIsRefusedAloud) {
  model.Plates.resize(300);
  plates.SetTarget({.gaugeID = 9});
  for (const auto& [plate, taken] : {std::pair{255, true}, {256, false}}) {
    plates.Select(plate);
    EXPECT_EQ(plates.Assign(), taken);
    EXPECT_EQ(model.Gauges[9].GaugeSetting3, 255);
  }
  EXPECT_EQ(boxes.shown.back(), "A gauge can only have one of the Plates 0 to 255. This is Plate 256.");
}

TEST_F(PlateControlTest, AnUpdateAsksFirst) {
  plates.Select(0);
  plates.CmdUpdatePlate();
  EXPECT_STREQ(plates.Caption(), "Updating Current Plate Calibration");
  plates.Boxes.needle[1] = "600";
  EXPECT_TRUE(plates.Unsaved());
  boxes.answers = {kAnswerNo, kAnswerYes};
  EXPECT_FALSE(plates.cmdSavePlate());
  EXPECT_EQ(model.Plates[0].Position[5], 500);
  EXPECT_TRUE(plates.cmdSavePlate());
  EXPECT_EQ(model.Plates[0].Position[5], 600);
  EXPECT_STREQ(plates.Caption(), "Current Plate Calibration Settings");
  EXPECT_FALSE(plates.Unsaved());
}

TEST_F(PlateControlTest, RenamingRefusesWhatIsNoName) {
  plates.Select(0);
  plates.Name = "typed only";
  EXPECT_TRUE(plates.Unsaved());
  boxes.answers = {kAnswerYes};
  EXPECT_TRUE(plates.cmdSavePlate());
  EXPECT_EQ(plates.Name, "typed only") << "saving the points must not throw the name away";
  for (const char* name : {"", " ", "a\"b", "a\nb"}) {
    plates.Name = name;
    EXPECT_FALSE(plates.cmdSetNewName());
    EXPECT_EQ(boxes.shown.back(), "Plate name missing or incorrect");
    EXPECT_EQ(model.Plates[0].Name, "first");
  }
  plates.Name = "new name";
  EXPECT_TRUE(plates.cmdSetNewName());
  EXPECT_EQ(model.Plates[0].Name, "new name");
  plates.Select(7);
  plates.Name = "nobody's";
  EXPECT_FALSE(plates.cmdSetNewName());
}

TEST_F(PlateControlTest, PlateAndFunctionGoToTheTargetsNeedle) {
  model.Plates.resize(2);
  plates.Select(1);
  plates.SetTarget({.gaugeID = 9, .needle = 2, .command = 6});
  EXPECT_TRUE(plates.Assign());
  EXPECT_EQ(model.Gauges[9].GaugeSetting4, 1);
  EXPECT_EQ(plates.TargetPlate(), 1);
  model.Gauges[9].GaugeFunction1 = 61;
  model.Gauges[9].GaugeFunction2 = 62;
  EXPECT_EQ(plates.TargetFunction(), 62);
  boxes.answers = {kAnswerNo, kAnswerYes, kAnswerYes};
  EXPECT_FALSE(plates.ChangeFunction(70));
  EXPECT_TRUE(plates.ChangeFunction(70));
  EXPECT_EQ(model.Gauges[9].GaugeFunction2, 70);
  EXPECT_FALSE(plates.ChangeFunction(301));

  plates.SetTarget({.channel = 3});
  EXPECT_FALSE(plates.Assign());
  EXPECT_EQ(model.EngineCluster[3].Value3, 0);
  EXPECT_TRUE(plates.ChangeFunction(71));
  EXPECT_EQ(model.EngineCluster[3].Value2, 71);
}

}  // namespace tvx::platetest
