#include "simlink/LinkConsole.h"

#include <array>
#include <charconv>
#include <ctime>
#include <limits>

#include "base/NumberFormat.h"
#include "config/ValueText.h"
#include "platform/AtomicFile.h"
#include "simlink/FunctionEditDraft.h"
#include "simlink/FunctionEditEntries.h"
#include "simlink/ReferenceList.h"

namespace tvx {
namespace {

constexpr std::size_t kKeptBetweenTicks = 100;
constexpr int kMostFrames = 1000;
constexpr int kLastIdentifier = 32767;
constexpr int kFastest = 255;  // times per second: what the packet holds
constexpr Byte kUsualFrequency = 10;

constexpr std::string_view kHelpLines[] = {
    "== Short Explanation of X-Plane interface using UDP ==",
    "- Send Data To Xplane refers to the 'General Data Output' as given in",
    "  Data Output tab in Xplane.",
    "- By DSEL Xplane is commanded to return the Index + 8 values at",
    "  selected UDP Rate in Packets/sec.",
    "- By USEL the transfer of this Index is stopped.",
    "- Writing DATA to an Index Value can be done using 'Send Data(float)'. ",
    "- Character and Integer data formats are not used here.  ",
    "- DREF and RREF are used to exchange data by Data References. ",
    "- They refer to the 'Dataref Read/Write' of the Xplane Data Output tab. ",
    "- To set data select the Data Reference from the list and fill the Value.",
    "- RREF is the other way around. At the given frequency X-Plane will",
    "  transfer the value of that reference.",
    "- X-Plane will not return the full Data Reference Text but uses an",
    "  Identifier that you can freely define.",
    "- To Test the UDP interface best use the DSEL and USEL functions.",
    "  Check for 'Network via UDP' box in Xplane and returned data.",
};

// A whole number within limits, as typed.
std::optional<std::int32_t> Whole(std::string_view text, std::int64_t lowest, std::int64_t highest) {
  const auto number = ParseReal<double>(text);
  if (!number || *number < static_cast<double>(lowest) || *number > static_cast<double>(highest) ||
      *number != static_cast<double>(static_cast<std::int64_t>(*number))) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(*number);
}

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

std::string ConsoleHelp() {
  std::string help;
  for (const std::string_view line : kHelpLines) {
    if (!help.empty()) help += "\r\n";
    help += line;
  }
  return help;
}

LinkConsole::LinkConsole(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock)
    : Endpoint{model.General.RemoteIP, model.General.RemotePort, model.General.LocalPort},
      ReverseByteOrder(model.General.ByteOrderReverse != 0),
      model_(model),
      sim_(sim),
      boxes_(boxes),
      clock_(clock),
      linkWasOpen_(sim.UdpOpen()) {}

bool LinkConsole::Refuse(std::string_view message) {
  boxes_.Show(message);
  return false;
}

bool LinkConsole::OpenLink() {
  sim_.UseEndpoint(Endpoint);
  touchedLink_ = true;
  if (sim_.OpenUDP()) return true;
  return Refuse("The link to the simulator cannot be opened: " + sim_.LinkError());
}

// --- receive display ---

void LinkConsole::cmdStartUDP_Click() {
  if (!OpenLink()) return CmdStopUDP_Click();
  sim_.SetMonitor([this](ByteView bytes, std::int32_t port) { OnDatagram(bytes, port); });
  sim_.PacketArrived = 0;
  sim_.UdpMonitorMode = 1;
  view_.Status = "Running";
  Note("Listening on port " + Endpoint.LocalPort + ".");
}

void LinkConsole::CmdStopUDP_Click() {
  sim_.UdpMonitorMode = 0;
  sim_.SetMonitor(nullptr);
  StopLog();
  arrived_.clear();
  missed_ = 0;
  view_.Status = "Stopped";
}

// Keeps a copy only: a burst of datagrams must cost little here.
void LinkConsole::OnDatagram(ByteView bytes, std::int32_t port) {
  if (arrived_.size() >= kKeptBetweenTicks) {
    ++missed_;
    return;
  }
  arrived_.push_back({TimeText(clock_), port, {bytes.begin(), bytes.end()}});
}

bool LinkConsole::DisplayTimer_Tick() {
  if (sim_.PacketArrived == 0 || arrived_.empty()) return false;
  sim_.PacketArrived = 0;
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

void LinkConsole::KeepValues(const LoggedDatagram& datagram) {
  if (Classify(datagram.bytes) != DatagramKind::Rref) return;
  for (int i = 0;; ++i) {
    const auto record = ReadRrefRecord(datagram.bytes, i);
    if (!record) return;
    const auto subscription = subscriptions_.find(record->identifier);
    if (subscription != subscriptions_.end()) subscription->second.value = record->value;
  }
}

// --- log ---

void LinkConsole::LogNext(int frames) {
  if (frames < 1 || frames > kMostFrames) return;
  if (sim_.UdpMonitorMode == 0) cmdStartUDP_Click();
  if (sim_.UdpMonitorMode == 0) return;
  framesLeft_ = frames;
  view_.LogStatus = "Active";
  view_.LogCaption = "Stop Logging";
}

void LinkConsole::StopLog() {
  framesLeft_ = 0;
  view_.LogStatus = "Stopped";
  view_.LogCaption = "Start Logging";
}

void LinkConsole::cmdStopLog_Click() {
  if (framesLeft_ != 0) return StopLog();
  LogNext(1);
  if (framesLeft_ != 0) framesLeft_ = -1;
}

bool LinkConsole::cmdSaveLog_Click(const std::string& path) {
  std::string error;
  if (!ReplaceFile(path, log_.Text(), error)) return Refuse("The log cannot be saved: " + error);
  Note(std::to_string(log_.Size()) + " lines saved as " + path + ".");
  return true;
}

// --- senders ---

void LinkConsole::cmdDSEL_Click(std::string_view index) {
  const auto group = Whole(index, 0, 255);
  if (!group) {
    Refuse(functiontext::kIncorrectData);
  } else if (OpenLink()) {
    sim_.SendDSEL(*group);
    Note("Group " + std::to_string(*group) + " is asked for.");
  }
}

void LinkConsole::cmdUSEL_Click(std::string_view index) {
  const auto group = Whole(index, 0, 255);
  if (!group) {
    Refuse(functiontext::kIncorrectData);
  } else if (model_.General.BlockUSEL == 1) {
    Note("The configuration blocks USEL: nothing was sent.");
  } else if (OpenLink()) {
    sim_.SendUSEL(*group);
    Note("Group " + std::to_string(*group) + " is stopped.");
  }
}

void LinkConsole::cmdUSELall_Click() {
  if (model_.General.BlockUSEL == 1) return Note("The configuration blocks USEL: nothing was sent.");
  if (!OpenLink()) return;
  // CommandStopAll rests in monitor mode, and here it is wanted in that mode above all.
  for (int group = 0; group <= kLastStoppedGroup; ++group) sim_.SendUSEL(group);
  Note("All groups are stopped.");
}

bool LinkConsole::ReadGroupValue(std::string_view index, std::string_view valueNumber, int& group,
                                 int& number) {
  const auto groupTyped = Whole(index, 0, 255);
  const auto numberTyped = Whole(valueNumber, 0, kDataValuesPerGroup - 1);
  if (!groupTyped || !numberTyped) return Refuse(functiontext::kIncorrectData);
  group = *groupTyped;
  number = *numberTyped;
  return OpenLink();
}

void LinkConsole::cmdDataUdp_Click(std::string_view index, std::string_view valueNumber,
                                   std::string_view value) {
  int group = 0, number = 0;
  const auto typed = ParseReal<float>(value);
  if (!typed) {
    Refuse(functiontext::kIncorrectData);
  } else if (ReadGroupValue(index, valueNumber, group, number)) {
    sim_.SendDataFloat(group, number, *typed);
    Note("Sent as a float: " + ValueText(*typed) + ".");
  }
}

void LinkConsole::cmdSendDataInteger_Click(std::string_view index, std::string_view valueNumber,
                                           std::string_view value) {
  using Limits = std::numeric_limits<std::int32_t>;
  int group = 0, number = 0;
  const auto typed = Whole(value, Limits::min(), Limits::max());
  if (!typed) {
    Refuse(functiontext::kIncorrectData);
  } else if (ReadGroupValue(index, valueNumber, group, number)) {
    sim_.SendDataInt(group, number, *typed);
    Note("Sent as an integer: " + std::to_string(*typed) + ".");
  }
}

void LinkConsole::cmdSendCharacter_Click(std::string_view character) {
  if (character.size() != 1 || character[0] < ' ' || character[0] > '~') {
    Refuse(functiontext::kIncorrectData);
  } else if (OpenLink()) {
    sim_.SendDataChar(character[0]);
    Note("Sent: " + std::string(character) + ".");
  }
}

void LinkConsole::cmdSendDREF_Click(std::string_view path, std::string_view value) {
  const auto typed = ParseReal<float>(value);
  if (!typed || !IsEntry(path)) {
    Refuse(functiontext::kIncorrectData);
  } else if (OpenLink()) {
    sim_.SendXplaneDREF(path, *typed);
    Note("Sent: " + std::string(path) + " = " + ValueText(*typed) + ".");
  }
}

// --- subscriptions ---

void LinkConsole::cmdSelectRREF_Click(std::string_view path, std::string_view identifier,
                                      std::string_view frequency) {
  const auto ident = Whole(identifier, 0, kLastIdentifier);
  const auto times = Whole(frequency, 1, kFastest);
  if (!ident || !times || !IsEntry(path)) {
    Refuse(functiontext::kIncorrectData);
    return;
  }
  for (const RrefRow& row : sim_.Rrefs()) {
    if (row.Identifier != *ident) continue;
    Refuse("RREF Indent: " + std::to_string(*ident) + ", already used for: " + row.Dataref);
    return;
  }
  if (!OpenLink()) return;
  sim_.SendXplaneRREF(path, *times, *ident, 0);
  subscriptions_[*ident] = {std::string(path), *times, 0};
  Note("Asked for " + std::to_string(*times) + " times per second.");
}

void LinkConsole::cmdDeleteRREF_Click(std::string_view path, std::string_view identifier) {
  const auto ident = Whole(identifier, 0, kLastIdentifier);
  const auto own = ident ? subscriptions_.find(*ident) : subscriptions_.end();
  const std::string subscribed = own != subscriptions_.end() ? own->second.path : std::string(path);
  if (!ident || !IsEntry(subscribed)) {
    Refuse(functiontext::kIncorrectData);
    return;
  }
  if (!OpenLink()) return;
  sim_.SendXplaneRREF(subscribed, 0, *ident, 0);
  if (own != subscriptions_.end()) subscriptions_.erase(own);
  Note("Identifier " + std::to_string(*ident) + " is cancelled.");
}

void LinkConsole::CmdClearAllRREFs_Click() {
  if (!OpenLink()) return;
  for (const auto& [identifier, subscription] : subscriptions_) {
    sim_.SendXplaneRREF(subscription.path, 0, identifier, 0);
  }
  subscriptions_.clear();
  sim_.ClearAllRREF();
  Note("All subscriptions are cancelled.");
}

std::vector<std::string> LinkConsole::cmdShowRREF_Click() const {
  std::vector<std::string> lines;
  for (const RrefRow& row : sim_.Rrefs()) {
    const bool isPort = row.Identifier >= 0 && row.Identifier < sim_.PortCount();
    const float value = isPort ? sim_.PortAt(row.Identifier).FloatValue : 0.0f;
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

bool LinkConsole::cmdCopyToFunction_Click(std::string_view functionNr, std::string_view path) {
  const auto number = Whole(functionNr, kFirstConfigurable, kLastConfigurable);
  if (!number) return Refuse(functiontext::kOutsideConfigurable);
  std::string lines;
  if (!AppendEntry(lines, path)) return Refuse(functiontext::kCannotBeCopied);
  FunctionRecord& function = model_.Functions[static_cast<std::size_t>(*number)];
  if (!function.FullName.empty() &&
      boxes_.Ask("The Description field of this function is not empty; Overwrite?") == kAnswerNo) {
    return false;
  }
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

void LinkConsole::Close() {
  if (!touchedLink_) return;
  touchedLink_ = false;
  if (sim_.UdpOpen()) {
    for (const auto& [identifier, subscription] : subscriptions_) {
      sim_.SendXplaneRREF(subscription.path, 0, identifier, 0);
    }
  }
  subscriptions_.clear();
  CmdStopUDP_Click();
  sim_.UseEndpoint(std::nullopt);
  if (linkWasOpen_) {
    sim_.OpenUDP();
  } else {
    sim_.CloseUDP();
  }
}

}  // namespace tvx
