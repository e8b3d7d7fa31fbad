#include "virtualcockpit/bus/GaugeBus.h"

#include <algorithm>

namespace tvx::vc {
namespace {

constexpr std::size_t kMostWaiting = 64;

}  // namespace

std::string_view FaultText(LineFault fault) {
  switch (fault) {
    case LineFault::None:
      return "works";
    case LineFault::Silent:
      return "no answer passes";
    case LineFault::Garbled:
      return "answers are damaged";
    case LineFault::Deaf:
      return "no command passes";
  }
  return "";
}

Device& GaugeBus::Add(std::unique_ptr<Device> device) {
  devices_.push_back(std::move(device));
  return *devices_.back();
}

Device* GaugeBus::Find(int gaugeID) const {
  const auto found = std::find_if(devices_.begin(), devices_.end(),
                                  [gaugeID](const auto& d) { return d->Id().gaugeID == gaugeID; });
  return found == devices_.end() ? nullptr : found->get();
}

void GaugeBus::OnBytes(ByteView bytes, std::int64_t nowMs) {
  if (fault_ == LineFault::Deaf) return;
  decoder_.Take(bytes, [this, nowMs](const Frame& frame) { OnFrame(frame, nowMs); });
}

void GaugeBus::OnFrame(const Frame& frame, std::int64_t nowMs) {
  bool heard = false;
  const Byte address = std::visit([](const auto& f) { return f.gaugeID; }, frame);
  for (const auto& device : devices_) {
    if (device->Id().gaugeID != address || device->Fault() == DeviceFault::Dead) continue;
    heard = true;
    device->SetNow(nowMs);
    if (const auto* change = std::get_if<AddressFrame>(&frame)) {
      device->TakeAddress(change->newGaugeID);
      continue;
    }
    const auto& command = std::get<CommandFrame>(frame);
    if (command.command != Device::kReportState) device->Receive(command.command, command.value);
    if (device->AnswersTo(command.command)) {
      ++polls_;
      Answer(*device, nowMs);
    }
  }
  if (!heard) ++unheard_;
}

void GaugeBus::Answer(Device& device, std::int64_t nowMs) {
  if (device.Fault() == DeviceFault::Silent) return;
  const Reply reply = device.Answer();
  if (device.Fault() == DeviceFault::Late) {
    if (waiting_.size() < kMostWaiting) waiting_.push_back({nowMs + kLateMs, reply});
    return;
  }
  Transmit(reply, device.Fault() == DeviceFault::Garbled);
  if (device.Fault() == DeviceFault::Duplicate) {
    // The other one is of another model and answers at the same moment: one answer hard behind the other.
    Reply other = reply;
    other[3] = static_cast<Byte>(other[3] + 1);
    Transmit(other, false);
  }
}

void GaugeBus::Transmit(Reply reply, bool garbled) {
  if (fault_ == LineFault::Silent) return;
  if (garbled || fault_ == LineFault::Garbled) {
    // In turn the first byte, the last, or one in the middle; a byte is lost as well every fourth time.
    static constexpr std::size_t kPlaces[] = {0, kReplySize - 1, 11};
    reply[kPlaces[damage_ % 3]] ^= 0x5A;
    const std::size_t size = damage_ % 4 == 3 ? kReplySize - 1 : kReplySize;
    ++damage_;
    ++replies_;
    write_(ByteView(reply).first(size));
    return;
  }
  ++replies_;
  write_(reply);
}

void GaugeBus::Tick(std::int64_t nowMs) {
  const auto due = std::stable_partition(waiting_.begin(), waiting_.end(),
                                         [nowMs](const Waiting& w) { return w.dueMs <= nowMs; });
  const std::vector<Waiting> ready(waiting_.begin(), due);
  waiting_.erase(waiting_.begin(), due);
  for (const Waiting& w : ready) Transmit(w.reply, false);
}

void GaugeBus::Interrupt() {
  decoder_.Reset();
  waiting_.clear();
}

}  // namespace tvx::vc
