#include "virtualcockpit/yokes/YokeLine.h"

#include "virtualcockpit/MonotonicClock.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 10;

}  // namespace

YokeLine::YokeLine(Byte address, std::string link, QObject* parent)
    : HardwareLine(std::move(link), kTickMs, Unplugged::GoesOn, parent),
      device_(address, [this](ByteView bytes) { Write(bytes); }),
      lastMs_(NowMs()) {}

void YokeLine::OnBytes(ByteView bytes, std::int64_t nowMs) {
  OnTick(nowMs);
  device_.OnBytes(bytes);
}

void YokeLine::OnTick(std::int64_t nowMs) {
  device_.Advance(static_cast<double>(nowMs - lastMs_) / 1000);
  lastMs_ = nowMs;
}

}  // namespace tvx::vc
