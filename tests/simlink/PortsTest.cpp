// Opening, reading and writing simulator ports, and their listing.

#include "simlink/PortValue.h"
#include "tests/simlink/Fixture.h"

namespace tvx::portstest {

using enum DataType;
using Ports = LinkTest;

TEST_F(Ports, OpeningNumbersThemInOrder) {
  Define(60, Float);
  sim.SetCurrentOpener(opener::kYokes);
  Byte sequence = 0;
  Port port = 77;
  sim.OpenSimPort(60, sequence, port);
  EXPECT_EQ((std::tuple{port, sequence, sim.OpenSimPort(60, 4), sim.OpenSimPort(60, 256),
                        sim.OpenSimPort(60, -1), sim.PortAt(0).OpenedBy, sim.PortAt(1).SeqNr}),
            (std::tuple{0, 1, 1, kNoPort, kNoPort, 5000, 4}));
  for (const auto& [function, expected] :
       {std::pair{0, kNoPort}, {-1, kNoPort}, {61, kNoPort}, {301, Port{77}}}) {
    port = 77;
    sim.OpenSimPort(function, sequence, port);
    EXPECT_EQ(port, expected) << function;
  }
  EXPECT_EQ((std::tuple{sim.PortCount(), sim.PortsOpened()}), (std::tuple{2, 2}));
  EXPECT_TRUE(socket.Sent.empty() && boxes.shown.empty());
  for (int i = 2; i < 32767; ++i) sim.OpenSimPort(60, 1);
  EXPECT_EQ(sim.PortAt(32766).FunctionNr, 60);
  EXPECT_EQ(sim.OpenSimPort(60, 1), kNoPort);
}

TEST_F(Ports, ZeroFactorsAreWarnedOf) {
  FunctionRecord& f = Define(60, Float, 3);
  f.Multiplier = f.Devider = 0;
  const Port port = sim.OpenSimPort(60, 1);
  EXPECT_EQ(boxes.shown,
            (Texts{"Warning: Opening Function number : 60\r\nFunction contains division by zero.",
                   "Warning: Opening Function number : 60\r\nFunction contains multiply by zero."}));
  sim.EnableReadSimPort(port);
  f.Devider = 1;
  socket.Deliver(DataDatagram({{3, 5}}));
  EXPECT_EQ(Get(port), 0);
  EXPECT_EQ(Put(port, 5), 5);  // nothing that could be sent
  EXPECT_EQ(socket.Sent.size(), 1u);
}

TEST_F(Ports, DatarefsSubscribeOnOpening) {
  FunctionRecord& f = Define(60, XplaneDataref, 0, 20);
  f.FullName = "#1:sim/a\r\n#2:sim/b\r\n";
  f.XPVal2 = 5;
  f.XPVal4 = 1;
  EXPECT_EQ(sim.OpenSimPort(60, 3), 0);  // frequency 0: written only
  EXPECT_EQ(sim.OpenSimPort(60, 2), 1);
  Port port = 77;
  Byte sequence = 4;
  sim.OpenSimPort(60, sequence, port);  // no line for it
  EXPECT_EQ(port, 77);
  EXPECT_EQ(sim.PortCount(), 2);
  sim.EnableReadSimPort(1);
  sim.DisableReadSimPort(1);
  const auto sent = socket.TakeSent();
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0].substr(5, 15), Hex("05 00 00 00 01 00 00 00") + "sim/b" + std::string(2, '\0'));
  Put(1, 2.5f);
  sim.NewSeqNr(1, 0);  // counts as 1
  Put(1, 2.5f);
  EXPECT_EQ(socket.Sent[0].bytes.substr(0, 14), "DREF0" + FloatBytes(2.5f) + "sim/b");
  EXPECT_EQ(socket.Sent[1].bytes.substr(9, 5), "sim/a");
}

TEST_F(Ports, EnablingSelectsAndDisablingUnselectsTheGroup) {
  OpenEnabled(60, Float, 17);
  FunctionRecord& f = Define(61, XplaneCmnd, 20);
  f.XPindex3 = 21;
  const Port port = sim.OpenSimPort(61, 1);
  sim.EnableReadSimPort(port);
  sim.NewSeqNr(port, 3);
  sim.DisableReadSimPort(port);
  sim.DisableReadSimPort(0);
  for (const Port none : {Port{2}, Port{32768}, kNoPort}) {
    sim.EnableReadSimPort(none);
    sim.DisableReadSimPort(none);
    sim.NewSeqNr(none, 2);
    EXPECT_EQ(Put(none, 5) + Get(none), 5 - 12345);
  }
  EXPECT_EQ(socket.TakeSent(),
            (Texts{"DSEL0\x14" + std::string(3, '\0'), "USEL0\x15" + std::string(3, '\0')}));
  EXPECT_TRUE(sim.PortAt(0).ReadEnabled);
  EXPECT_FALSE(sim.PortAt(port).ReadEnabled);
}

TEST(PortValue, EveryTypeHasItsRawValue) {
  const auto raw = [](DataType type, int bits) {
    PortRow row;
    row.ByteValue = static_cast<Byte>(bits);
    row.IntValue = static_cast<std::int16_t>(bits);
    row.LongValue = bits;
    row.FloatValue = 1.5f;
    return RawValue(row, static_cast<Byte>(type));
  };
  const std::tuple<DataType, int, std::optional<float>> cases[] = {
      {ByteType, 127, 127},       {ByteType, 128, -127},
      {ByteType, 255, 0},         {UnsignedInt, 5, 5},
      {Integer, -32768, -32768},  {UnsignedInt, -1, 65534},
      {Long, 16777217, 16777216}, {Float, 0, 1.5f},
      {BcdCode, 0x1234, 1234},    {BcdCode, 0x9999, 9999},
      {BcdCode, 0x123A, {}},      {XplaneCmnd, 1, {}},
      {XplaneDataref, 0, 1.5f},   {static_cast<DataType>(8), 1, {}},
  };
  for (const auto& [type, bits, value] : cases)
    EXPECT_EQ(raw(type, bits), value) << static_cast<int>(type) << " " << bits;
}

