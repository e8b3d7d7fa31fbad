#include "core/watch/LinkFindings.h"

#include <algorithm>
#include <bitset>
#include <set>
#include <vector>

#include "base/NumberFormat.h"
#include "simlink/PortValue.h"

namespace tvx {
namespace {

constexpr int kGroups = 256;
constexpr std::int64_t kComesMs = 3000;  // what came within is coming
constexpr int kNeverAfter = 3;           // requests without an answer
constexpr std::int64_t kGoneMs = 8000;   // what came before is not awaited any more
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

// "Function 61 Flaps: sim/gone"
std::string DatarefWords(const ConfigModel& model, const SimCom& sim, const RrefRow& row) {
  const bool open = row.For < sim.PortCount();
  return (open ? FunctionWords(model, sim.PortAt(row.For).FunctionNr) + ": " : std::string()) + row.Dataref;
}

// Those that an open port reads; what a command's port asks for, nobody misses.
std::bitset<kGroups> GroupsRead(const ConfigModel& model, const SimCom& sim) {
  std::bitset<kGroups> groups;
  for (int port = 0; port < sim.PortCount(); ++port) {
    const PortRow& row = sim.PortAt(port);
    const FunctionRecord* function = model.FunctionOf(row.FunctionNr);
    if (function == nullptr || !row.ReadEnabled || !ReadsDataGroup(function->ComboDT)) continue;
    const int group = function->SlotOf(row.SeqNr).index;
    if (group >= 0 && group < kGroups) groups.set(static_cast<std::size_t>(group));
  }
  return groups;
}

// Data groups come to the computer that is entered on X-Plane's screen, all of them or none.
void FindGroups(const ConfigModel& model, const SimCom& sim, LinkFindings& findings) {
  std::vector<int> missing;
  bool anyComes = false;
  const auto read = GroupsRead(model, sim);
  for (int group = 0; group < kGroups; ++group) {
    const SubscriptionState state = sim.Keeper().OfGroup(group);
    if (!state.wanted) continue;
    if (state.silent && read[static_cast<std::size_t>(group)]) missing.push_back(group);
    if (state.answeredMs && !state.silent) anyComes = true;
  }
  if (missing.empty()) return;
  findings.GroupsMissing = !anyComes;
  const std::string here = sim.OwnAddressWords();
  AddLine(findings.Text, (missing.size() == 1 ? "Data group " : "Data groups ") + Listing(missing) +
                             (missing.size() == 1 ? " does" : " do") + " not come" +
                             (anyComes ? ", though others do (this X-Plane may not have it)."
                                       : ". X-Plane, Settings, Data Output: enter this computer" +
                                             (here.empty() ? "" : " (" + here + ")") + "."));
}

// Each path once, however many ports read it.
void FindDatarefs(const ConfigModel& model, const SimCom& sim, std::int64_t nowMs, LinkFindings& findings) {
  std::set<std::string_view> found;
  for (const RrefRow& row : sim.Rrefs()) {
    const SubscriptionState state = sim.Keeper().OfDataref(RrefIdentifierOnWire(row.Identifier));
    const bool never = !state.answeredMs && state.asked >= kNeverAfter;
    const bool nowSilent = state.answeredMs && state.silent && nowMs - *state.answeredMs > kGoneMs;
    if ((!never && !nowSilent) || !found.insert(row.Dataref).second || found.size() > kMostLines) continue;
    AddLine(findings.Text, DatarefWords(model, sim, row) +
                               (never ? " was never answered" : " is not answered any more") +
                               " (this aircraft may not have it).");
  }
  if (found.size() <= kMostLines) return;
  const std::size_t more = found.size() - kMostLines;
  AddLine(findings.Text,
          std::to_string(more) + (more == 1 ? " more is" : " more are") + " not answered: see Show ports.");
}

void FindGivenUp(const ConfigModel& model, const SimCom& sim, LinkFindings& findings) {
  const GivenUp& given = sim.GivenUpDatagrams();
  if (given.datagrams == 0) return;
  const bool known = given.port < sim.PortCount();
  AddLine(findings.Text, std::to_string(given.datagrams) +
                             (given.datagrams == 1 ? " datagram" : " datagrams") + " given up, last " +
                             (known ? "at port " + FormatNumberText(given.port, "000") + ", " +
                                          FunctionWords(model, sim.PortAt(given.port).FunctionNr) +
                                          ": the value does not fit its data type."
                                    : std::string("for a record that is none.")));
}

}  // namespace

LinkFindings FindMissingValues(const ConfigModel& model, const SimCom& sim, std::int64_t nowMs) {
  LinkFindings findings;
  const bool datarefsCome = std::any_of(sim.Rrefs().begin(), sim.Rrefs().end(), [&](const RrefRow& row) {
    const auto answered = sim.Keeper().OfDataref(RrefIdentifierOnWire(row.Identifier)).answeredMs;
    return answered && nowMs - *answered < kComesMs;
  });
  // Where all is silent, that is the finding, and the link's own line says it.
  if (datarefsCome) {
    FindGroups(model, sim, findings);
    FindDatarefs(model, sim, nowMs, findings);
  }
  FindGivenUp(model, sim, findings);
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
