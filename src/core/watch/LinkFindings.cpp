#include "core/watch/LinkFindings.h"

#include <vector>

#include "base/NumberFormat.h"

namespace tvx {
namespace {

constexpr int kGroups = 256;
constexpr std::int64_t kComesMs = 3000;  // what came within is coming
constexpr int kNeverAfter = 3;           // requests without an answer
constexpr std::size_t kMostLines = 3;

// "3", "3 and 17", "3, 17 and 20"
std::string Listing(const std::vector<int>& numbers) {
  std::string text;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) text += i + 1 == numbers.size() ? " and " : ", ";
    text += std::to_string(numbers[i]);
  }
  return text;
}

std::string FunctionWords(const ConfigModel& model, int functionNr) {
  const FunctionRecord* function = model.FunctionOf(functionNr);
  return "Function " + std::to_string(functionNr) + (function ? " " + function->ShortName : std::string());
}

void AddLine(std::string& text, const std::string& line) {
  text += (text.empty() ? "" : "\n") + line;
}

}  // namespace

LinkFindings FindMissingValues(const ConfigModel& model, const SimCom& sim, std::int64_t nowMs) {
  LinkFindings findings;
  bool datarefsCome = false;
  std::vector<const RrefRow*> never;
  for (const RrefRow& row : sim.Rrefs()) {
    const SubscriptionState state = sim.Keeper().OfDataref(RrefIdentifierOnWire(row.Identifier));
    if (state.answeredMs && nowMs - *state.answeredMs < kComesMs) datarefsCome = true;
    if (!state.answeredMs && state.asked >= kNeverAfter) never.push_back(&row);
  }
  if (datarefsCome) {
    std::vector<int> groups;
    for (int group = 0; group < kGroups; ++group) {
      const SubscriptionState state = sim.Keeper().OfGroup(group);
      if (state.wanted && state.silent) groups.push_back(group);
    }
    findings.GroupsMissing = !groups.empty();
    if (findings.GroupsMissing) {
      AddLine(findings.Text, (groups.size() == 1 ? "Data group " : "Data groups ") + Listing(groups) +
                                 (groups.size() == 1 ? " does" : " do") +
                                 " not come. X-Plane, Settings, Data Output: enter this computer.");
    }
    for (std::size_t i = 0; i < never.size() && i < kMostLines; ++i) {
      const bool open = never[i]->For < sim.PortCount();
      const std::string who =
          open ? FunctionWords(model, sim.PortAt(never[i]->For).FunctionNr) + ": " : std::string();
      AddLine(findings.Text,
              who + never[i]->Dataref + " was never answered (this aircraft may not have it).");
    }
    if (never.size() > kMostLines) {
      AddLine(findings.Text,
              std::to_string(never.size() - kMostLines) + " more were never answered: see Show ports.");
    }
  }
  if (const GivenUp& given = sim.GivenUpDatagrams(); given.datagrams > 0) {
    const bool known = given.port < sim.PortCount();
    AddLine(findings.Text, std::to_string(given.datagrams) +
                               (given.datagrams == 1 ? " datagram" : " datagrams") + " given up, last " +
                               (known ? "at port " + FormatNumberText(given.port, "000") + ", " +
                                            FunctionWords(model, sim.PortAt(given.port).FunctionNr) +
                                            ": the value does not fit its data type."
                                      : std::string("for a record that is none.")));
  }
  return findings;
}

std::string FlowWords(const std::optional<LatencyMeter::Result>& latency, std::uint64_t lost,
                      std::uint64_t givenUp) {
  std::string text;
  if (latency) {
    text = "In " + std::to_string(latency->medianMs) +
           " ms from X-Plane to the instruments, 99 of 100 within " +
           std::to_string(latency->percentile99Ms) + " ms; ";
  }
  return text + std::to_string(lost) + (lost == 1 ? " value" : " values") + " lost, " +
         std::to_string(givenUp) + (givenUp == 1 ? " datagram" : " datagrams") + " given up";
}

}  // namespace tvx
