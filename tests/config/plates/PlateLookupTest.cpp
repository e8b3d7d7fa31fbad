#include "config/plates/PlateLookup.h"
#include "tests/Test.h"

namespace tvx::platelookuptest {

// Airspeed: 40 at 100, 60 at 200, 100 at 500, 200 at 1000; the highest value's own position differs from the
// last point's, to tell which is taken.
PlateRecord AirspeedPlate() {
  PlateRecord plate;
  plate.Value = {0, 0, 40, 200, 40, 60, 100, 200};
  plate.Position = {0, 0, 100, 1001, 100, 200, 500, 1000};
  return plate;
}

TEST(PlateLookup, ConvertsValuesToPositions) {
  const std::tuple<const char*, double, int> cases[] = {
      {"below the lowest value", -10, 100},
      {"between the first points", 50, 150},
      {"rounded down, never up", 60.2, 201},
      {"between uneven points", 150, 750},
      {"just below the highest value", 199.9, 999},
      {"the highest value takes its stored position", 200, 1001},
      {"above the highest value", 5000, 1001},
      {"no number counts as 0", std::numeric_limits<double>::quiet_NaN(), 100},
  };
  const PlateRecord plate = AirspeedPlate();
  for (const auto& [what, value, position] : cases) EXPECT_EQ(PlateLookup(plate, value), position) << what;
}

TEST(PlateLookup, KeepsNeedlesInTheirRange) {
  PlateRecord plate = AirspeedPlate();
  plate.Position[2] = -50;
  plate.Position[3] = 1500;
  EXPECT_EQ((std::tuple{NeedlePosition(plate, 0), NeedlePosition(plate, 300), PlateLookup(plate, 300)}),
            (std::tuple{0, 1079, 1500}));
}

TEST(PlateLookup, SurvivesPlatesThatMakeNoSense) {
  PlateRecord empty;
  EXPECT_EQ(PlateLookup(empty, 17), 0);
  PlateRecord full;  // 21 points that never reach the highest value: the search ends past the last one
  full.Value[3] = 1e9;
  for (std::size_t k = 4; k < 25; ++k) full.Value[k] = static_cast<double>(k), full.Position[k] = 100;
  EXPECT_EQ(PlateLookup(full, 24), 100);
  EXPECT_GE(PlateLookup(full, 1e6), std::numeric_limits<std::int16_t>::min());
  PlateRecord backwards = AirspeedPlate();
  backwards.Value[2] = 200;
  backwards.Value[3] = 40;
  EXPECT_EQ(PlateLookup(backwards, 100), 1001);
}

}  // namespace tvx::platelookuptest
