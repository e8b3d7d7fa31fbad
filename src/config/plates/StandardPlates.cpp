#include "config/plates/StandardPlates.h"

#include <initializer_list>
#include <string_view>

namespace tvx {
namespace {

struct Point {
  double value;
  std::int16_t position;  // 540 points up, three to a degree, clockwise
};

PlateRecord PlateOf(std::string_view name, std::initializer_list<Point> points) {
  PlateRecord plate;
  plate.Name = name;
  const auto put = [&plate](std::size_t entry, const Point& point) {
    plate.Value[entry] = point.value;
    plate.Position[entry] = point.position;
  };
  put(2, *points.begin());
  put(3, *(points.end() - 1));
  std::size_t entry = 4;
  for (const Point& point : points) put(entry++, point);
  return plate;
}

}  // namespace

void FillStandardPlates(ConfigModel& model) {
  if (!model.Plates.empty()) return;
  model.Plates = {
      PlateOf("Percent 0-100", {{0, 135}, {100, 945}}),
      PlateOf("Airspeed 40-200 kt", {{40, 135}, {80, 360}, {120, 600}, {160, 810}, {200, 990}}),
      PlateOf("Vertical speed +-2000 ft/min",
              {{-2000, 30}, {-1000, 135}, {0, 270}, {1000, 405}, {2000, 510}}),
      PlateOf("Engine speed 0-3500 RPM", {{0, 180}, {3500, 900}}),
      PlateOf("Fuel 0-26 gal", {{0, 180}, {26, 900}}),
  };
}

}  // namespace tvx
