// The stand-in simulator on a real socket, with a timer of its own.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

#include "virtualcockpit/sim/Simulator.h"
#include "virtualcockpit/sim/UdpPort.h"

namespace tvx::vc {

class SimulatorService : public QObject {
  Q_OBJECT
 public:
  explicit SimulatorService(QObject* parent = nullptr);
  ~SimulatorService() override;

  // Starts to listen on the port (0: any free one). False with the reason in LastError().
  bool Start(std::uint16_t port);
  // Vanishes: no datagram is read or sent any more, and every client is forgotten.
  void Stop();
  // Comes back on the port it had.
  bool Return() { return Start(wantedPort_); }

  bool Present() const { return port_.IsOpen(); }
  std::uint16_t Port() const { return port_.IsOpen() ? port_.LocalPort() : wantedPort_; }
  const std::string& LastError() const { return error_; }
  Simulator& Sim() { return sim_; }

 signals:
  void Ticked();  // the flight has flown on

 private:
  UdpPort port_;
  Simulator sim_;
  QTimer timer_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::uint16_t wantedPort_ = 49000;
  std::string error_;
};

}  // namespace tvx::vc
