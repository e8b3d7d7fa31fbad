#include <gtest/gtest.h>

#include "Bytes.h"
#include "virtualcockpit/lines/ClusterUnit.h"
#include "virtualcockpit/lines/IoBoard.h"

namespace tvx::vc {
namespace {

using test::Bytes;

template <typename Kind>
struct UnitRig {
  UnitRig() {
    unit.SetWrite([this](ByteView bytes) { sent.emplace_back(bytes.begin(), bytes.end()); });
  }
  Kind unit;
  std::vector<Bytes> sent;
};

TEST(IoBoard, CommandsReachLampsAndSettings) {
  UnitRig<IoBoard> rig;
  rig.unit.Receive(test::Command(10, 4, 1), 0);
  rig.unit.Receive(test::Command(10, 5, 0x8000), 0);
  rig.unit.Receive(test::Command(10, 11, 256 * 5 + 3), 0);
  rig.unit.Receive(test::Command(11, 4, 3), 0);  // for another address
  EXPECT_TRUE(rig.unit.Lamp(0) && rig.unit.Lamp(31));
  EXPECT_FALSE(rig.unit.Lamp(1) || rig.unit.Lamp(30));
  EXPECT_EQ(rig.unit.Debounce(5), 3);
  EXPECT_TRUE(rig.sent.empty());
}

TEST(IoBoard, Faults) {
  UnitRig<IoBoard> rig;
  const auto answers = [&](DeviceFault fault) {
    rig.unit.SetFault(fault);
    rig.sent.clear();
    rig.unit.Receive(test::Command(10, 7), 1000);
    return rig.sent.size();
  };
  EXPECT_EQ(answers(DeviceFault::None), 1u);
  EXPECT_EQ(answers(DeviceFault::Silent), 0u);
  EXPECT_EQ(answers(DeviceFault::Dead), 0u);
  EXPECT_EQ(answers(DeviceFault::Duplicate), 2u);
  EXPECT_EQ(answers(DeviceFault::Garbled), 1u);
  EXPECT_NE(rig.sent[0][0], 0x00);
  EXPECT_EQ(answers(DeviceFault::Late), 0u);
  rig.unit.Tick(1399);
  EXPECT_TRUE(rig.sent.empty());
  rig.unit.Tick(1400);
  EXPECT_EQ(rig.sent.size(), 1u);
}

Bytes ClusterFrame(Byte first, Byte rest) {
  Bytes frame(40, rest);
  frame[0] = first;
  frame[39] = 0xAA;
  return frame;
}

TEST(ClusterUnit, FindsItsFramesAndAnswersEach) {
  UnitRig<ClusterUnit> rig;
  Bytes frame = ClusterFrame('F', 0);
  frame[21] = 0x02;  // needle 3
  frame[22] = 0x58;
  frame[37] = 0x03;
  Bytes stream{'x', 'F', 1, 2, 3};  // the rest of a frame that was cut off
  stream.insert(stream.end(), frame.begin(), frame.end());
  stream.insert(stream.end(), frame.begin(), frame.end());
  for (const Byte byte : stream) rig.unit.Receive({&byte, 1}, 0);
  EXPECT_EQ(rig.unit.Needle(3), 600);
  EXPECT_TRUE(rig.unit.Lit() && rig.unit.Powered());
  ASSERT_GE(rig.sent.size(), 1u);
  EXPECT_EQ(rig.sent[0].size(), 16u);
  EXPECT_EQ(rig.sent[0][0], 0xFF);
}

}  // namespace
}  // namespace tvx::vc
