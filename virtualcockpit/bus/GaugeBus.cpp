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
    device->SetNow(nowMs);
    if (!powered_ || device->Starting()) continue;
    heard = true;
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
  if (device.Fault() == DeviceFault::Half) {
    if (fault_ != LineFault::Silent) ++replies_, write_(ByteView(reply).first(kReplySize / 2));
    return;
  }
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
  for (const auto& device : devices_) device->SetNow(nowMs);
  const auto due = std::stable_partition(waiting_.begin(), waiting_.end(),
                                         [nowMs](const Waiting& w) { return w.dueMs <= nowMs; });
  const std::vector<Waiting> ready(waiting_.begin(), due);
  waiting_.erase(waiting_.begin(), due);
  for (const Waiting& w : ready) Transmit(w.reply, false);
}

void GaugeBus::SetPower(bool on) {
  if (on == powered_) return;
  powered_ = on;
  Interrupt();
  for (const auto& device : devices_) {
    if (on && device->Fault() != DeviceFault::Dead) device->PowerUp();
  }
}

void GaugeBus::Interrupt() {
  decoder_.Reset();
  waiting_.clear();
}

}  // namespace tvx::vc
