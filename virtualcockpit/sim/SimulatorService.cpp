#include "virtualcockpit/sim/SimulatorService.h"

#include "virtualcockpit/MonotonicClock.h"

namespace tvx::vc {

SimulatorService::SimulatorService(QObject* parent)
    : QObject(parent), sim_([this](ByteView datagram, const Peer& to) { port_.SendTo(datagram, to); }) {
  timer_.setTimerType(Qt::PreciseTimer);
  timer_.setInterval(Simulator::kTickMilliseconds);
  connect(&timer_, &QTimer::timeout, this, [this] {
    sim_.Tick(NowMs());
    emit Ticked();
  });
}

SimulatorService::~SimulatorService() {
  Stop();
}

bool SimulatorService::Start(std::uint16_t port) {
  Stop();
  wantedPort_ = port;
  error_.clear();
  if (!port_.Open(port, error_)) return false;
  wantedPort_ = port_.LocalPort();
  notifier_ = std::make_unique<QSocketNotifier>(port_.Handle(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    port_.Receive([this](ByteView datagram, const Peer& from) { sim_.OnDatagram(datagram, from); });
  });
  timer_.start();
  return true;
}

void SimulatorService::Stop() {
  timer_.stop();
  if (notifier_) {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  port_.Close();
  sim_.ForgetClients();
}

}  // namespace tvx::vc
