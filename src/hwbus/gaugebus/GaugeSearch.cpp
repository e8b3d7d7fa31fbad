#include "hwbus/gaugebus/GaugeSearch.h"

#include "base/NumberFormat.h"
#include "config/setup/GaugeList.h"

namespace tvx {
namespace {

std::string IdText(std::size_t gaugeID) {
  return FormatNumberText(static_cast<double>(gaugeID), "000");
}

}  // namespace

GaugeSearch::GaugeSearch(ConfigModel& model, Serial& serial, MessageBoxes& boxes)
    : model_(model), serial_(serial), boxes_(boxes) {}

bool GaugeSearch::Start() {
  if (running_) return false;
  if (!serial_.Line().IsOpen() && !serial_.LineOpening()) {
    boxes_.Show("The gauge bus cannot be searched. " + serial_.LineWords());
    return false;
  }
  seen_.fill({});
  model_.GaugeState.fill(GaugeConnection::Unknown);
  running_ = true;
  cancelled_ = false;
  address_ = found_ = ticksOpening_ = 0;
  serial_.Line().DiscardInput();
  Ask();
  Changed();
  return true;
}

void GaugeSearch::Cancel() {
  if (!running_) return;
  running_ = false;
  cancelled_ = true;
  Changed();
}

// Where the transmit slot is taken, the turn waits for the next tick.
void GaugeSearch::Ask() {
  ticksLeft_ = 0;
  waiting_ = 0;
  if (serial_.TransmitPending()) return;
  serial_.WriteGaugeCommand(address_, kCommandReportState, 0);
  ticksLeft_ = kReplyTicks;
}

void GaugeSearch::Tick() {
  if (!running_) return;
  if (!serial_.Line().IsOpen()) {
    if (serial_.LineOpening() && ++ticksOpening_ < Serial::kOpeningTicks) return;
    Cancel();
    boxes_.Show("The search has ended. " + serial_.LineWords());
    return;
  }
  if (ticksLeft_ == 0) {
    Ask();
    return;
  }
  if (serial_.TransmitPending() || --ticksLeft_ > 0) return;
  // An answer that is half in has time to become whole.
  const std::size_t waiting = serial_.Line().Waiting();
  if (waiting > 0 && waiting != waiting_) {
    waiting_ = waiting;
    ticksLeft_ = kGrowTicks;
    return;
  }
  CloseTurn();
}

void GaugeSearch::CloseTurn() {
  SerialPort& bus = serial_.Line();
  // An incomplete reply raises no event: two replies may have met on the line, or one was damaged.
  if (bus.Waiting() > 0) {
    bus.DiscardInput();
    OnReply(std::nullopt);
  }
  const auto index = static_cast<std::size_t>(address_);
  if (seen_[index].replies == 0) model_.GaugeState[index] = GaugeConnection::NotConnected;
  if (++address_ < kAddresses) {
    Ask();
  } else {
    running_ = false;
  }
  Changed();
}

void GaugeSearch::OnReply(std::optional<ReplyView> reply) {
  if (!running_) return;
  if (!reply) {
    seen_[static_cast<std::size_t>(address_)].unreadable = true;
    return;
  }
  // A slow gauge may answer in another's turn: the reply itself tells whose it is. One whose turn is still to
  // come answers something that was asked before the search.
  if (ReplyGaugeID(*reply) > address_) return;
  Seen& seen = seen_[static_cast<std::size_t>(ReplyGaugeID(*reply))];
  if (++seen.replies == 1) Take(*reply, seen);
}

void GaugeSearch::Take(ReplyView reply, Seen& seen) {
  const auto index = static_cast<std::size_t>(ReplyGaugeID(reply));
  GaugeRecord& gauge = model_.Gauges[index];
  model_.GaugeState[index] = GaugeConnection::Connected;
  ++found_;
  seen.type = static_cast<Byte>(ReplyGaugetype(reply));
  seen.unknownType = !Knows(seen.type);
  if (seen.unknownType) return;
  if (gauge.GaugeType != 0 && gauge.GaugeType != seen.type) {
    seen.otherType = gauge.GaugeType;
    return;
  }
  const auto model = static_cast<Byte>(ReplyModel(reply));
  const auto version = static_cast<Byte>(ReplyVersion(reply));
  if (gauge.GaugeType == seen.type && gauge.GaugeSetting1 == model && gauge.GaugeSetting2 == version) return;
  gauge.GaugeType = seen.type;
  gauge.GaugeSetting1 = model;
  gauge.GaugeSetting2 = version;
  model_.ConfigChanged = true;
}

bool GaugeSearch::Knows(int type) const {
  for (const GaugetypeRecord& kind : model_.Gaugetypes) {
    if (kind.Code != 0 && kind.Code == type) return true;
  }
  return false;
}

std::vector<std::string> GaugeSearch::Remarks() const {
  std::vector<std::string> remarks;
  for (std::size_t id = 0; id < seen_.size(); ++id) {
    const Seen& seen = seen_[id];
    const std::string name = "GaugeID " + IdText(id) + ": ";
    if (seen.replies > 1) {
      remarks.push_back(name +
                        "two gauges have this address. Unplug one of them and give the other a new one.");
    } else if (seen.unreadable) {
      remarks.push_back(name +
                        "unreadable answer. Two gauges may have this address, or the line is disturbed.");
    }
    if (seen.unknownType) {
      remarks.push_back(name + "instrument type " + std::to_string(seen.type) + " is not known.");
    }
    if (seen.otherType != 0) {
      remarks.push_back(name + "is a \"" + GaugetypeNameInList(model_, seen.type) +
                        "\", but configured as \"" + GaugetypeNameInList(model_, seen.otherType) + "\".");
    }
  }
  return remarks;
}

std::string GaugeSearch::Summary() const {
  if (address_ == 0 && !running_) return {};
  const std::string found = std::to_string(found_) + (found_ == 1 ? " gauge" : " gauges") + " found";
  if (running_) return "Searching address " + IdText(static_cast<std::size_t>(address_)) + "; " + found + ".";
  if (cancelled_) return "Search ended after " + std::to_string(address_) + " addresses; " + found + ".";
  std::string missing;
  for (std::size_t id = 0; id < seen_.size(); ++id) {
    if (model_.Gauges[id].GaugeType != 0 && seen_[id].replies == 0) missing += " " + IdText(id);
  }
  return "Search done: " + found + (missing.empty() ? "." : "; configured, but silent:" + missing + ".");
}

void GaugeSearch::Changed() {
  changed_();
}

}  // namespace tvx
