// The gauge bus on a pseudo-terminal.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <string>

#include "virtualcockpit/bus/GaugeBus.h"
#include "virtualcockpit/bus/PtyLine.h"

namespace tvx::vc {

class GaugeBusLine : public QObject {
  Q_OBJECT
 public:
  // `link` as for PtyLine::Plug. The line starts unplugged.
  explicit GaugeBusLine(std::string link = {}, QObject* parent = nullptr);
  ~GaugeBusLine() override;

  // Makes a new pseudo-terminal and leads the link to it. False with the reason in Line().LastError().
  bool Plug();
  // Takes the adapter out: the program at the other end sees a hang-up.
  void Unplug();

  GaugeBus& Bus() { return bus_; }
  const PtyLine& Line() const { return line_; }
  // Where a program finds the line: the link, or the device where there is no link.
  std::string Path() const { return line_.Link().empty() ? line_.Device() : line_.Link(); }

 private:
  void ReadAll();

  std::string link_;
  PtyLine line_;
  GaugeBus bus_;
  QTimer timer_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx::vc
