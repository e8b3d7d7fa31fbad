// The stations of a value that X-Plane tells or is told.
#include <cmath>

#include "follow/FollowWords.h"
#include "follow/RoadMaker.h"
#include "simlink/PortValue.h"
#include "simlink/overview/PortListing.h"

namespace tvx {
namespace {

constexpr std::int64_t kSilentMs = 3000;
constexpr std::int64_t kLateMs = 5000;
constexpr int kNeverAfter = 3;  // requests without an answer
constexpr int kLastGroup = 150;
// While a value that was sent is judged: X-Plane has had the time to take it, and nobody else has moved it.
constexpr std::int64_t kTakenByMs = 1000, kJudgedForMs = 10000;
constexpr float kSame = 1e-3f;

std::string_view PathOf(const FunctionRecord& function, Byte sequence) {
  return CutEntry(function.FullName, sequence).value_or(std::string_view());
}

bool HasSource(const FunctionRecord& function, Byte sequence) {
  if (function.IsMacro() || function.Is(DataType::XplaneCmnd)) return true;
  if (function.Is(DataType::XplaneDataref)) return !PathOf(function, sequence).empty();
  const int group = function.SlotOf(sequence).index;
  return ReadsDataGroup(function.ComboDT) && group >= 0 && group <= kLastGroup;
}

SubscriptionState StateOf(const SimCom& sim, const FunctionRecord& function, Byte sequence, Port port) {
  if (!function.Is(DataType::XplaneDataref)) return sim.Keeper().OfGroup(function.SlotOf(sequence).index);
  for (const RrefRow& row : sim.Rrefs()) {
    if (row.For == port) return sim.Keeper().OfDataref(RrefIdentifierOnWire(row.Identifier));
  }
  return {};
}

std::string ScalingWords(const FunctionRecord& function) {
  std::string words;
  if (function.BoxAdd != 0) words += "+ " + ValueText(function.BoxAdd) + " ";
  if (function.Multiplier != 1) words += "× " + ValueText(function.Multiplier) + " ";
  if (function.Devider != 1) words += "/ " + ValueText(function.Devider);
  return words.empty() ? "as it comes" : "raw " + words;
}

}  // namespace

Port PortFor(const SimCom& sim, int function, int sequence) {
  Port any = kNoPort;
  for (int port = 0; port < sim.PortCount(); ++port) {
    const PortRow& row = sim.PortAt(port);
    if (row.FunctionNr != function || row.SeqNr != sequence) continue;
    if (row.ReadEnabled) return static_cast<Port>(port);
    if (any == kNoPort) any = static_cast<Port>(port);
  }
  return any;
}

// False where there is no value to wait for.
bool RoadMaker::AddSource(int functionNr, const FunctionRecord* function, Byte sequence, Port port) {
  Station& station = Add("X-Plane's name");
  if (functionNr <= 0) return Stop("No Function is assigned"), false;
  const std::string name = FunctionWords(functionNr);
  if (function == nullptr || function->ShortName.empty()) return Stop(name + " is not defined"), false;
  station.Value = SourceText(*function, sequence);
  station.Note = name + " " + function->ShortName;
  if (!HasSource(*function, sequence)) return Stop(name + " has no source"), false;
  if (function->Is(DataType::XplaneCmnd)) return Stop(name + " is a command, which has no value"), false;
  if (function->IsMacro()) return true;
  if (function->Is(DataType::XplaneDataref) && function->SlotOf(sequence).value == 0)
    return Stop(name + " is only written: it asks for its value 0 times a second"), false;
  TellAnswers(*function, sequence, port);
  return true;
}

void RoadMaker::TellAnswers(const FunctionRecord& function, Byte sequence, Port port) {
  const SimCom& sim = parts_.Sim;
  Station& station = road_.Stations.back();
  if (port == kNoPort) return StopInFlight("Nobody asks X-Plane for it: " + station.Note + " is not in use");
  const SubscriptionState state = StateOf(sim, function, sequence, port);
  const auto age = sim.AgeMs(port);
  station.Age = age ? AgeWords(*age) : "never";
  const float rate = age ? sim.TrafficOf(port).Rate(nowMs_) : 0;
  station.Note += "; asked " + std::to_string(state.asked) + (state.asked == 1 ? " time, " : " times, ") +
                  (age ? NumberWords(std::round(rate * 10) / 10.0) + " a second come" : "not answered");
  const bool dataref = function.Is(DataType::XplaneDataref);
  const std::string source = dataref ? std::string(PathOf(function, sequence))
                                     : "data group " + std::to_string(function.SlotOf(sequence).index);
  if (age && *age <= kLateMs) return;
  const auto silent = sim.SilentForMs();
  if (!silent || *silent > kSilentMs || age) return TellSilence(source, port);
  if (state.asked < kNeverAfter) return StopInFlight("X-Plane was just asked for " + source);
  StopInFlight(
      "X-Plane never answered " + source + ": " +
      (dataref ? "this aircraft does not have it" : "enter this computer in X-Plane, Settings, Data Output"));
}

void RoadMaker::TellSilence(const std::string& source, Port port) {
  const auto silent = parts_.Sim.SilentForMs();
  if (!silent) return StopInFlight("Nothing has come from X-Plane yet");
  if (*silent > kSilentMs) return StopInFlight("Nothing has come from X-Plane since " + AgeWords(*silent));
  StopInFlight("X-Plane does not answer " + source + " any more, since " +
               AgeWords(parts_.Sim.AgeMs(port).value_or(0)));
}

std::optional<double> RoadMaker::AddReading(int functionNr, int sequence, Port port) {
  const FunctionRecord* function = functionNr > 0 ? parts_.Model.FunctionOf(functionNr) : nullptr;
  const auto seq = static_cast<Byte>(sequence == 0 ? 1 : sequence);
  if (!AddSource(functionNr, function, seq, port)) return std::nullopt;
  const SimCom& sim = parts_.Sim;
  const bool has = port != kNoPort && (function->IsMacro() || sim.HasArrived(port));
  float raw = 0, value = 0;
  Station& rawStation = Add("Raw");
  if (has && sim.GetPortRaw(port, raw)) rawStation.Value = ValueText(raw);
  if (port < sim.PortCount() && sim.PortAt(port).Blocked) Stop("The port holds its value");
  const bool reads = has && sim.GetPort(port, value);
  road_.Value = reads ? ValueText(value) : "";
  Add("Scaled", road_.Value).Note = ScalingWords(*function);
  if (function->Devider == 0) Stop(FunctionWords(functionNr) + " divides by 0");
  if (function->Multiplier == 0) Stop(FunctionWords(functionNr) + " multiplies by 0");
  if (!reads) return std::nullopt;
  if (!std::isfinite(value)) return StopInFlight("X-Plane's value is no number"), std::nullopt;
  return static_cast<double>(value);
}

void RoadMaker::AddWriting(int functionNr, int sequence, Port written) {
  const FunctionRecord* function = functionNr > 0 ? parts_.Model.FunctionOf(functionNr) : nullptr;
  const auto seq = static_cast<Byte>(sequence == 0 ? 1 : sequence);
  Station& datagram = Add("To X-Plane");
  if (functionNr <= 0) return Stop("No Function is assigned");
  const std::string name = FunctionWords(functionNr);
  if (function == nullptr || function->ShortName.empty()) return Stop(name + " is not defined");
  datagram.Note = name + " " + function->ShortName;
  if (!HasSource(*function, seq)) return Stop(name + " has no source");
  const auto sent = parts_.Sim.LastWritten(written);
  if (sent) {
    datagram.Value = ValueText(sent->raw) + " to " + SourceText(*function, seq);
    datagram.Age = AgeWords(nowMs_ - sent->atMs);
    road_.Value = ValueText(sent->raw);
  } else {
    datagram.Value = SourceText(*function, seq);
    datagram.Note += "; not written yet";
  }
  const Port read = PortFor(parts_.Sim, functionNr, seq);
  float now = 0;
  Station& says = Add("X-Plane says now");
  if (function->Is(DataType::XplaneCmnd)) {
    says.Note = "commands are not answered";
  } else if (read != kNoPort && parts_.Sim.HasArrived(read) && parts_.Sim.GetPortRaw(read, now)) {
    says.Value = ValueText(now);
    says.Age = AgeWords(parts_.Sim.AgeMs(read).value_or(0));
    if (sent && !function->IsMacro()) TellWhetherTaken(*sent, read);
  } else {
    says.Note = "its value is not read";
  }
}

void RoadMaker::TellWhetherTaken(const SimCom::Written& sent, Port read) {
  const std::int64_t since = nowMs_ - sent.atMs;
  float now = 0;
  if (since < kTakenByMs || since > kJudgedForMs || !parts_.Sim.GetPortRaw(read, now)) return;
  if (parts_.Sim.AgeMs(read).value_or(since) > since - kTakenByMs) return;  // not heard since
  if (std::fabs(now - sent.raw) <= kSame * std::max(1.0f, std::fabs(sent.raw))) return;
  StopInFlight("X-Plane was sent " + ValueText(sent.raw) + " and says " + ValueText(now) +
               ": it did not take it");
}

}  // namespace tvx
