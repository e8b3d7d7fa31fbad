#include "simlink/functions/FunctionTrialPresenter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/NumberFormat.h"
#include "base/Rounding.h"
#include "config/ValueText.h"

namespace tvx {
namespace {

constexpr std::string_view kPattern = "######0.0000";
constexpr std::string_view kNoValue = "---";
constexpr std::int64_t kSilentMs = 3000;
constexpr int kHighestSequence = 4;

// What a data type takes, and what is said of any other value.
// ODDITY: the texts keep their spelling; users search their notes for them. The Integer range ends at -32767,
// where PutPort clamps, and not at -32768.
struct TypeRange {
  DataType type;
  double lowest, highest;
  std::string_view outside;
};
constexpr std::array<TypeRange, 5> kRanges{{
    {DataType::ByteType, 0, 255, "Datatype is byte; Value must be 0 end 255"},
    {DataType::Integer, -32767, 32767, "Datatype is Integer; Value must be -32767 and  +32767"},
    {DataType::UnsignedInt, 0, 65535, "Datatype is Unsigned Integer; Value must between 0 and  65535"},
    {DataType::Long, -2147483648.0, 2147483647.0,
     "Datatype is Long; Value must between -2147483648 and 2147483647"},
    {DataType::BcdCode, 0, 9999, "Datatype is BCD code; Value must between 0 and  9999"},
}};

std::string Formatted(double value) {
  return FormatNumberText(value, kPattern);
}

}  // namespace

std::string_view DataTypeName(int code) {
  const auto index = static_cast<std::size_t>(code);
  return code >= 0 && index < kDataTypeNames.size() ? kDataTypeNames[index] : "Unknown";
}

std::string_view OutOfRangeText(int dataType, double value) {
  for (const TypeRange& range : kRanges) {
    if (static_cast<int>(range.type) != dataType) continue;
    return value >= range.lowest && value <= range.highest ? std::string_view() : range.outside;
  }
  return {};
}

double Sweep::Next() {
  const double value = std::min(lower_ + steps_ * step_, upper_);
  const bool atItsEnd = up_ ? value >= upper_ : steps_ <= 0;
  if (atItsEnd) up_ = !up_;
  steps_ = std::max(0.0, steps_ + (up_ ? 1 : -1));
  return value;
}

FunctionTrialPresenter::FunctionTrialPresenter(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes)
    : model_(model), sim_(sim), boxes_(boxes), portsAreOurs_(sim.PortCount() == 0) {}

void FunctionTrialPresenter::Choose(std::string_view function, std::string_view sequenceNr) {
  const int number = TypedWhole(function, 1, kFunctions - 1).value_or(0);
  const int sequence = TypedWhole(sequenceNr, 0, kHighestSequence).value_or(-1);
  if (number == function_ && sequence == sequenceNr_ && !view_.DataTypeName.empty()) return;
  CmdStopRead_Click();
  CmdStopWrite_Click();
  view_ = {};
  function_ = number;
  sequenceNr_ = sequence;
  port_ = kNoPort;
  if (function_ != 0) view_.DataTypeName = DataTypeName(model_.FunctionOf(function_)->ComboDT);
}

bool FunctionTrialPresenter::OpenLink() {
  if (sim_.UdpOpen()) return true;
  if (!sim_.OpenUDP()) {
    boxes_.Show("The link to the simulator cannot be opened: " + sim_.LinkError());
    return false;
  }
  linkIsOurs_ = true;
  return true;
}

Port FunctionTrialPresenter::FindOrOpen() {
  const FunctionDraft now = DraftOf(*model_.FunctionOf(function_));
  for (const OpenedPort& opened : opened_) {
    const bool stillOpen =
        opened.port < sim_.PortCount() && sim_.PortAt(opened.port).FunctionNr == opened.function;
    if (stillOpen && opened.function == function_ && opened.sequenceNr == sequenceNr_ && opened.as == now) {
      return opened.port;
    }
  }
  const OpenerScope by(sim_, opener::kInternal);
  Byte sequence = static_cast<Byte>(sequenceNr_);
  Port port = kNoPort;
  sim_.OpenSimPort(function_, sequence, port);
  if (port != kNoPort) opened_.push_back({function_, static_cast<Byte>(sequenceNr_), port, now});
  return port;
}

bool FunctionTrialPresenter::OpenPort() {
  if (function_ == 0 || sequenceNr_ < 0 || sequenceNr_ > 4) {
    boxes_.Show(functiontext::kIncorrectData);
    return false;
  }
  const FunctionRecord& function = *model_.FunctionOf(function_);
  view_.DataTypeName = DataTypeName(function.ComboDT);
  const std::string name = "Function " + std::to_string(function_);
  if (function.ShortName.empty()) {
    boxes_.Show(name + " is not defined.");
    return false;
  }
  if (!OpenLink()) return false;
  port_ = FindOrOpen();
  if (port_ != kNoPort) return true;
  boxes_.Show(name + " has no data reference line \"#" + std::to_string(std::max(sequenceNr_, 1)) + ":\".");
  return false;
}

void FunctionTrialPresenter::CmdRead_Click() {
  if (!OpenPort()) return;
  sim_.EnableReadSimPort(port_);
  reading_ = true;
  view_.Status = "Reading";
  Read_Tick();
}

void FunctionTrialPresenter::CmdStopRead_Click() {
  if (reading_) sim_.DisableReadSimPort(port_);
  reading_ = false;
  view_.Status = "Stopped";
}

void FunctionTrialPresenter::Read_Tick() {
  if (!reading_) return;
  float raw = 0, corrected = 0;
  const bool has = sim_.GetPortRaw(port_, raw) && sim_.GetPort(port_, corrected);
  const bool came = has && (model_.FunctionOf(function_)->IsMacro() || sim_.HasArrived(port_));
  view_.Raw = came ? Formatted(raw) : std::string(kNoValue);
  view_.Corrected = came ? Formatted(corrected) : std::string(kNoValue);
  view_.Note = has ? ReadNote() : "This data type has no value to read.";
}

std::string FunctionTrialPresenter::ReadNote() const {
  const FunctionRecord& function = *model_.FunctionOf(function_);
  if (function.IsMacro()) return {};
  if (sim_.UdpMonitorMode()) {
    return "The X-Plane test console takes everything that arrives: stop it to read here.";
  }
  const auto silentMs = sim_.SilentForMs();
  if (!silentMs) return "Nothing has arrived from the simulator yet.";
  if (*silentMs >= kSilentMs) {
    return "Nothing has arrived from the simulator for " + std::to_string(*silentMs / 1000) + " s.";
  }
  if (sim_.HasArrived(port_)) return {};
  const FunctionRecord::Slot slot = function.SlotOf(static_cast<Byte>(sequenceNr_));
  if (!function.Is(DataType::XplaneDataref)) {
    return "The simulator answers, but data group " + std::to_string(slot.index) + " has not come yet.";
  }
  return slot.value == 0 ? "This source is written only: its times per second are 0."
                         : "The simulator answers, but not for this data reference: it may not know it.";
}

std::string_view FunctionTrialPresenter::ProblemOf(std::string_view text) const {
  const auto value = TypedReal<float>(text);
  if (!value) return functiontext::kIncorrectData;
  return function_ == 0 ? std::string_view() : OutOfRangeText(model_.FunctionOf(function_)->ComboDT, *value);
}

std::string_view FunctionTrialPresenter::StepProblem(std::string_view step) {
  const auto by = TypedReal<float>(step);
  return by && *by > 0 ? std::string_view() : functiontext::kIncorrectData;
}

std::optional<double> FunctionTrialPresenter::Checked(std::string_view text) {
  const std::string_view problem = ProblemOf(text);
  if (problem.empty()) return *TypedReal<float>(text);
  boxes_.Show(problem);
  return std::nullopt;
}

void FunctionTrialPresenter::CmdWriteOnce_Click(std::string_view text) {
  CmdStopWrite_Click();
  const auto value = Checked(text);
  if (value && OpenPort()) Write(*value);
}

void FunctionTrialPresenter::Write(double value) {
  float raw = static_cast<float>(value);
  const bool sent = sim_.PutPort(port_, raw);
  const FunctionRecord& function = *model_.FunctionOf(function_);
  view_.WriteNote.clear();
  if (!sent) {
    view_.WriteNote = "Nothing was sent: after scaling, the value does not fit the data type.";
  } else if (function.ComboDT > static_cast<Byte>(DataType::XplaneDataref) && !function.IsMacro()) {
    view_.WriteNote = "Nothing was sent: this data type is not written.";
  } else if (function.Is(DataType::XplaneCmnd) &&
             !CutEntry(function.FullName, RoundTo<int>(raw).value_or(0))) {
    view_.WriteNote = "Nothing was sent: there is no command line \"#" + FormatNumberText(raw, "0") + ":\".";
  }
  view_.Written = view_.WriteNote.empty() ? Formatted(value) : std::string();
  view_.WrittenRaw = view_.WriteNote.empty() ? Formatted(raw) : std::string();
}

void FunctionTrialPresenter::CmdWriteInterval_Click(std::string_view lower, std::string_view upper,
                                                    std::string_view step) {
  CmdStopWrite_Click();
  const auto low = Checked(lower);
  const auto high = low ? Checked(upper) : std::nullopt;
  if (!high) return;
  if (!StepProblem(step).empty() || *low > *high) {
    boxes_.Show(functiontext::kIncorrectData);
    return;
  }
  if (!OpenPort()) return;
  sweep_.emplace(*low, *high, *TypedReal<float>(step));
  view_.WriteStatus = "Writing";
  IntervalTimer_Tick();
}

void FunctionTrialPresenter::CmdStopWrite_Click() {
  sweep_.reset();
  view_.WriteStatus = "Stopped";
}

void FunctionTrialPresenter::IntervalTimer_Tick() {
  if (sweep_) Write(sweep_->Next());
}

void FunctionTrialPresenter::Close() {
  CmdStopRead_Click();
  CmdStopWrite_Click();
  port_ = kNoPort;
  if (!opened_.empty() && portsAreOurs_) sim_.CloseAllPorts();
  opened_.clear();
  if (std::exchange(linkIsOurs_, false)) sim_.CloseUDP();
}

}  // namespace tvx
