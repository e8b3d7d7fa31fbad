#include "virtualcockpit/bus/GaugeBusLine.h"

#include "virtualcockpit/MonotonicClock.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 50;
constexpr int kReadsAtOnce = 64;

}  // namespace

GaugeBusLine::GaugeBusLine(std::string link, QObject* parent)
    : QObject(parent), link_(std::move(link)), bus_([this](ByteView bytes) { line_.Write(bytes); }) {
  timer_.setInterval(kTickMs);
  connect(&timer_, &QTimer::timeout, this, [this] { bus_.Tick(NowMs()); });
}

GaugeBusLine::~GaugeBusLine() {
  Unplug();
}

bool GaugeBusLine::Plug() {
  Unplug();
  if (!line_.Plug(link_)) return false;
  notifier_ = std::make_unique<QSocketNotifier>(line_.Handle(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { ReadAll(); });
  timer_.start();
  return true;
}

void GaugeBusLine::Unplug() {
  timer_.stop();
  if (notifier_) {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  line_.Unplug();
  bus_.Interrupt();
}

void GaugeBusLine::ReadAll() {
  std::array<Byte, 4096> buffer;
  for (int i = 0; i < kReadsAtOnce; ++i) {
    const std::size_t count = line_.Read(buffer);
    if (count == 0) return;
    bus_.OnBytes(ByteView(buffer).first(count), NowMs());
  }
}

}  // namespace tvx::vc
