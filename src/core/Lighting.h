// The cockpit lighting as the gauges get it: one word, sent with command 8 whenever it changes.
#pragma once

#include <cstdint>

namespace tvx {

// The lights mode, its second setting; 0: by the lights that the first setting names.
inline constexpr int kLightsAlways = 1;
inline constexpr int kLightsNever = 2;

// The lighting word, low byte first:
//   bits 4..7   brightness step 0..15 of the faces (0 while they are dark)
//   bit 0       faces lit          bit 1  first bus powered      bit 2  second bus powered
//   bit 14      instrument lights on                 bit 15      navigation lights on
class Lighting {
 public:
  // `level` 0..1023; the buses in volts; navigationLights 0 off. `setting1`, `setting2`: the lights mode.
  // (LightsSetting1, LightsSetting2 of the configuration.) Returns true when the gauges must be told.
  bool Update(double level, double bus1, double bus2, double navigationLights, int setting1, int setting2);
  // Makes the next Update return true.
  void Repeat() { repeat_ = true; }

  std::int32_t Word() const { return word_; }
  int BrightnessStep() const { return static_cast<int>(word_ >> 4 & 15); }
  bool InstrumentLights() const { return instrumentLights_; }
  bool NavigationLights() const { return navigationLights_; }

 private:
  int storedLevel_ = 0;
  float storedBus1_ = 0, storedBus2_ = 0;
  bool instrumentLights_ = false, navigationLights_ = false;
  std::int32_t word_ = 0;
  bool repeat_ = false;
};

}  // namespace tvx
