#include "drawn/faces/MakeFace.h"

#include "drawn/Gaugetypes.h"
#include "drawn/faces/dials/AltimeterFace.h"
#include "drawn/faces/dials/AttitudeFace.h"
#include "drawn/faces/dials/CardFaces.h"
#include "drawn/faces/dials/ClockFace.h"
#include "drawn/faces/dials/IOModuleFace.h"
#include "drawn/faces/dials/NeedleFace.h"
#include "drawn/faces/dials/PlainFace.h"
#include "drawn/faces/dials/TrimFace.h"
#include "drawn/faces/dials/VorFace.h"
#include "drawn/faces/radios/AudioFace.h"
#include "drawn/faces/radios/AutopilotFace.h"
#include "drawn/faces/radios/DmeFace.h"
#include "drawn/faces/radios/RadioFaces.h"
#include "drawn/faces/radios/TransponderFace.h"

namespace tvx::drawn {
namespace {

using Make = InstrumentWidget* (*)(Device&, const ConfigModel&, QWidget*);

// The face of a kind of device; nullptr where the device is of another kind.
template <typename Kind, typename Face>
InstrumentWidget* Of(Device& device, const ConfigModel& model, QWidget* parent) {
  auto* kind = dynamic_cast<Kind*>(&device);
  if (kind == nullptr) return nullptr;
  if constexpr (std::is_constructible_v<Face, Kind&, const ConfigModel&, QWidget*>) {
    return new Face(*kind, model, parent);
  } else {
    return new Face(*kind, parent);
  }
}

struct Row {
  Byte type;
  Make make;
};
constexpr Row kRows[] = {
    {gaugetype::kSmallNeedle, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kNeedleAndDisplay, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kTwoNeedlesBeside, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kLargeNeedle, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kLargeTwoNeedles, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kSmallTwoNeedles, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kClusterHousing, Of<NeedleDevice, NeedleFace>},
    {gaugetype::kIOModule, Of<IOModuleDevice, IOModuleFace>},
    {gaugetype::kAltimeter, Of<AltimeterDevice, AltimeterFace>},
    {gaugetype::kAttitude, Of<AttitudeDevice, AttitudeFace>},
    {gaugetype::kClock, Of<ClockDevice, ClockFace>},
    {gaugetype::kHeading, Of<HeadingDevice, HeadingFace>},
    {gaugetype::kVor1, Of<VorDevice, VorFace>},
    {gaugetype::kVor2, Of<VorDevice, VorFace>},
    {gaugetype::kAdf, Of<AdfDevice, AdfFace>},
    {gaugetype::kClockWithTemperature, Of<ClockDevice, ClockFace>},
    {gaugetype::kRadioA, Of<RadioDevice, RadioFace>},
    {gaugetype::kRadioB, Of<RadioDevice, RadioFace>},
    {gaugetype::kTransponderA, Of<TransponderDevice, TransponderFace>},
    {gaugetype::kDme, Of<DmeDevice, DmeFace>},
    {gaugetype::kTransponderB, Of<TransponderDevice, TransponderFace>},
    {gaugetype::kComNav, Of<ComNavDevice, ComNavFace>},
    {gaugetype::kAdfRadio, Of<RadioDevice, RadioFace>},
    {gaugetype::kKeyedTransponder, Of<TransponderDevice, TransponderFace>},
    {gaugetype::kDmeWithFrequency, Of<DmeDevice, DmeFace>},
    {gaugetype::kAutopilot, Of<AutopilotDevice, AutopilotFace>},
    {gaugetype::kAudio, Of<AudioDevice, AudioFace>},
    {gaugetype::kRmi, Of<RmiDevice, RmiFace>},
    {gaugetype::kTrim, Of<TrimDevice, TrimFace>},
};

}  // namespace

InstrumentWidget* MakeFace(Device& device, const ConfigModel& model, QWidget* parent) {
  for (const Row& row : kRows) {
    if (row.type != device.Id().type) continue;
    if (InstrumentWidget* face = row.make(device, model, parent)) return face;
  }
  return new PlainFace(device, parent);
}

}  // namespace tvx::drawn
