#include "drawn/devices/AltimeterDevice.h"
#include "drawn/devices/IOModuleDevice.h"
#include "drawn/devices/NeedleDevice.h"
#include "drawn/devices/VorDevice.h"
#include "tests/Test.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/bus/GaugeBus.h"

namespace tvx::vc {
namespace {

// A bus with one instrument of each kind, and the bytes that came back.
struct GaugeBusTest : testing::Test {
  GaugeBusTest() : bus_([this](ByteView bytes) { written_.emplace_back(bytes.begin(), bytes.end()); }) {
    for (const Device::Identity id :
         {Device::Identity{10, 4, 1, 12}, Device::Identity{11, 101, 2, 14}, Device::Identity{14, 106, 1, 13},
          Device::Identity{23, 10, 1, 10}, Device::Identity{30, 200, 3, 4}})
      bus_.Add(MakeDevice(id));
  }
  void Command(int gaugeID, int command, int value = 0) {
    bus_.OnBytes(test::Command(gaugeID, command, value), now_);
  }
  // The answer to "report state", or nothing.
  Bytes Poll(int gaugeID) {
    written_.clear();
    Command(gaugeID, 7);
    return written_.empty() ? Bytes{} : written_.front();
  }
  template <typename Kind>
  Kind& As(int gaugeID) {
    return dynamic_cast<Kind&>(*bus_.Find(gaugeID));
  }

  std::vector<Bytes> written_;
  std::int64_t now_ = 1000;
  GaugeBus bus_;
};

TEST_F(GaugeBusTest, RepliesByteByByte) {
  EXPECT_EQ(Poll(10), test::Answer({10, 4, 1, 12}));
  EXPECT_EQ(Poll(30), test::Answer({30, 200, 3, 4})) << "a kind without a face answers too";

  Command(11, 12, 1013);
  EXPECT_EQ(Poll(11), test::Answer({11, 101, 2, 14}, "P =1013 P 01 . 80"));
  As<AltimeterDevice>(11).TurnKnob(-3);
  EXPECT_EQ(Poll(11)[11], 125);
  EXPECT_EQ(Poll(11)[11], 128) << "a click is told once";

  As<VorDevice>(14).TurnKnob(-240 + 90);
  EXPECT_EQ(Poll(14), test::Answer({14, 106, 1, 13}, "C =813 A")) << "1084 * 3 / 4";
  As<VorDevice>(14).TurnKnob(-91);
  EXPECT_EQ(As<VorDevice>(14).KnobDegrees(), 359);

  auto& module = As<IOModuleDevice>(23);
  for (const auto& [axis, value] : {std::pair{0, 0xABC}, {1, 0x123}, {7, 9999}})
    module.SetAnalogue(axis, value);
  written_.clear();
  Command(23, 6, 0x8001);
  ASSERT_EQ(written_.size(), 1u) << "a module answers its lamps";
  EXPECT_EQ(written_[0], test::Answer({23, 10, 1, 10}, "I O - M O D . A1 .. 0F BC 23 ..... FF"));
  EXPECT_TRUE(module.Lamp(0) && module.Lamp(15) && !module.Lamp(1));
}

TEST_F(GaugeBusTest, DeviceFaultsShowOnTheLine) {
  const struct {
    DeviceFault fault;
    bool moves;           // the needle still follows
    std::size_t answers;  // to two polls
  } cases[] = {{DeviceFault::None, true, 2},    {DeviceFault::Silent, true, 0},
               {DeviceFault::Garbled, true, 2}, {DeviceFault::Half, true, 2},
               {DeviceFault::Late, true, 0},    {DeviceFault::Duplicate, true, 4},
               {DeviceFault::Dead, false, 0}};
  int position = 400;
  for (const auto& c : cases) {
    SCOPED_TRACE(FaultText(c.fault));
    bus_.Find(10)->SetFault(c.fault);
    Command(10, 5, ++position);
    EXPECT_EQ(As<NeedleDevice>(10).First() == position, c.moves);
    written_.clear();
    Command(10, 7);
    Command(10, 7);
    EXPECT_EQ(written_.size(), c.answers);
    for (const Bytes& reply : written_) {
      const bool whole =
          reply.size() == kReplySize && reply.front() == 0 && reply[11] == 0 && reply.back() == 0xFF;
      EXPECT_EQ(whole, c.fault != DeviceFault::Garbled && c.fault != DeviceFault::Half);
    }
    EXPECT_FALSE(Poll(11).empty()) << "the others are not touched";
  }
}

}  // namespace
}  // namespace tvx::vc
