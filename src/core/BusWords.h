// The gauge bus's own health in words, for the status form.
#pragma once

#include <string>
#include <vector>

#include "config/Model.h"
#include "core/ProcessCycle.h"

namespace tvx {

// "014 Heading Indicator".
std::string GaugeWords(const ConfigModel& model, int gaugeID);

// What is wrong with the bus while it runs: that it is full, and who has not answered for how long. Empty
// where it is well.
std::string BusTroubleWords(const ConfigModel& model, const BusHealth& health, const BusLoad& load,
                            std::int64_t nowMs);

// What the line carries, and what it did not.
std::string BusLoadWords(const BusLoad& load, std::uint64_t droppedBatches);

// One line of the list of instruments that are asked.
struct AskedGauge {
  std::string Gauge, LastAnswer, Answers, Every, Missed, Damaged;
  bool Silent = false;
  bool operator==(const AskedGauge&) const = default;
};
std::vector<AskedGauge> AskedGauges(const ConfigModel& model, const BusHealth& health, std::int64_t nowMs);

}  // namespace tvx
