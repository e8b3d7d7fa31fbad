// Replies of any content from gauges of every kind, while the cycle runs.
#include <cstddef>
#include <cstdint>

#include "core/GaugeReceiver.h"
#include "tests/fakes/CockpitRig.h"

namespace {

// One gauge of every Gaugetype, at the GaugeID of its code.
struct ReplyRig : tvx::CockpitRig {
  tvx::GaugeReceiver receiver{model, serial, cycle, sim, special};
  tvx::Registration events;
  ReplyRig() {
    events = Bus().SetHandler([this](tvx::SerialEvent event) { receiver.OnComm(event, true); });
    for (int n = 1; n < 300; ++n) Define(n);
    for (int type = 1; type < 141; ++type) {
      tvx::GaugeRecord& gauge = AddGauge(type, type);
      gauge.GaugeFunction1 = 51;
      gauge.GaugeFunction2 = 52;
      gauge.GaugeSetting5 = 0x7F;
      gauge.GaugeSetting6 = 60;
    }
    AddPlate(0, 100, 1000);
    Start();
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static ReplyRig rig;
  // Whole replies are made of every 22 bytes: the address, the type and the content; the rest comes as it is.
  while (size >= 22) {
    std::array<tvx::Byte, 25> reply{};
    reply[1] = data[0];
    reply[2] = data[1];
    for (std::size_t i = 0; i < 20; ++i) reply[4 + i] = data[2 + i];
    reply[24] = 0xFF;
    rig.Bus().Arrive(reply);
    data += 22;
    size -= 22;
  }
  rig.Bus().Arrive(tvx::ByteView(data, size));
  rig.cycle.Tick();
  rig.Bus().Writes.clear();
  rig.Bus().Sent.clear();
  rig.Bus().Log.clear();
  rig.socket.TakeSent();
  rig.socket.SetUps.clear();
  rig.socket.RemotePorts.clear();
  return 0;
}
