#include "virtualcockpit/lines/UnitLine.h"

#include <array>

#include "virtualcockpit/MonotonicClock.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 40;
constexpr int kReadsAtOnce = 64;

}  // namespace

UnitLine::UnitLine(Unit& unit, std::string link, QObject* parent)
    : QObject(parent), unit_(unit), link_(std::move(link)) {
  unit_.SetWrite([this](ByteView bytes) { line_.Write(bytes); });
  timer_.setInterval(kTickMs);
  connect(&timer_, &QTimer::timeout, this, [this] { unit_.Tick(NowMs()); });
}

UnitLine::~UnitLine() {
  Unplug();
  unit_.SetWrite({});
}

bool UnitLine::Plug() {
  Unplug();
  if (!line_.Plug(link_)) return false;
  notifier_ = std::make_unique<QSocketNotifier>(line_.Handle(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { ReadAll(); });
  timer_.start();
  return true;
}

void UnitLine::Unplug() {
  timer_.stop();
  if (notifier_) {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  line_.Unplug();
  unit_.Interrupt();
}

void UnitLine::ReadAll() {
  std::array<Byte, 4096> buffer;
  for (int i = 0; i < kReadsAtOnce; ++i) {
    const std::size_t count = line_.Read(buffer);
    if (count == 0) return;
    unit_.Receive(ByteView(buffer).first(count), NowMs());
  }
}

}  // namespace tvx::vc
