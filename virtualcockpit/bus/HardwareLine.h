// A piece of hardware on a pseudo-terminal, served by Qt's event loop: it is given what the program writes,
// and the time. Between the two lies a serial line, as slow as it is set to be.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "virtualcockpit/bus/PtyLine.h"
#include "virtualcockpit/pace/Clock.h"
#include "virtualcockpit/pace/SerialWire.h"

namespace tvx::vc {

class HardwareLine : public QObject {
  Q_OBJECT
 public:
  // Makes a new pseudo-terminal and leads the link to it. False with the reason in Line().LastError().
  bool Plug();
  // Takes the adapter out: the program at the other end sees a hang-up.
  void Unplug();
  void SetTraits(const LineTraits& traits) { wire_.SetTraits(traits); }
  const LineTraits& Traits() const { return wire_.Traits(); }

  // The hardware speaks by itself.
  void Say(ByteView bytes) { Write(bytes); }

  const PtyLine& Line() const { return line_; }
  bool Plugged() const { return line_.Plugged(); }
  // Where a program finds the line: the link, or the device where there is no link.
  std::string Path() const { return line_.Link().empty() ? line_.Device() : line_.Link(); }

 protected:
  // Whether time goes on for the hardware while its adapter is out.
  enum class Unplugged { Stands, GoesOn };
  // `link` as for PtyLine::Plug. The line starts unplugged. Whoever derives unplugs in its destructor.
  HardwareLine(std::string link, int tickMs, Unplugged unplugged, QObject* parent);
  // Sends, at the moment of the bytes that are just being taken, otherwise now.
  void Write(ByteView bytes);
  std::int64_t NowNs() const { return clock_.NowNs(); }

  // Times never run backwards from one call to the next.
  virtual void OnBytes(ByteView bytes, std::int64_t nowNs) = 0;
  virtual void OnTick(std::int64_t nowNs) = 0;
  virtual void OnUnplug() {}

 private:
  void ReadAll();
  // Lets happen what is due, and comes back when something is due again.
  void Serve();

  std::string link_;
  Unplugged unplugged_;
  SystemClock clock_;
  PtyLine line_;
  SerialWire wire_;
  std::optional<std::int64_t> taking_;  // the moment of the bytes that the hardware is taking
  QTimer timer_, wireTimer_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx::vc
