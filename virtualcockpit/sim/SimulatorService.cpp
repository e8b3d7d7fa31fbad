#include "virtualcockpit/sim/SimulatorService.h"

#include <QSysInfo>

namespace tvx::vc {
namespace {

constexpr Peer kBeaconGroup{0xEFFF0101, 49707};  // 239.255.1.1
constexpr std::int64_t kBeaconMs = 1000;
constexpr std::string_view kVersion = "sim/version/xplane_internal_version";
constexpr int kAsTheyCome = 500;  // datagrams at once, of a simulator that reads them as they come

// It loads these two in turn.
constexpr struct {
  std::string_view icao, path;
} kTrainer{"C172", "Aircraft/Trainers/trainer.acf"}, kAirliner{"B738", "Aircraft/Airliners/airliner.acf"};

}  // namespace

SimulatorService::SimulatorService(QObject* parent)
    : QObject(parent),
      sim_([this](ByteView datagram, const Peer& to) { from_.Pass(datagram, to, clock_.NowMs()); }),
      towards_([this](ByteView datagram, const Peer& from) { sim_.OnDatagram(datagram, from); }),
      from_([this](ByteView datagram, const Peer& to) { Transmit(datagram, to); }),
      beaconTarget_(kBeaconGroup) {
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, [this] { Frame(); });
  SetTraits({});
}

SimulatorService::~SimulatorService() {
  Stop();
}

void SimulatorService::SetTraits(const SimTraits& traits) {
  const bool anew = traits.seed != traits_.seed || traits.network != traits_.network;
  traits_ = traits;
  timer_.setInterval(traits.frameMs);
  DataOutput output = sim_.Output();
  output.toWhoeverSelects = !traits.dataToTarget;
  sim_.SetOutput(output);
  if (!anew) return;
  towards_.SetTraits(traits.network, traits.seed);
  from_.SetTraits(traits.network, traits.seed + 1);
  aircraft_ = Chance(traits.seed + 2);
}

bool SimulatorService::Start(std::uint16_t port) {
  Stop();
  wantedPort_ = port;
  error_.clear();
  const auto buffer = traits_.usualBuffer ? UdpPort::Buffer::Usual : UdpPort::Buffer::Large;
  if (!port_.Open(port, buffer, error_)) return false;
  wantedPort_ = port_.LocalPort();
  // The port above may be taken; then answers leave from any other one.
  std::string taken;
  if (traits_.ownSendPort && !sendPort_.Open(static_cast<std::uint16_t>(wantedPort_ + 1), buffer, taken)) {
    sendPort_.Open(0, buffer, taken);
  }
  if (traits_.requestsPerFrame == 0) {
    notifier_ = std::make_unique<QSocketNotifier>(port_.Handle(), QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { Read(kAsTheyCome); });
  }
  loadedAtMs_ = beaconDueMs_ = 0;
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
  sendPort_.Close();
  towards_.Clear();
  from_.Clear();
  sim_.Restart(!traits_.keepsGroups, traits_.forgetsValues);
}

void SimulatorService::ChangeAircraft(double percentMissing, std::int64_t pauseMs) {
  loadedAtMs_ = clock_.NowMs() + pauseMs;
  sim_.ChangeAircraft(percentMissing, aircraft_);
  airliner_ = !airliner_;
  sim_.NameAircraft(airliner_ ? kAirliner.icao : kTrainer.icao, airliner_ ? kAirliner.path : kTrainer.path);
}

void SimulatorService::Read(int most) {
  const std::int64_t now = clock_.NowMs();
  port_.Receive(most,
                [this, now](ByteView datagram, const Peer& from) { towards_.Pass(datagram, from, now); });
}

void SimulatorService::Frame() {
  const std::int64_t now = clock_.NowMs();
  if (now < loadedAtMs_) return;
  if (traits_.requestsPerFrame > 0) Read(traits_.requestsPerFrame);
  towards_.Advance(now);
  sim_.Tick(now);
  from_.Advance(now);
  if (traits_.beacon && now >= beaconDueMs_) SendBeacon(now);
  emit Ticked();
}

void SimulatorService::Transmit(ByteView datagram, const Peer& to) {
  (sendPort_.IsOpen() ? sendPort_ : port_).SendTo(datagram, to);
}

void SimulatorService::SendBeacon(std::int64_t nowMs) {
  beaconDueMs_ = nowMs + kBeaconMs;
  const auto version = static_cast<std::int32_t>(sim_.Datarefs().ValueOf(kVersion).value_or(0));
  Transmit(BuildBeacon(version, port_.LocalPort(), QSysInfo::machineHostName().toStdString()), beaconTarget_);
}

}  // namespace tvx::vc
