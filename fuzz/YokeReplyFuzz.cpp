// Arbitrary bytes, breaks and pauses on a yoke's line. Each step is a byte that says what happens and, for
// bytes that arrive, how many; between them the cycle goes on.
#include <cmath>
#include <cstdlib>

#include "ffb/Yoke.h"
#include "ffb/forces/ForceShaper.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"

namespace {

using namespace tvx;

void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FakeSerialPort port;
  FakeClock clock;
  Yoke yoke(port, clock);
  port.SetReceiveThreshold(kYokeReplySize);
  port.Open(3);
  ByteView left(data, size);
  if (left.size() < 4) return 0;
  YokeSettings settings;
  settings.roll = {left[0] * 256, static_cast<float>(left[1]) / 1000};
  settings.pitch = {left[2] * 256, -static_cast<float>(left[3]) / 1000};
  settings.calibrated = (left[1] & 1) != 0;
  yoke.Configure(settings);
  yoke.SelectMode(static_cast<YokeMode>(left[0] % 5));
  left = left.subspan(4);
  const FfbVariables values;
  const FfbSettings ffb = ReadFfbSettings(ConfigModel());
  Feel feel;
  while (!left.empty()) {
    const Byte step = left[0];
    left = left.subspan(1);
    if (step == 255) {
      port.Raise(SerialEvent::Break);
    } else if (step == 254) {
      port.Raise(SerialEvent::Framing);
    } else if (step == 253) {
      port.Unplug();
    } else if (step == 252) {
      port.OpenResult = SerialState::Open;
      port.Open(3);
    } else {
      const std::size_t count = std::min<std::size_t>(step, left.size());
      port.Arrive(left.first(count));
      left = left.subspan(count);
    }
    clock.Advance(40);
    feel.Advance(values, ffb.forces, 0.04);
    yoke.ProcessTimer_Tick({values, ffb, feel, SafetyCause::None, std::nullopt, 0.04});
    Require(std::abs(yoke.Line().RollPosition()) <= kYokeTravel &&
            std::abs(yoke.Line().PitchPosition()) <= kYokeTravel);
    for (const Axis axis : {Axis::Roll, Axis::Pitch}) {
      const double force = HandForce(yoke.Commanded(), axis, yoke.Line().RollPosition());
      Require(std::isfinite(force) && std::abs(force) <= 1);
    }
    Require(port.Writes.empty() || port.Writes.back().size() % 13 == 0);
    port.Writes.clear();
    port.Sent.clear();
  }
  return 0;
}
