// What is done to several gauges at once, and settings that are copied from one to others.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "config/Model.h"
#include "config/setup/GaugeAdvice.h"

namespace tvx {

// Every operation takes GaugeIDs; addresses without a gauge, and gauges that do not have what is set, are
// left out. They return how many gauges got it.
class GaugeBulk {
 public:
  GaugeBulk(ConfigModel& model, const GaugeAdvice& advice) : model_(model), advice_(advice) {}

  // `needle` 1 or 2. None where there is no such Plate, or its number is above 255.
  int SetPlate(const std::vector<int>& gauges, int needle, int plate);
  // None where the Function's number is outside 0..300.
  int SetFunction(const std::vector<int>& gauges, int needle, int function);
  // The first needle of the first gauge gets this Function, each further needle the next number, in the order
  // of the gauges. Ends at 300.
  int SetFunctionsInSequence(const std::vector<int>& gauges, int first);
  // Lit as the lights mode says, or never.
  int SetLighting(const std::vector<int>& gauges, bool lit);
  // What a gauge is set to: Functions, sequence numbers, Plates, options; not what kind it is. False for an
  // address without a gauge.
  bool Copy(int gaugeID);
  bool HasCopy() const { return copy_.has_value(); }
  // To gauges of the same Gaugetype only.
  int Paste(const std::vector<int>& gauges);
  // The next gauge behind this one, round about, that needs work; -1: none does.
  int NextThatNeedsWork(int after) const;

 private:
  template <typename Edit>
  int ForEach(const std::vector<int>& gauges, Edit edit);

  ConfigModel& model_;
  const GaugeAdvice& advice_;
  std::optional<GaugeRecord> copy_;
};

}  // namespace tvx
