#include "config/setup/GaugeBulk.h"

namespace tvx {
namespace {

constexpr int kHighestPlate = 255;  // what a gauge's record holds
constexpr std::int16_t kUnlit = 0x80;

}  // namespace

template <typename Edit>
int GaugeBulk::ForEach(const std::vector<int>& gauges, Edit edit) {
  int done = 0;
  for (const int id : gauges) {
    if (id < 0 || id >= kGauges) continue;
    GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(id)];
    if (gauge.GaugeType != 0 && edit(id, gauge)) ++done;
  }
  if (done > 0) model_.ConfigChanged = true;
  return done;
}

int GaugeBulk::SetPlate(const std::vector<int>& gauges, int needle, int plate) {
  if (model_.PlateOf(plate) == nullptr || plate > kHighestPlate) return 0;
  return ForEach(gauges, [&](int id, GaugeRecord& gauge) {
    if (advice_.NeedlesOf(id) < needle) return false;
    (needle == 2 ? gauge.GaugeSetting4 : gauge.GaugeSetting3) = static_cast<Byte>(plate);
    return true;
  });
}

int GaugeBulk::SetFunction(const std::vector<int>& gauges, int needle, int function) {
  if (model_.FunctionOf(function) == nullptr) return 0;
  return ForEach(gauges, [&](int id, GaugeRecord& gauge) {
    if (!advice_.HasFunction(id, needle)) return false;
    (needle == 2 ? gauge.GaugeFunction2 : gauge.GaugeFunction1) = static_cast<std::int16_t>(function);
    return true;
  });
}

int GaugeBulk::SetFunctionsInSequence(const std::vector<int>& gauges, int first) {
  int next = first;
  return ForEach(gauges, [&](int id, GaugeRecord& gauge) {
    bool any = false;
    for (const int needle : {1, 2}) {
      if (!advice_.HasFunction(id, needle) || model_.FunctionOf(next) == nullptr) continue;
      (needle == 2 ? gauge.GaugeFunction2 : gauge.GaugeFunction1) = static_cast<std::int16_t>(next++);
      any = true;
    }
    return any;
  });
}

int GaugeBulk::SetLighting(const std::vector<int>& gauges, bool lit) {
  return ForEach(gauges, [lit](int, GaugeRecord& gauge) {
    gauge.GaugeSetting5 =
        static_cast<std::int16_t>(lit ? gauge.GaugeSetting5 & ~kUnlit : gauge.GaugeSetting5 | kUnlit);
    return true;
  });
}

bool GaugeBulk::Copy(int gaugeID) {
  if (gaugeID < 0 || gaugeID >= kGauges) return false;
  const GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(gaugeID)];
  if (gauge.GaugeType == 0) return false;
  copy_ = gauge;
  return true;
}

int GaugeBulk::Paste(const std::vector<int>& gauges) {
  if (!copy_) return 0;
  return ForEach(gauges, [this](int, GaugeRecord& gauge) {
    if (gauge.GaugeType != copy_->GaugeType) return false;
    const Byte model = gauge.GaugeSetting1, version = gauge.GaugeSetting2;
    const std::int16_t spare = gauge.GaugeSetting6;
    gauge = *copy_;
    gauge.GaugeSetting1 = model;
    gauge.GaugeSetting2 = version;
    gauge.GaugeSetting6 = spare;
    return true;
  });
}

int GaugeBulk::NextThatNeedsWork(int after) const {
  for (int step = 1; step <= kGauges; ++step) {
    const int id = (after + step + kGauges) % kGauges;
    if (advice_.NeedsWork(id)) return id;
  }
  return -1;
}

}  // namespace tvx
