// The stand-in simulator on a real socket, with a timer of its own.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

#include "virtualcockpit/pace/Clock.h"
#include "virtualcockpit/sim/BadNetwork.h"
#include "virtualcockpit/sim/SimTraits.h"
#include "virtualcockpit/sim/Simulator.h"
#include "virtualcockpit/sim/UdpPort.h"

namespace tvx::vc {

class SimulatorService : public QObject {
  Q_OBJECT
 public:
  explicit SimulatorService(QObject* parent = nullptr);
  ~SimulatorService() override;

  // A new frame time, network and seed count from now on, what concerns the sockets from the next start on.
  void SetTraits(const SimTraits& traits);
  const SimTraits& Traits() const { return traits_; }

  // Starts to listen on the port (0: any free one). False with the reason in LastError().
  bool Start(std::uint16_t port);
  // It is off, and Return starts it on this port.
  void StayOff(std::uint16_t port) {
    Stop();
    wantedPort_ = port;
  }
  // Vanishes: no datagram is read or sent any more, and what the traits say is forgotten.
  void Stop();
  // Comes back on the port it had.
  bool Return() { return Start(wantedPort_); }

  // Loads another aircraft. While it loads nothing is read or sent; then so many in a hundred of the datarefs
  // that were asked for do not exist, and those that had been missing do.
  void ChangeAircraft(double percentMissing = 20, std::int64_t pauseMs = 3000);
  bool Loading() const { return clock_.NowMs() < loadedAtMs_; }

  // Where the beacon is heard: the network's group, or an address that a test listens at.
  void SetBeaconTarget(const Peer& target) { beaconTarget_ = target; }

  bool Present() const { return port_.IsOpen(); }
  std::uint16_t Port() const { return port_.IsOpen() ? port_.LocalPort() : wantedPort_; }
  const std::string& LastError() const { return error_; }
  Simulator& Sim() { return sim_; }
  const Simulator& Sim() const { return sim_; }

 signals:
  void Ticked();  // the flight has flown on

 private:
  void Frame();
  void Read(int most);
  void Transmit(ByteView datagram, const Peer& to);
  void SendBeacon(std::int64_t nowMs);

  SystemClock clock_;
  SimTraits traits_;
  UdpPort port_, sendPort_;
  Simulator sim_;
  BadNetwork towards_, from_;  // the simulator
  Chance aircraft_{1};
  bool airliner_ = false;  // flies that, not the trainer
  QTimer timer_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::uint16_t wantedPort_ = 49000;
  std::string error_;
  std::int64_t loadedAtMs_ = 0, beaconDueMs_ = 0;
  Peer beaconTarget_;
};

}  // namespace tvx::vc
