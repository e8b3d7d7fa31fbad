// What is still to be done about a gauge, in words.
#pragma once

#include <string>

#include "config/plates/PlatePresenter.h"
#include "config/setup/GaugeAdvice.h"

namespace tvx {

// The Function that a needle shows, 0: none; and the number of its Plate.
int NeedleFunction(const ConfigModel& model, const CalibrationTarget& needle);
int NeedlePlate(const ConfigModel& model, const CalibrationTarget& needle);

// Where the Plate's range ends before its Function's: "Plate 003 goes from 0 to 160, its Function from 0 to
// 200". Empty where it covers it, and where one of the two is not there.
std::string RangeWords(const ConfigModel& model, int plate, int function);
// What a needle lacks: "needs a Function", "needs a Plate", or RangeWords; empty where it lacks nothing.
std::string NeedleFault(const ConfigModel& model, const CalibrationTarget& needle);
// The first fault of the gauge's needles. "its own values" for an instrument that shows them without a
// Function being assigned. Empty where all is assigned, and for an address without a gauge.
std::string GaugeWorkWords(const ConfigModel& model, int gaugeID);
// Whether something of the gauge has to be assigned yet.
bool NeedsWork(const ConfigModel& model, int gaugeID);

// The same for the gauge list.
class InstrumentAdvice final : public GaugeAdvice {
 public:
  explicit InstrumentAdvice(const ConfigModel& model) : model_(model) {}
  std::string WorkWords(int gaugeID) const override { return GaugeWorkWords(model_, gaugeID); }
  bool NeedsWork(int gaugeID) const override { return tvx::NeedsWork(model_, gaugeID); }
  int NeedlesOf(int gaugeID) const override;
  bool HasFunction(int gaugeID, int needle) const override;

 private:
  const ConfigModel& model_;
};

}  // namespace tvx
