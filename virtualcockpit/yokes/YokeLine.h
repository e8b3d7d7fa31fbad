// A yoke on a pseudo-terminal, with time of its own.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <string>

#include "virtualcockpit/bus/PtyLine.h"
#include "virtualcockpit/yokes/YokeDevice.h"

namespace tvx::vc {

class YokeLine : public QObject {
  Q_OBJECT
 public:
  // `link` as for PtyLine::Plug. The line starts unplugged.
  YokeLine(Byte address, std::string link, QObject* parent = nullptr);
  ~YokeLine() override;

  bool Plug();
  void Unplug();
  bool Plugged() const { return line_.Plugged(); }
  const PtyLine& Line() const { return line_; }
  YokeDevice& Device() { return device_; }
  const YokeDevice& Device() const { return device_; }

 private:
  void ReadAll();
  void PassTime();

  std::string link_;
  PtyLine line_;
  YokeDevice device_;
  QTimer timer_;
  std::int64_t lastMs_ = 0;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx::vc
