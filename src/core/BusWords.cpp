#include "core/BusWords.h"

#include "base/NumberFormat.h"

namespace tvx {
namespace {

std::string Seconds(std::int64_t ms) {
  return FormatNumberText(static_cast<double>(ms) / 1000.0, "0.0") + " s";
}

std::string Counted(std::uint64_t number, std::string_view one, std::string_view many) {
  return std::to_string(number) + " " + std::string(number == 1 ? one : many);
}

}  // namespace

std::string GaugeWords(const ConfigModel& model, int gaugeID) {
  const int code = model.Gauges[static_cast<std::size_t>(gaugeID)].GaugeType;
  std::string words = FormatNumberText(gaugeID, "000");
  for (const GaugetypeRecord& name : model.Gaugetypes) {
    if (name.Code != code || name.Name.empty()) continue;
    words += " " + name.Name;
    break;
  }
  while (words.ends_with(' ')) words.pop_back();
  return words;
}

std::string BusTroubleWords(const ConfigModel& model, const BusHealth& health, const BusLoad& load,
                            std::int64_t nowMs) {
  std::string words;
  if (load.full) {
    words = "gauge bus full: needles updated " +
            (load.updatesPerSecond > 0
                 ? Counted(static_cast<std::uint64_t>(load.updatesPerSecond), "time", "times")
                 : std::string("less than once")) +
            " a second";
  }
  const BusHealth::Silence silence = health.Silent(nowMs);
  if (silence.longest == nullptr) return words;
  if (!words.empty()) words += "; ";
  words += GaugeWords(model, silence.longest->gaugeID) + " has not answered for " +
           std::to_string((nowMs - silence.longest->answeredMs) / 1000) + " s";
  if (silence.count > 1) {
    words += ", nor " + (silence.count == 2 ? std::string("another one")
                                            : std::to_string(silence.count - 1) + " others");
  }
  return words;
}

std::string BusLoadWords(const BusLoad& load, std::uint64_t droppedBatches) {
  std::string words = "The line is " + std::to_string(load.percent) + " % busy.";
  if (load.superseded > 0) {
    words += " " + Counted(load.superseded, "value was", "values were") +
             " replaced by newer ones before they left.";
  }
  if (droppedBatches > 0) {
    words += " " + Counted(droppedBatches, "tick", "ticks") +
             " could not be sent; what they carried went out later.";
  }
  return words;
}

std::vector<AskedGauge> AskedGauges(const ConfigModel& model, const BusHealth& health, std::int64_t nowMs) {
  std::vector<AskedGauge> lines;
  for (const GaugeHealth& gauge : health.Gauges()) {
    AskedGauge& line = lines.emplace_back();
    line.Gauge = GaugeWords(model, gauge.gaugeID);
    line.LastAnswer = gauge.everAnswered ? Seconds(nowMs - gauge.answeredMs) + " ago" : "none yet";
    line.Answers = std::to_string(gauge.AnswersInLastMinute(nowMs));
    line.Every = gauge.askedEveryMs > 0 ? Seconds(gauge.askedEveryMs) : "";
    line.Missed = std::to_string(gauge.missed);
    line.Damaged = std::to_string(gauge.damaged);
    line.Silent = gauge.missedInARow >= BusHealth::kSilentAfterMissed;
  }
  return lines;
}

}  // namespace tvx
