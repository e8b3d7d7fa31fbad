#include "hwbus/gaugebus/GaugeConsolePresenter.h"

#include <algorithm>
#include <array>

#include "base/Rounding.h"
#include "config/ValueText.h"

namespace tvx {
namespace {

constexpr std::string_view kNoReply = "-- No reply --";
constexpr std::size_t kSearchedSlots = 50;
constexpr int kHighestCommand = 15;
constexpr std::array<const char*, 4> kSpinner{"---", " \\", " |", " /"};

// A number, rounded, within the limits; std::nullopt for any other text.
std::optional<int> WholeNumber(const std::string& text, int lowest, int highest) {
  const auto number = TypedReal<double>(text);
  const auto whole = number ? RoundTo<int>(*number) : std::nullopt;
  return whole && *whole >= lowest && *whole <= highest ? whole : std::nullopt;
}

}  // namespace

GaugeConsolePresenter::GaugeConsolePresenter(ConfigModel& model, Serial& serial, MessageBoxes& boxes)
    : model_(model), serial_(serial), boxes_(boxes) {}

std::optional<int> GaugeConsolePresenter::GaugeID() const {
  return TypedWhole(ManualGaugeID, 0, kGauges - 1);
}

void GaugeConsolePresenter::cmdPollGauge() {
  if (!GaugeID()) {
    boxes_.Show("No new GaugeID");
    return;
  }
  view_ = {};
  view_.Text7 = kNoReply;
  polling_ = true;
  replied_ = true;  // no poll is open yet
  Changed();
}

void GaugeConsolePresenter::cmdStopPoll() {
  polling_ = false;
  Changed();
}

void GaugeConsolePresenter::PollTimer_Tick() {
  if (!polling_) return;
  if (!replied_) {
    const std::string spinner = view_.ProgressIndicator;
    view_ = {};
    view_.Text7 = kNoReply;
    view_.ProgressIndicator = spinner;
    Changed();
  }
  const auto gaugeID = GaugeID();
  if (!gaugeID || serial_.TransmitPending()) return;
  replied_ = false;
  serial_.WriteGaugeCommand(*gaugeID, kCommandReportState, 0);
}

void GaugeConsolePresenter::OnReply(ReplyView reply) {
  if (!polling_ && !awaiting_) return;
  awaiting_ = false;
  replied_ = true;
  view_.Text7.clear();
  for (const Byte byte : reply) {
    if (!view_.Text7.empty()) view_.Text7 += '.';
    view_.Text7 += std::to_string(byte);
  }
  view_.BoxID = std::to_string(ReplyGaugeID(reply));
  view_.BoxType = std::to_string(ReplyGaugetype(reply));
  view_.BoxModel = std::to_string(ReplyModel(reply));
  view_.boxVersion = std::to_string(ReplyVersion(reply));
  view_.boxName = NameOf(ReplyGaugetype(reply));
  view_.ProgressIndicator = kSpinner[turn_++ % kSpinner.size()];
  Changed();
}

std::string GaugeConsolePresenter::NameOf(int gaugetype) const {
  for (std::size_t slot = 0; slot <= kSearchedSlots; ++slot) {
    if (model_.Gaugetypes[slot].Code == gaugetype) return model_.Gaugetypes[slot].Name;
  }
  return " Unknown ";
}

void GaugeConsolePresenter::Step(int by) {
  ManualGaugeID = std::to_string(std::clamp(GaugeID().value_or(0) + by, 0, kGauges - 1));
  Changed();
}

std::string_view GaugeConsolePresenter::CommandProblem(const std::string& text) {
  const auto typed = TypedReal<double>(text);
  if (!typed || *typed < 0 || *typed >= kHighestCommand + 1) return "Commands must be 0 <-> 15";
  // A fraction such as 15.7 is not above 15 yet, but would be sent as 16.
  const auto command = RoundTo<int>(*typed);
  return command && *command <= kHighestCommand ? std::string_view() : "Command must be <16.";
}

std::string_view GaugeConsolePresenter::ValueProblem(const std::string& text) {
  return WholeNumber(text, -kLargestValue, kLargestValue) ? std::string_view() : "commandvalue out of limits";
}

bool GaugeConsolePresenter::SendGaugeCommand() {
  const auto gaugeID = GaugeID();
  std::string_view problem = gaugeID ? CommandProblem(CommandNumber) : "No Gauge ID defined";
  if (problem.empty()) problem = ValueProblem(CommandValue);
  if (!problem.empty()) {
    boxes_.Show(problem);
    return false;
  }
  const int command = *WholeNumber(CommandNumber, 0, kHighestCommand);
  awaiting_ = command == kCommandReportState;
  if (awaiting_ && !polling_) {
    view_ = {};
    view_.Text7 = kNoReply;
    Changed();
  }
  serial_.WriteGaugeCommand(*gaugeID, command, *WholeNumber(CommandValue, -kLargestValue, kLargestValue));
  return true;
}

bool GaugeConsolePresenter::cmdAddToConfig() {
  const auto gaugeID = GaugeID();
  if (!gaugeID || ComboGaugeType < 1 || ComboGaugeType > 255) {
    boxes_.Show("GaugeID and/or Gaugetype incorrect");
    return false;
  }
  // An empty box counts as 0.
  const auto model = TypedWhole(boxAddModel.empty() ? "0" : boxAddModel, 0, 255);
  const auto version = TypedWhole(boxAddVersion.empty() ? "0" : boxAddVersion, 0, 255);
  if (!model || !version) {
    boxes_.Show("Model and version are whole numbers from 0 to 255.");
    return false;
  }
  if (boxes_.Ask("You are forcing a gauge into the configuration.\r\n"
                 "There is NO check whether the Gaugetype matches the actual Gauge. \r\n"
                 "This can result in unpredicted behaviour of gauges when incorrect\r\n"
                 "Continue anyway?") == kAnswerNo) {
    return false;
  }
  GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(*gaugeID)];
  if (gauge.GaugeType != ComboGaugeType) {
    // What another type has stored means something else here.
    const std::int16_t spare = gauge.GaugeSetting6;
    gauge = {};
    gauge.GaugeSetting6 = spare;
  }
  gauge.GaugeType = static_cast<Byte>(ComboGaugeType);
  gauge.GaugeSetting1 = static_cast<Byte>(*model);
  gauge.GaugeSetting2 = static_cast<Byte>(*version);
  model_.ConfigChanged = true;
  Changed();
  return true;
}

void GaugeConsolePresenter::Changed() {
  changed_();
}

}  // namespace tvx
