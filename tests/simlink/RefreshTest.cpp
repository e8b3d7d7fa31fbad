// Ports are refreshed by what they read, and it must come out as if every datagram refreshed them all.
#include <random>

#include "simlink/PortValue.h"
#include "tests/simlink/Fixture.h"

namespace tvx::refreshtest {

struct Refresh : LinkTest {
  static constexpr int kFunctionCount = 9;
  static constexpr int kPorts = 150;  // more than two words of a set of bits

  int Any(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  Port AnyPort() { return static_cast<Port>(Any(kPorts)); }
  FunctionRecord& AnyFunction() { return model.Functions[static_cast<std::size_t>(1 + Any(kFunctionCount))]; }

  void Change(FunctionRecord& f) {
    f.ComboDT = static_cast<Byte>(Any(20) == 0 ? Any(10) : 4 * Any(2));  // most of them Float or Byte
    f.XPindex1 = static_cast<std::int16_t>(Any(100) == 0 ? -1 : Any(6));
    f.XPindex2 = static_cast<std::int16_t>(Any(6));
    f.XPVal1 = static_cast<Byte>(Any(8));
  }
  void ChangeSomething() {
    float value = static_cast<float>(Any(300));
    const int what = Any(8);
    if (what == 0) return Change(AnyFunction());
    if (what == 1) return sim.EnableReadSimPort(AnyPort());
    if (what == 2) return sim.DisableReadSimPort(AnyPort());
    if (what == 3) return sim.BlockPort(AnyPort(), Any(2) == 0);
    if (what == 4) return sim.NewSeqNr(AnyPort(), static_cast<Byte>(Any(3)));
    if (what == 5) return socket.Deliver(RrefDatagram({{Any(kPorts), value}}));
    sim.PutPort(AnyPort(), value);
  }
  std::string AnyDatagram() {
    std::string bytes = "DATA*";
    for (int groups = Any(4); groups > 0; --groups) {
      // 300 fits no Byte.
      const float value = static_cast<float>(Any(30) == 0 ? 300 : Any(200));
      bytes += DataDatagram({{Any(40) == 0 ? 151 : Any(6), value}}).substr(5);
    }
    return bytes.size() < 6 ? bytes + 'x' : bytes;  // a shorter one is ignored
  }
  // What the datagram does to `rows`, one port after the other.
  bool RefreshAll(const std::string& bytes, std::vector<PortRow>& rows) {
    for (int i = 0; const auto group = ReadDataGroup(View(bytes), i); ++i) {
      if (group->index >= 6) return false;
      values_[static_cast<std::size_t>(group->index)] = group->values;
    }
    for (PortRow& row : rows) {
      const FunctionRecord& f = std::as_const(model).Functions[static_cast<std::size_t>(row.FunctionNr)];
      const auto slot = f.SlotOf(row.SeqNr);
      if (!row.ReadEnabled || row.Blocked || !ReadsDataGroup(f.ComboDT)) continue;
      if (slot.index < 0) return false;
      if (!StoreDataValue(row, f.ComboDT, values_[static_cast<std::size_t>(slot.index)][slot.value]))
        return false;
    }
    return true;
  }

  std::mt19937 random_{12};
  std::array<std::array<float, 8>, 6> values_{};
};

TEST_F(Refresh, IsAsIfEveryDatagramRefreshedEveryPort) {
  for (int i = 1; i <= kFunctionCount; ++i) Change(Define(i, DataType::Float));
  for (int i = 0; i < kPorts; ++i) sim.OpenSimPort(1 + Any(kFunctionCount), 1);
  int counted = 0;
  for (int step = 0; step < 20000; ++step) {
    for (int changes = Any(3); changes > 0; --changes) ChangeSomething();
    std::vector<PortRow> expected;
    for (int i = 0; i < kPorts; ++i) expected.push_back(sim.PortAt(i));
    const std::string datagram = AnyDatagram();
    sim.TakePacketsReceived();
    socket.Deliver(datagram);
    const bool whole = RefreshAll(datagram, expected);
    ASSERT_EQ(sim.PacketsReceived(), whole ? 1 : 0) << "step " << step;
    counted += whole ? 1 : 0;
    for (int i = 0; i < kPorts; ++i) {
      const PortRow& is = sim.PortAt(i);
      const PortRow& should = expected[static_cast<std::size_t>(i)];
      ASSERT_EQ(std::tie(is.ByteValue, is.IntValue, is.LongValue, is.FloatValue),
                std::tie(should.ByteValue, should.IntValue, should.LongValue, should.FloatValue))
          << "port " << i << ", step " << step;
    }
    socket.Sent.clear();
  }
  EXPECT_GT(counted, 2000);
  EXPECT_LT(counted, 18000) << "both ends of a datagram must have happened often";
}

}  // namespace tvx::refreshtest
