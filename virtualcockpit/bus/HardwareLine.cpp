#include "virtualcockpit/bus/HardwareLine.h"

#include <algorithm>
#include <array>

namespace tvx::vc {
namespace {

constexpr int kReadsAtOnce = 64;
// How often a busy line is looked at. What happens on it has its own exact time; only the program's driver
// sees when it was looked at, and an adapter with its usual 16 ms does not let it see more.
constexpr int kPatientMs = 4, kPromptMs = 1;
constexpr int kPromptLatencyMs = 4;

}  // namespace

HardwareLine::HardwareLine(std::string link, int tickMs, Unplugged unplugged, QObject* parent)
    : QObject(parent),
      link_(std::move(link)),
      unplugged_(unplugged),
      wire_(
          [this](ByteView bytes, std::int64_t atNs) {
            taking_ = atNs;
            OnBytes(bytes, atNs);
            taking_.reset();
          },
          [this](ByteView bytes) { line_.Write(bytes); }) {
  timer_.setInterval(tickMs);
  wireTimer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, [this] {
    const std::int64_t now = NowNs();
    wire_.Advance(now);
    OnTick(now);
    Serve();
  });
  connect(&wireTimer_, &QTimer::timeout, this, [this] { Serve(); });
  if (unplugged == Unplugged::GoesOn) timer_.start();
}

bool HardwareLine::Plug() {
  Unplug();
  if (!line_.Plug(link_)) return false;
  notifier_ = std::make_unique<QSocketNotifier>(line_.Handle(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    ReadAll();
    Serve();
  });
  timer_.start();
  return true;
}

void HardwareLine::Unplug() {
  if (unplugged_ == Unplugged::Stands) timer_.stop();
  wireTimer_.stop();
  if (notifier_) {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  line_.Unplug();
  wire_.Reset();
  OnUnplug();
}

void HardwareLine::Write(ByteView bytes) {
  wire_.FromHardware(bytes, taking_.value_or(NowNs()));
  if (wire_.Busy() && !wireTimer_.isActive()) Serve();
}

void HardwareLine::ReadAll() {
  std::array<Byte, 4096> buffer;
  for (int i = 0; i < kReadsAtOnce; ++i) {
    const std::size_t room = wire_.Traits().paced ? std::min(buffer.size(), wire_.Room()) : buffer.size();
    const std::size_t count = room == 0 ? 0 : line_.Read(std::span(buffer).first(room));
    if (count == 0) return;
    wire_.FromProgram(ByteView(buffer).first(count), NowNs());
  }
}

void HardwareLine::Serve() {
  if (taking_) return;  // called from within
  wire_.Advance(NowNs());
  if (!line_.Plugged()) return;
  // A full adapter leaves the rest to the driver, as a full line does.
  if (!notifier_->isEnabled()) ReadAll();
  notifier_->setEnabled(wire_.Room() > 0);
  if (!wire_.Busy()) {
    wireTimer_.stop();
    return;
  }
  const int interval = wire_.Traits().latencyMs <= kPromptLatencyMs ? kPromptMs : kPatientMs;
  if (!wireTimer_.isActive() || wireTimer_.interval() != interval) wireTimer_.start(interval);
}

}  // namespace tvx::vc
