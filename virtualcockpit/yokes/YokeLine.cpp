#include "virtualcockpit/yokes/YokeLine.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 10;

}  // namespace

YokeLine::YokeLine(Byte address, std::string link, QObject* parent)
    : HardwareLine(std::move(link), kTickMs, Unplugged::GoesOn, parent),
      device_(address, [this](ByteView bytes) { Write(bytes); }),
      lastNs_(NowNs()) {}

void YokeLine::OnBytes(ByteView bytes, std::int64_t nowNs) {
  OnTick(nowNs);
  device_.OnBytes(bytes);
}

void YokeLine::OnTick(std::int64_t nowNs) {
  device_.Advance(static_cast<double>(nowNs - lastNs_) / static_cast<double>(kNsPerSecond));
  lastNs_ = nowNs;
}

}  // namespace tvx::vc
