#include "guide/HandWatch.h"

#include <algorithm>

#include "base/NumberFormat.h"
#include "config/setup/GaugeList.h"
#include "guide/FixedInstruments.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kTicksForAnswer = 2;
constexpr int kClock = 104, kCessnaClock = 109;
constexpr int kLowestCom = 18000;  // kHz above 100 MHz, as a radio reports
constexpr int kLowestNav = 8000;

std::string NameOf(const ConfigModel& model, int gaugeID) {
  std::string name = GaugetypeNameInList(model, model.Gauges[static_cast<std::size_t>(gaugeID)].GaugeType);
  name.erase(name.find_last_not_of(' ') + 1);
  return FormatNumberText(gaugeID, "000") + "  " + name;
}

}  // namespace

void HandWatch::Start() {
  asked_.clear();
  for (int id = 0; id < kGauges; ++id) {
    const auto index = static_cast<std::size_t>(id);
    const int type = model_.Gauges[index].GaugeType;
    const Instrument* kind = type == 0 ? nullptr : InstrumentOf(type);
    if (kind == nullptr || !kind->Polled() || type == kClock || type == kCessnaClock) continue;
    if (model_.GaugeState[index] != GaugeConnection::NotConnected) asked_.push_back(id);
  }
  last_.fill(std::nullopt);
  next_ = 0;
  ticks_ = 0;
  moved_ = -1;
  running_ = true;
}

void HandWatch::Tick() {
  if (!running_ || asked_.empty() || ++ticks_ < kTicksForAnswer) return;
  if (!hardware_.Command(asked_[next_], kCommandReportState, 0)) return;
  ticks_ = 0;
  next_ = (next_ + 1) % asked_.size();
}

void HandWatch::OnReply(ReplyView reply) {
  const int id = ReplyGaugeID(reply);
  if (!running_ || std::find(asked_.begin(), asked_.end(), id) == asked_.end()) return;
  auto& last = last_[static_cast<std::size_t>(id)];
  Report now{};
  std::copy(reply.begin(), reply.end(), now.begin());
  if (last && *last != now) {
    moved_ = id;
    ++count_;
  }
  last = now;
}

std::string HandWatch::Words() const {
  if (moved_ < 0) return {};
  std::string words = NameOf(model_, moved_) + " moved.";
  const auto& report = last_[static_cast<std::size_t>(moved_)];
  if (!report || !IsRadio(model_.Gauges[static_cast<std::size_t>(moved_)].GaugeType)) return words;
  const int frequency = (*report)[6] * 256 + (*report)[7];  // bytes 7 and 8, counted from 1
  const std::string shown = FormatNumberText(100 + frequency / 1000.0, "000.00") + " MHz";
  if (frequency >= kLowestCom) return words + " It stands at " + shown + ": a COM radio.";
  if (frequency >= kLowestNav) return words + " It stands at " + shown + ": a NAV radio.";
  return words;
}

}  // namespace tvx