TEST_F(Ports, ValuesAreScaledOnReadingOnly) {
  const Port port = OpenEnabled(60, Float, 3);
  FunctionRecord& f = model.Functions[60];
  f.BoxAdd = 2;
  f.Multiplier = 3;
  f.Devider = 4;
  socket.Deliver(DataDatagram({{3, 10}}));
  float raw = 0;
  EXPECT_TRUE(sim.GetPortRaw(port, raw));
  EXPECT_EQ(raw, 10);
  EXPECT_EQ(Get(port), 9);
  EXPECT_EQ(Put(port, 9), 10);
  f.Devider = 0;
  EXPECT_TRUE(std::isinf(Get(port)));
}

TEST_F(Ports, WritingSendsWhatTheTypeAsksFor) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  // What is put, what Put makes of it, and what goes out as a DATA integer; std::nullopt: none does.
  const std::tuple<DataType, float, float, std::optional<std::int32_t>> cases[] = {
      {ByteType, 255.4f, 255.4f, 255},    {ByteType, 256, 256, {}},  {ByteType, -1, -1, {}},
      {Integer, 40000, 32767, 32767},     {Integer, 3.5f, 3.5f, 4},  {Integer, nan, nan, {}},
      {UnsignedInt, 40000, 40000, 40000}, {BcdCode, 3e9f, 3e9f, {}}, {static_cast<DataType>(99), 5, 5, {}},
  };
  sim.OpenUDP();
  for (const auto& [type, value, after, integer] : cases) {
    SCOPED_TRACE(std::to_string(static_cast<int>(type)) + " " + std::to_string(value));
    const Port port = OpenEnabled(60, type, 9, 2);
    const float put = Put(port, value);
    EXPECT_TRUE(put == after || std::isnan(after));
    Datagram expected;
    if (integer) BuildDataInt(9, 2, *integer, expected);
    const auto sent = socket.TakeSent();
    ASSERT_EQ(sent.size(), integer ? 1u : 0u);
    if (!integer) continue;
    EXPECT_TRUE(std::ranges::equal(View(sent[0]), expected.View()));
  }
  for (const DataType type : {Long, Float}) {
    Put(OpenEnabled(60, type, 9, 0), 1.25f);
    EXPECT_EQ(socket.TakeSent().at(0).substr(5, 8), Hex("09 00 00 00") + FloatBytes(1.25f));
  }
  EXPECT_EQ(Put(OpenEnabled(60, Float, 256, 0), 1), 1);  // no such group: the packet is dropped
  EXPECT_TRUE(socket.Sent.empty());
}

TEST_F(Ports, CommandsAreChosenByValue) {
  const Port port = OpenEnabled(60, XplaneCmnd);
  model.Functions[60].FullName = "#1:a\r\n#2:b\r\n#9:i\r\n#0:z\r\n";
  for (const auto& [value, after] : {std::pair{1.0f, 1.0f}, {1.6f, 1.6f}, {80, 9}, {3, 3}, {-1, -1}})
    EXPECT_EQ(Put(port, value), after);
  EXPECT_EQ(socket.TakeSent(), (Texts{"CMND0a", "CMND0b", "CMND0i"}));
}

TEST_F(Ports, BcdDigitsAreAddedToTheEarlierOnes) {
  const std::pair<float, int> cases[] = {
      {11850, 0x1850}, {5, 5}, {-12345, 0x1234}, {123456, 0x2345}, {2.5f, 3}};
  for (const auto& [value, nibbles] : cases) EXPECT_EQ(BcdNibbles(value), nibbles) << value;
  const Port port = OpenEnabled(60, BcdCode);
  Put(port, 1200);
  EXPECT_EQ(Get(port), 1200);
  Put(port, 34);
  EXPECT_EQ(Get(port), 1234);
  Put(port, 8009);
  EXPECT_EQ(sim.PortAt(port).IntValue, static_cast<std::int16_t>(0x923D));
  EXPECT_EQ(Get(port), -12345);  // no digit any more
}

TEST_F(Ports, MacrosKeepTheirValueInTheProgram) {
  const Port shared = OpenEnabled(60, Float), own = OpenEnabled(61, Float), other = OpenEnabled(62, Float);
  for (int i = 60; i <= 62; ++i) {
    model.Functions[static_cast<std::size_t>(i)].FuncType = static_cast<Byte>(FunctionUse::Macro);
    model.Functions[static_cast<std::size_t>(i)].BoxMacroNr = static_cast<std::int16_t>(i - 57);
    model.Functions[static_cast<std::size_t>(i)].Multiplier = 7;  // not scaled
  }
  for (const float value : {2.5f, 40000.0f, 3.5f}) {
    Put(shared, value);
    Put(own, -value);
    Put(other, value + 1);
  }
  EXPECT_EQ(sim.MacroValue(), 4);
  EXPECT_EQ(Get(shared), 4);
  EXPECT_EQ(Get(own), -4);
  EXPECT_EQ(Get(other), -12345);
  EXPECT_TRUE(socket.Sent.empty());
}

}  // namespace tvx::portstest
