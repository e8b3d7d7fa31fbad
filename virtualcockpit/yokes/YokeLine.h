// A yoke on a pseudo-terminal. Only the adapter can be unplugged: the yoke keeps its power, and its time.
#pragma once

#include "virtualcockpit/bus/HardwareLine.h"
#include "virtualcockpit/yokes/YokeDevice.h"

namespace tvx::vc {

class YokeLine final : public HardwareLine {
  Q_OBJECT
 public:
  YokeLine(Byte address, std::string link, QObject* parent = nullptr);
  ~YokeLine() override { Unplug(); }

  YokeDevice& Device() { return device_; }
  const YokeDevice& Device() const { return device_; }

 private:
  void OnBytes(ByteView bytes, std::int64_t nowNs) override;
  void OnTick(std::int64_t nowNs) override;

  YokeDevice device_;
  std::int64_t lastNs_;
};

}  // namespace tvx::vc
