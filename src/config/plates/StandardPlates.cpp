#include "config/plates/StandardPlates.h"

#include "config/faces/ReadyFaces.h"

namespace tvx {

void FillStandardPlates(ConfigModel& model) {
  if (!model.Plates.empty()) return;
  model.Plates = {PlateOfFace({"Percent 0-100", 0, {}, {{0, 135}, {100, 945}}})};
  for (const char* name : {"Airspeed 40-200 kt", "Vertical speed 2000 ft/min", "Engine speed 0-3500 RPM",
                           "Fuel left 0-26 gal", "Fuel right 0-26 gal"}) {
    model.Plates.push_back(BuiltInPlate(name));
  }
}

}  // namespace tvx
