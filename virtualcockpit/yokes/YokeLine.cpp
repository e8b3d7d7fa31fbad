#include "virtualcockpit/yokes/YokeLine.h"

#include "virtualcockpit/MonotonicClock.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 10;
constexpr int kReadsAtOnce = 64;

}  // namespace

YokeLine::YokeLine(Byte address, std::string link, QObject* parent)
    : QObject(parent),
      link_(std::move(link)),
      device_(address, [this](ByteView bytes) { line_.Write(bytes); }) {
  timer_.setTimerType(Qt::PreciseTimer);
  timer_.setInterval(kTickMs);
  connect(&timer_, &QTimer::timeout, this, [this] { PassTime(); });
}

YokeLine::~YokeLine() {
  Unplug();
}

bool YokeLine::Plug() {
  Unplug();
  lastMs_ = NowMs();
  timer_.start();
  if (!line_.Plug(link_)) return false;
  notifier_ = std::make_unique<QSocketNotifier>(line_.Handle(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { ReadAll(); });
  return true;
}

// Only the adapter goes: the yoke keeps its power, and its time.
void YokeLine::Unplug() {
  if (notifier_) {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  line_.Unplug();
}

void YokeLine::PassTime() {
  const std::int64_t now = NowMs();
  device_.Advance(static_cast<double>(now - lastMs_) / 1000);
  lastMs_ = now;
}

void YokeLine::ReadAll() {
  PassTime();
  std::array<Byte, 1024> buffer;
  for (int i = 0; i < kReadsAtOnce; ++i) {
    const std::size_t count = line_.Read(buffer);
    if (count == 0) return;
    device_.OnBytes(ByteView(buffer).first(count));
  }
}

}  // namespace tvx::vc
