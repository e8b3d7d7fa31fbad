// A unit on a pseudo-terminal of its own.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <string>

#include "virtualcockpit/bus/PtyLine.h"
#include "virtualcockpit/lines/Unit.h"

namespace tvx::vc {

class UnitLine : public QObject {
  Q_OBJECT
 public:
  // `link` as for PtyLine::Plug. The line starts unplugged. The unit must outlive it.
  UnitLine(Unit& unit, std::string link, QObject* parent = nullptr);
  ~UnitLine() override;

  bool Plug();
  void Unplug();
  const PtyLine& Line() const { return line_; }
  Unit& Hardware() { return unit_; }

 private:
  void ReadAll();

  Unit& unit_;
  std::string link_;
  PtyLine line_;
  QTimer timer_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx::vc
