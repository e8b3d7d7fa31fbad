#include "virtualcockpit/bus/HardwareLine.h"

#include <array>

#include "virtualcockpit/MonotonicClock.h"

namespace tvx::vc {
namespace {

constexpr int kReadsAtOnce = 64;

}  // namespace

HardwareLine::HardwareLine(std::string link, int tickMs, Unplugged unplugged, QObject* parent)
    : QObject(parent), link_(std::move(link)), unplugged_(unplugged) {
  timer_.setInterval(tickMs);
  connect(&timer_, &QTimer::timeout, this, [this] { OnTick(NowMs()); });
  if (unplugged == Unplugged::GoesOn) timer_.start();
}

bool HardwareLine::Plug() {
  Unplug();
  if (!line_.Plug(link_)) return false;
  notifier_ = std::make_unique<QSocketNotifier>(line_.Handle(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { ReadAll(); });
  timer_.start();
  return true;
}

void HardwareLine::Unplug() {
  if (unplugged_ == Unplugged::Stands) timer_.stop();
  if (notifier_) {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  line_.Unplug();
  OnUnplug();
}

void HardwareLine::ReadAll() {
  std::array<Byte, 4096> buffer;
  for (int i = 0; i < kReadsAtOnce; ++i) {
    const std::size_t count = line_.Read(buffer);
    if (count == 0) return;
    OnBytes(ByteView(buffer).first(count), NowMs());
  }
}

}  // namespace tvx::vc
