#include "simlink/console/LinkConsolePresenter.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "base/NumberFormat.h"
#include "config/ValueText.h"
#include "platform/AtomicFile.h"
#include "simlink/PortValue.h"
#include "simlink/references/FunctionEntries.h"
#include "simlink/references/FunctionTexts.h"
#include "simlink/references/ReferenceList.h"

namespace tvx {
namespace {

constexpr std::size_t kKeptBetweenTicks = 100;
constexpr int kMostFrames = 1000;
constexpr Byte kUsualFrequency = 10;
constexpr std::int64_t kSilentMs = 3000;

std::string TimeText(const Clock& clock) {
  const std::tm now = clock.LocalTime();
  std::array<char, 16> text{};
  std::strftime(text.data(), text.size(), "%H:%M:%S", &now);
  return text.data();
}

std::string SubscriptionLine(std::int32_t identifier, std::int32_t frequency, float value,
                             const std::string& path) {
  return "Ident: " + FormatNumberText(identifier, "000") + ", Freq: " + std::to_string(frequency) +
         " p/s ,Value= " + FormatNumberText(value, "00000.0") + "  --->Dataref: " + path;
}

}  // namespace

LinkConsolePresenter::LinkConsolePresenter(ConfigModel& model, SimCom& sim, MessageBoxes& boxes,
                                           const Clock& clock)
    : Endpoint{model.General.RemoteIP, model.General.RemotePort, model.General.LocalPort},
      ReverseByteOrder(model.General.ByteOrderReverse != 0),
      model_(model),
      sim_(sim),
      boxes_(boxes),
      clock_(clock),
      linkWasOpen_(sim.UdpOpen()) {}

bool LinkConsolePresenter::Refuse(std::string_view message) {
  boxes_.Show(message);
  return false;
}

bool LinkConsolePresenter::IsPath(std::string_view path) {
  if (IsEntry(path)) return true;
  Note("A path is needed: choose one in the list, or type it.");
  return false;
}

bool LinkConsolePresenter::OpenLink() {
  sim_.UseEndpoint(Endpoint);
  touchedLink_ = true;
  if (sim_.OpenUDP()) return true;
  CmdStopUDP_Click();
  return Refuse("The link to the simulator cannot be opened: " + sim_.LinkError());
}

// --- receive display ---

void LinkConsolePresenter::cmdStartUDP_Click() {
  if (!OpenLink()) return;
  count_ = 0;
  lastCameMs_ = clock_.MonotonicMs();
  monitor_ = sim_.SetMonitor([this](ByteView bytes, std::int32_t port) { OnDatagram(bytes, port); });
  sim_.ClearPacketArrived();
  sim_.SetUdpMonitorMode(true);
  view_.Status = "Running";
  ShowArrivals();
  Note("Listening on port " + Endpoint.LocalPort + ".");
}

void LinkConsolePresenter::CmdStopUDP_Click() {
  sim_.SetUdpMonitorMode(false);
  monitor_.End();
  StopLog();
  arrived_.clear();
  missed_ = 0;
  view_.Status = "Stopped";
  view_.Silent = false;
}

bool LinkConsolePresenter::ShowArrivals() {
  const std::int64_t silentMs = clock_.MonotonicMs() - lastCameMs_;
  std::string words = count_ == 0   ? "Nothing has arrived yet"
                      : count_ == 1 ? "1 datagram has arrived"
                                    : std::to_string(count_) + " datagrams have arrived";
  view_.Silent = silentMs >= kSilentMs;
  if (view_.Silent && count_ > 0) words += ", the last " + std::to_string(silentMs / 1000) + " s ago";
  if (words == view_.Arrived) return false;
  view_.Arrived = std::move(words);
  return true;
}

// Keeps a copy only: a burst of datagrams must cost little here.
void LinkConsolePresenter::OnDatagram(ByteView bytes, std::int32_t port) {
  ++count_;
  lastCameMs_ = clock_.MonotonicMs();
  if (arrived_.size() >= kKeptBetweenTicks) {
    ++missed_;
    return;
  }
  arrived_.push_back({TimeText(clock_), port, {bytes.begin(), bytes.end()}});
}

bool LinkConsolePresenter::DisplayTimer_Tick() {
  if (!sim_.UdpMonitorMode()) return false;
  const bool wasSilent = view_.Silent;
  const bool otherWords = ShowArrivals();
  if (!sim_.PacketArrived() || arrived_.empty()) return otherWords || view_.Silent != wasSilent;
  sim_.ClearPacketArrived();
  for (const LoggedDatagram& datagram : arrived_) {
    KeepValues(datagram);
    if (framesLeft_ == 0) continue;
    log_.Append(DescribeDatagram(datagram, ReverseByteOrder));
    if (framesLeft_ > 0 && --framesLeft_ == 0) StopLog();
  }
  if (missed_ > 0 && framesLeft_ != 0) {
    log_.Append({"=== " + std::to_string(missed_) + " more came too fast to be logged ==="});
  }
  const LoggedDatagram& last = arrived_.back();
  view_.Raw = DatagramHeader(last) + "\n" + HexDump(last.bytes);
  arrived_.clear();
  missed_ = 0;
  return true;
}

void LinkConsolePresenter::KeepValues(const LoggedDatagram& datagram) {
  if (Classify(datagram.bytes) != DatagramKind::Rref) return;
  for (int i = 0;; ++i) {
    const auto record = ReadRrefRecord(datagram.bytes, i);
    if (!record) return;
    const auto subscription =
        std::find_if(subscriptions_.begin(), subscriptions_.end(), [&](const auto& one) {
          return one.first == record->identifier || RrefIdentifierOnWire(one.first) == record->identifier;
        });
    if (subscription != subscriptions_.end()) subscription->second.value = record->value;
  }
}

// --- log ---

void LinkConsolePresenter::LogNext(int frames) {
  if (frames < 1 || frames > kMostFrames) return;
  if (!sim_.UdpMonitorMode()) cmdStartUDP_Click();
  if (!sim_.UdpMonitorMode()) return;
  framesLeft_ = frames;
  view_.LogStatus = "Active";
  view_.LogCaption = "Stop Logging";
}

void LinkConsolePresenter::StopLog() {
  framesLeft_ = 0;
  view_.LogStatus = "Stopped";
  view_.LogCaption = "Start Logging";
}

void LinkConsolePresenter::cmdStopLog_Click() {
  if (framesLeft_ != 0) return StopLog();
  LogNext(1);
  if (framesLeft_ != 0) framesLeft_ = -1;
}

bool LinkConsolePresenter::cmdSaveLog_Click(const std::string& path) {
  std::string error;
  if (!ReplaceFile(path, log_.Text(), error)) return Refuse("The log cannot be saved: " + error);
  Note(std::to_string(log_.Size()) + " lines saved as " + path + ".");
  return true;
}

// --- senders ---

void LinkConsolePresenter::cmdDSEL_Click(std::string_view index) {
  const auto group = WholeNumber(index, consolebox::kIndex);
  if (!group) {
    Refuse(functiontext::kIncorrectData);
  } else if (OpenLink()) {
    sim_.SendDSEL(*group);
    groups_.insert(*group);
    Note("Group " + std::to_string(*group) + " is asked for.");
  }
}

void LinkConsolePresenter::cmdUSEL_Click(std::string_view index) {
  const auto group = WholeNumber(index, consolebox::kIndex);
  if (!group) {
    Refuse(functiontext::kIncorrectData);
  } else if (model_.General.BlockUSEL == 1) {
    Note("The configuration blocks USEL: nothing was sent.");
  } else if (OpenLink()) {
    sim_.SendUSEL(*group);
    groups_.erase(*group);
    Note("Group " + std::to_string(*group) + " is stopped.");
  }
}

void LinkConsolePresenter::cmdUSELall_Click() {
  if (model_.General.BlockUSEL == 1) return Note("The configuration blocks USEL: nothing was sent.");
  if (!OpenLink()) return;
  // CommandStopAll sends no packet in monitor mode, and that is the mode in which it is mostly wanted here.
  for (int group = 0; group <= kLastStoppedGroup; ++group) sim_.SendUSEL(group);
  groups_.erase(groups_.begin(), groups_.upper_bound(kLastStoppedGroup));
  Note("All groups are stopped.");
}

bool LinkConsolePresenter::ReadGroupValue(std::string_view index, std::string_view valueNumber, int& group,
                                          int& number) {
  const auto groupTyped = WholeNumber(index, consolebox::kIndex);
  const auto numberTyped = WholeNumber(valueNumber, consolebox::kReferenceIndex);
  if (!groupTyped || !numberTyped) return Refuse(functiontext::kIncorrectData);
  group = *groupTyped;
  number = *numberTyped;
  return OpenLink();
}

void LinkConsolePresenter::cmdDataUdp_Click(std::string_view index, std::string_view valueNumber,
                                            std::string_view value) {
  int group = 0, number = 0;
  const auto typed = TypedReal<float>(value);
  if (!typed) {
    Refuse(functiontext::kIncorrectData);
  } else if (ReadGroupValue(index, valueNumber, group, number)) {
    sim_.SendDataFloat(group, number, *typed);
    Note("Sent as a float: " + ValueText(*typed) + ".");
  }
}

void LinkConsolePresenter::cmdSendDataInteger_Click(std::string_view index, std::string_view valueNumber,
                                                    std::string_view value) {
  int group = 0, number = 0;
  const auto typed = WholeNumber(value, consolebox::kIntegerValue);
  if (!typed) {
    Refuse(functiontext::kIncorrectData);
  } else if (ReadGroupValue(index, valueNumber, group, number)) {
    sim_.SendDataInt(group, number, *typed);
    Note("Sent as an integer: " + std::to_string(*typed) + ".");
  }
}

void LinkConsolePresenter::cmdSendCharacter_Click(std::string_view character) {
  if (character.size() != 1 || character[0] < ' ' || character[0] > '~') {
    Refuse(functiontext::kIncorrectData);
  } else if (OpenLink()) {
    sim_.SendDataChar(character[0]);
    Note("Sent: " + std::string(character) + ".");
  }
}

void LinkConsolePresenter::cmdSendDREF_Click(std::string_view path, std::string_view value) {
  const auto typed = TypedReal<float>(value);
  if (!typed || !IsPath(path)) {
    Refuse(functiontext::kIncorrectData);
  } else if (OpenLink()) {
    sim_.SendXplaneDREF(path, *typed);
    Note("Sent: " + std::string(path) + " = " + ValueText(*typed) + ".");
  }
}

// --- subscriptions ---

void LinkConsolePresenter::cmdSelectRREF_Click(std::string_view path, std::string_view identifier,
                                               std::string_view frequency) {
  const auto ident = WholeNumber(identifier, consolebox::kIdentifier);
  const auto times = WholeNumber(frequency, consolebox::kFrequency);
  if (!ident || !times || !IsPath(path)) {
    Refuse(functiontext::kIncorrectData);
    return;
  }
  for (const RrefRow& row : sim_.Rrefs()) {
    if (row.Identifier != *ident) continue;
    Refuse("RREF Indent: " + std::to_string(*ident) + ", already used for: " + row.Dataref);
    return;
  }
  if (!OpenLink()) return;
  sim_.SendXplaneRREF(path, *times, *ident, Register::No);
  subscriptions_[*ident] = {std::string(path), *times, 0};
  Note("Asked for " + std::to_string(*times) + " times per second.");
}

void LinkConsolePresenter::cmdDeleteRREF_Click(std::string_view path, std::string_view identifier) {
  const auto ident = WholeNumber(identifier, consolebox::kIdentifier);
  const auto own = ident ? subscriptions_.find(*ident) : subscriptions_.end();
  const std::string subscribed = own != subscriptions_.end() ? own->second.path : std::string(path);
  if (!ident || !IsPath(subscribed)) {
    Refuse(functiontext::kIncorrectData);
    return;
  }
  if (!OpenLink()) return;
  sim_.SendXplaneRREF(subscribed, 0, *ident, Register::No);
  if (own != subscriptions_.end()) subscriptions_.erase(own);
  Note("Identifier " + std::to_string(*ident) + " is cancelled.");
}

void LinkConsolePresenter::CancelAll() {
  for (const auto& [identifier, subscription] : subscriptions_) {
    sim_.SendXplaneRREF(subscription.path, 0, identifier, Register::No);
  }
  subscriptions_.clear();
}

void LinkConsolePresenter::CmdClearAllRREFs_Click() {
  if (!OpenLink()) return;
  CancelAll();
  sim_.ClearAllRREF();
  Note("All subscriptions are cancelled.");
}

std::vector<std::string> LinkConsolePresenter::cmdShowRREF_Click() const {
  std::vector<std::string> lines;
  for (const RrefRow& row : sim_.Rrefs()) {
    const float value = row.For < sim_.PortCount() ? sim_.PortAt(row.For).FloatValue : 0.0f;
    lines.push_back(SubscriptionLine(row.Identifier, row.Frequency, value, row.Dataref));
  }
  for (const auto& [identifier, subscription] : subscriptions_) {
    lines.push_back(
        SubscriptionLine(identifier, subscription.frequency, subscription.value, subscription.path));
  }
  if (lines.empty()) lines.push_back("=== There are no active RREF references ===");
  return lines;
}

// --- Function ---

bool LinkConsolePresenter::cmdCopyToFunction_Click(std::string_view functionNr, std::string_view path) {
  const auto number = WholeNumber(functionNr, consolebox::kFunctionNr);
  if (!number) return Refuse(functiontext::kOutsideConfigurable);
  std::string lines;
  if (!AppendEntry(lines, path)) return Refuse(functiontext::kCannotBeCopied);
  if (!model_.FunctionOf(*number)->FullName.empty() &&
      boxes_.Ask("The Description field of this function is not empty; Overwrite?") == kAnswerNo) {
    return false;
  }
  FunctionRecord& function = model_.Functions[static_cast<std::size_t>(*number)];
  function.FullName = lines;
  function.FunctionNr = static_cast<std::int16_t>(*number);
  model_.ConfigChanged = true;
  const std::string name = "Function " + std::to_string(*number);
  if (function.ShortName.empty()) {
    function.ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    function.XPVal1 = kUsualFrequency;
    function.Multiplier = function.Devider = 1;
    Note("Copied. " + name + " still needs a short name: give it one in the Function editor.");
  } else if (!function.Is(DataType::XplaneDataref)) {
    Note("Copied. " + name + " uses it once its data type is Xplane Dataref.");
  } else {
    Note("Copied to " + name + ".");
  }
  return true;
}

void LinkConsolePresenter::Close() {
  if (!touchedLink_) return;
  touchedLink_ = false;
  if (sim_.UdpOpen()) {
    CancelAll();
    // Where the link was open already, someone else's ports may read the same groups.
    for (const int group : groups_) {
      if (!linkWasOpen_) sim_.SendUSEL(group);
    }
  }
  subscriptions_.clear();
  groups_.clear();
  CmdStopUDP_Click();
  sim_.UseEndpoint(std::nullopt);
  if (linkWasOpen_) {
    sim_.OpenUDP();
  } else {
    sim_.CloseUDP();
  }
}

}  // namespace tvx
