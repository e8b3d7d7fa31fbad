// What the gauge list shows of a gauge that only its kind of instrument knows.
#pragma once

#include <string>

namespace tvx {

class GaugeAdvice {
 public:
  virtual ~GaugeAdvice() = default;
  // "its own values", or what it lacks ("needs a Plate"); empty where all is assigned.
  virtual std::string WorkWords(int gaugeID) const = 0;
  virtual bool NeedsWork(int gaugeID) const = 0;
  // How many of its needles have a Plate: 0 to 2.
  virtual int NeedlesOf(int gaugeID) const = 0;
  // Whether its first, or second, Function can be chosen.
  virtual bool HasFunction(int gaugeID, int needle) const = 0;
};

}  // namespace tvx
