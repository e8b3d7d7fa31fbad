// Once running, neither a tick nor a reply allocates; and no reply's content does harm.
#include "instruments/kinds/Registry.h"
#include "tests/fakes/AllocationCount.h"
#include "tests/instruments/kinds/InstrumentRig.h"

namespace tvx::allocationtest {

TEST(Allocation, NoTickAndNoReplyOfAnyKindAllocates) {
  for (int type = 1; type < 256; ++type) {
    if (InstrumentOf(type) == nullptr) continue;
    InstrumentRig rig;
    const int plate = rig.AddPlate(0, 100, 1000);
    GaugeRecord& gauge = rig.AddGauge(12, type);
    gauge.GaugeSetting3 = gauge.GaugeSetting4 = static_cast<Byte>(plate);
    gauge.GaugeSetting6 = 51;
    rig.StartWith(type, 0x7F, type == 124 ? 1 : 51, type == 124 ? 30 : 52);
    float value = 1.0f;
    for (const char* letters : {"", "PP", "CA", "AS", "XY", "XF", "SD", "CS", "AV", "PT"}) {
      for (const int fill : {0x00, 0x01, 0x02, 0x03, 0x7F, 0x80, 0xFF}) {
        for (const int n : {2, 3, 4, 5, 9, 14, 20, 26, 27, 31, 33, 35, 38, 47, 51, 52, 91, 107, 143, 281})
          rig.Set(n, value = -1.3f * value);
        if (std::abs(value) > 1e6f) value = 1.0f;
        const Bytes reply = InstrumentRig::ReplyBytes(type, letters, fill);
        const std::size_t before = allocations;
        rig.Bus().Arrive(reply);
        rig.cycle.Tick();
        EXPECT_EQ(allocations, before) << type << ' ' << letters << ' ' << fill;
        EXPECT_TRUE(rig.serial.ReplyReceived()) << type;
      }
    }
    const std::size_t before = allocations;
    const auto counted = std::make_unique<int>(1);
    EXPECT_EQ(allocations, before + 1) << "the count counts";
  }
}

}  // namespace tvx::allocationtest
