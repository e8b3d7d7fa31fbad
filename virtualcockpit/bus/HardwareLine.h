// A piece of hardware on a pseudo-terminal, served by Qt's event loop: it is given what the program writes,
// and the time.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "virtualcockpit/bus/PtyLine.h"

namespace tvx::vc {

class HardwareLine : public QObject {
  Q_OBJECT
 public:
  // Makes a new pseudo-terminal and leads the link to it. False with the reason in Line().LastError().
  bool Plug();
  // Takes the adapter out: the program at the other end sees a hang-up.
  void Unplug();

  const PtyLine& Line() const { return line_; }
  // Where a program finds the line: the link, or the device where there is no link.
  std::string Path() const { return line_.Link().empty() ? line_.Device() : line_.Link(); }

 protected:
  // Whether time goes on for the hardware while its adapter is out.
  enum class Unplugged { Stands, GoesOn };
  // `link` as for PtyLine::Plug. The line starts unplugged. Whoever derives unplugs in its destructor.
  HardwareLine(std::string link, int tickMs, Unplugged unplugged, QObject* parent);
  void Write(ByteView bytes) { line_.Write(bytes); }

  virtual void OnBytes(ByteView bytes, std::int64_t nowMs) = 0;
  virtual void OnTick(std::int64_t nowMs) = 0;
  virtual void OnUnplug() {}

 private:
  void ReadAll();

  std::string link_;
  Unplugged unplugged_;
  PtyLine line_;
  QTimer timer_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx::vc
