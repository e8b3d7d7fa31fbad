// From a datagram's arrival to the ports' values; and that nothing is allocated on the way.
#include "tests/simlink/Fixture.h"

namespace tvx::receivetest {

using enum DataType;
using Receive = LinkTest;

TEST_F(Receive, CountsOnlyWhatItDecodesToTheEnd) {
  OpenEnabled(60, XplaneDataref);
  const std::tuple<const char*, std::string, bool> cases[] = {
      {"five bytes", "DATA*", false},
      {"no group", "DATA*x", true},
      {"half a group", "DATA*" + std::string(18, 'x'), true},
      {"19 of 36 bytes", "DATA*" + std::string(19, '\1'), false},
      {"a group and a half", DataDatagram({{1, 0}}) + std::string(18, '\1'), false},
      {"group 151", DataDatagram({{150, 0}, {151, 0}}), false},
      {"a record and a half", RrefDatagram({{0, 1}}) + std::string(4, '\0'), false},
      {"no such port", RrefDatagram({{1, 1}}), false},
      {"high byte counts", RrefDatagram({{256, 1}}), false},
      {"echo", "DREF+" + std::string(504, 'x'), true},
      {"largest", "XXXX" + std::string(70000, 'x'), true},
  };
  for (const auto& [name, bytes, counted] : cases) {
    sim.ClearDataReceived();
    socket.Deliver(bytes);
    EXPECT_EQ(sim.TakePacketsReceived(), counted ? 1 : 0) << name;
    EXPECT_TRUE(sim.DataReceived()) << name;
  }
  EXPECT_EQ(sim.LastDatagram().size(), 65536u);
  for (int i = 0; i < 32768; ++i) socket.Deliver("BECN0123456");
  EXPECT_EQ(sim.PacketsReceived(), 32767);
}

TEST_F(Receive, KeepsWhatCameBeforeAFaultAndRefreshesNothingAfterIt) {
  const Port port = OpenEnabled(60, Float, 3, 2);
  socket.Deliver(DataDatagram({{3, 10}, {4, 20}}));
  EXPECT_EQ(Get(port), 12);
  EXPECT_EQ(sim.DataValue(4, 7), 27);
  socket.Deliver(DataDatagram({{3, 50}, {151, 0}, {4, 60}}));
  EXPECT_EQ((std::tuple{sim.DataValue(3, 2), Get(port), sim.DataValue(4, 7)}), (std::tuple{52, 12, 27}));
  // A short datagram after a long one must not see the long one's bytes.
  socket.Deliver(DataDatagram({{3, 70}, {4, 80}}).substr(0, 5 + 36 + 20));
  EXPECT_EQ(sim.DataValue(3, 2), 72);
  EXPECT_EQ(sim.DataValue(4, 7), 27);
  for (const auto& [group, value] : {std::pair{-1, 0}, {151, 0}, {3, -1}, {3, 8}})
    EXPECT_EQ(sim.DataValue(group, value), 0);
}

TEST_F(Receive, EveryPortGetsTheAnswerToItsOwnRequest) {
  Define(20, XplaneDataref, 0, 5).FullName = "#1:sim/x\r\n";
  constexpr int kPorts = 1300;
  for (int port = 0; port < kPorts; ++port) {
    sim.OpenSimPort(20, 1);
    Settle();
    const auto requests = socket.TakeSent();
    ASSERT_EQ(requests.size(), 1u);
    const int identifier = static_cast<Byte>(requests[0][9]) + 256 * static_cast<Byte>(requests[0][10]);
    const bool ownBytesAreTaken = port == 640 || port == 1152;  // by 384 and 896, through the rounding
    EXPECT_EQ(identifier == RrefIdentifierOnWire(port), !ownBytesAreTaken) << port;
    socket.Deliver(RrefDatagram({{identifier, static_cast<float>(port)}}));
  }
  for (int port = 0; port < kPorts; ++port)
    EXPECT_EQ(sim.PortAt(port).FloatValue, static_cast<float>(port)) << port;
  EXPECT_EQ(sim.TakePacketsReceived(), kPorts);
  socket.Deliver(RrefDatagram({{2000, 1.0f}}));
  EXPECT_EQ(sim.PacketsReceived(), 0) << "nobody asked with that";
  sim.CloseAllPorts();
  Settle();
  socket.Sent.clear();
  sim.OpenSimPort(20, 1);
  Settle();
  EXPECT_EQ(socket.TakeSent().at(0).substr(9, 2), std::string(2, '\0')) << "0 is free again";
}

TEST_F(Receive, OnlyTheSimulatorIsHeard) {
  const Port port = OpenEnabled(60, Float, 3, 2);
  sim.OpenUDP();
  socket.Sender = {0xC0A80107, 49001, false};
  for (int i = 0; i < 3; ++i) socket.Deliver(DataDatagram({{3, 10}}));
  socket.Deliver(RrefDatagram({{0, 5.0f}}));
  EXPECT_EQ(Get(port), 0);
  EXPECT_FALSE(sim.DataReceived() || sim.SilentForMs() || sim.HasArrived(port));
  EXPECT_EQ(sim.PacketsReceived(), 0);
  const Stranger* loudest = sim.Strangers().Loudest(clock.now, 0);
  ASSERT_NE(loudest, nullptr);
  EXPECT_EQ(AddressText(loudest->address), "192.168.1.7");
  EXPECT_EQ(loudest->datagrams, 4u);
  clock.Advance(5);
  EXPECT_EQ(sim.Strangers().Loudest(clock.now, 4), nullptr);
  // More of them than are kept apart: the one that sends most is known all the same.
  for (std::uint32_t i = 0; i < 100; ++i) {
    for (const std::uint32_t address : {i, 500u}) {
      socket.Sender.address = address;
      socket.Deliver("DATA*");
    }
  }
  EXPECT_EQ(sim.Strangers().Loudest(clock.now, 0)->datagrams, 100u);
  model.General.SetSetting(kHearAllSetting, "yes");
  socket.Deliver(DataDatagram({{3, 10}}));
  EXPECT_EQ(Get(port), 12);
  model.General.SetSetting(kHearAllSetting, "");
  sim.SetUdpMonitorMode(true);
  socket.Deliver(DataDatagram({{3, 10}}));
  EXPECT_EQ(sim.PacketsReceived(), 2) << "the test console shows them all";
}

TEST_F(Receive, EachTypeStoresInItsSlotOrAbandonsTheRest) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  // What is sent and, as stored, what it becomes; std::nullopt: it does not fit.
  const std::tuple<DataType, float, std::optional<float>> cases[] = {
      {ByteType, 3.5f, 4},       {ByteType, 255.5f, {}},
      {ByteType, -0.5f, 0},      {Integer, -32768.5f, -32768},
      {Integer, 32768, {}},      {Integer, nan, {}},
      {UnsignedInt, 40000, {}},  {UnsignedInt, 32767, 32767},
      {Long, 1e9f, 1e9f},        {BcdCode, 1200.5f, 1200},
      {Long, 2147483648.0f, {}}, {Float, 1e30f, 1e30f},
      {XplaneCmnd, 1e30f, 0},    {static_cast<DataType>(99), nan, 0},
  };
  const Port port = OpenEnabled(60, Float, 3), after = OpenEnabled(61, Float, 4);
  float mark = 0, stored = 0;
  for (const auto& [type, value, raw] : cases) {
    SCOPED_TRACE(std::to_string(static_cast<int>(type)) + " " + std::to_string(value));
    model.Functions[60].ComboDT = static_cast<Byte>(type);
    ++mark;
    if (raw) stored = mark;
    sim.TakePacketsReceived();
    socket.Deliver(DataDatagram({{3, value}, {4, mark}}));
    const PortRow& row = sim.PortAt(port);
    EXPECT_EQ(Get(after), stored);
    EXPECT_EQ(sim.PacketsReceived(), raw ? 1 : 0);
    if (!raw || type >= XplaneCmnd) continue;
    const auto whole = [](auto number) { return static_cast<float>(number); };
    const float slots[] = {whole(row.ByteValue), whole(row.IntValue), whole(row.IntValue),
                           whole(row.LongValue), row.FloatValue,      whole(row.IntValue)};
    EXPECT_EQ(slots[static_cast<int>(type)], *raw);
  }
}

TEST_F(Receive, OnlyEnabledAndUnblockedPortsAreRefreshed) {
  const Port port = OpenEnabled(60, Float, 3);
  Define(61, Float, 3);
  const Port disabled = sim.OpenSimPort(61, 1);
  sim.BlockPort(port, true);
  socket.Deliver(DataDatagram({{3, 5}}));
  EXPECT_EQ((std::tuple{sim.PortAt(port).FloatValue, sim.PortAt(disabled).FloatValue, Get(port)}),
            (std::tuple{0, 0, -12345}));
  sim.BlockPort(port, false);
  socket.Deliver(DataDatagram({{4, 5}}));  // any group refreshes every port
  EXPECT_EQ(Get(port), 5);
}

// A Function edited while its port is open can point anywhere.
TEST_F(Receive, SourcesOutsideTheTableAbandonTheRest) {
  OpenEnabled(60, Float);
  const Port after = OpenEnabled(61, Float, 3);
  for (const auto& [index, value] : {std::pair{-32768, 0}, {-1, 0}, {151, 0}, {32767, 255}, {3, 8}}) {
    model.Functions[60].XPindex1 = static_cast<std::int16_t>(index);
    model.Functions[60].XPVal1 = static_cast<Byte>(value);
    socket.Deliver(DataDatagram({{3, 5}}));
    EXPECT_EQ(Get(after), 0) << index << "," << value;
    EXPECT_EQ(sim.PacketsReceived(), 0);
  }
  EXPECT_EQ(sim.GivenUpDatagrams().datagrams, 5u);
  sim.OpenUDP();
  EXPECT_EQ(sim.GivenUpDatagrams().datagrams, 0u) << "counted anew";
  model.Functions[60].ComboDT = static_cast<Byte>(XplaneDataref);  // a dataref has no place in the table
  socket.Deliver(DataDatagram({{3, 5}}));
  EXPECT_EQ(Get(after), 5);
}

// What a program that was killed had asked for still comes, and each time costs the rest of its datagram.
TEST_F(Receive, CancelsWhatNobodyAsksFor) {
  Define(60, XplaneDataref, 0, 5).FullName = "#1:sim/x\r\n";
  sim.OpenUDP();
  const Port port = sim.OpenSimPort(60, 1);
  sim.EnableReadSimPort(port);
  socket.TakeSent();
  for (const int identifier : {1, 127, RrefIdentifierOnWire(200), RrefIdentifierOnWire(900)}) {
    const std::string stale = RrefDatagram({{0, 3}, {identifier, 9}, {identifier, 9}, {0, 4}});
    socket.Deliver(stale);
    socket.Deliver(stale);
    EXPECT_EQ(Get(port), 3) << "the rest is lost";
    sim.Tick();
    Datagram cancellation;
    ASSERT_TRUE(BuildRREF({}, 0,
                          identifier < 200    ? identifier
                          : identifier == 456 ? 200
                                              : 900,
                          cancellation));
    const auto sent = socket.TakeSent();
    ASSERT_EQ(sent.size(), 1u) << identifier;
    EXPECT_EQ(sent[0], std::string(cancellation.View().begin(), cancellation.View().end()));
  }
}

TEST_F(Receive, KnowsForHowLongTheSimulatorIsSilent) {
  sim.OpenUDP();
  EXPECT_FALSE(sim.SilentForMs());
  socket.Deliver("x");
  clock.Advance(1500);
  EXPECT_EQ(sim.SilentForMs(), 1500);
  sim.OpenUDP();
  EXPECT_FALSE(sim.SilentForMs());
}

TEST_F(Receive, AllocatesNothing) {
  for (int i = 0; i < 300; ++i) OpenEnabled(i + 1, static_cast<DataType>(i % 9), 1 + i % 40, i % 8);
  std::string data = "DATA*", rref = "RREF,";
  for (int i = 1; i <= 40; ++i) data += DataDatagram({{i, 3}}).substr(5);
  for (int i = 0; i < 180; ++i) rref += RrefDatagram({{i, 3}}).substr(5);
  const std::string tooLarge = DataDatagram({{1, 1e30f}}), cut = data.substr(0, 1000),
                    nobodys = RrefDatagram({{5000, 1}});
  const std::string all[] = {data, rref, "DREF+1", "XXXX+1", "", tooLarge, cut, nobodys};
  for (const std::string& bytes : all) socket.Queue(bytes);
  const std::size_t before = allocations;
  for (const std::string& bytes : all) sim.WinsockUDP_DataArrival(bytes.size());
  EXPECT_EQ(allocations, before);
  EXPECT_EQ(sim.PacketsReceived(), 4);
}

TEST(PortTraffic, CountsAsLostWhatGapsInTheRhythmTellOf) {
  // Gaps in ms, after six values in a rhythm of 100 ms.
  const std::tuple<const char*, std::vector<int>, std::uint32_t> rows[] = {
      {"in its rhythm", {100, 120, 80, 100}, 0},
      {"one, twice", {200, 100, 100, 200, 100}, 2},
      {"two", {300, 100}, 2},
      {"one that comes late", {190, 10, 100}, 0},
      {"a slower rhythm", {200, 200, 200, 200}, 0},
      {"a silence", {3000, 100, 100}, 0}};
  for (const auto& [what, gaps, lost] : rows) {
    PortTraffic traffic;
    std::int64_t now = 0;
    for (int i = 0; i < 6; ++i) traffic.Note(now += 100);
    for (const int gap : gaps) traffic.Note(now += gap);
    EXPECT_EQ(traffic.Lost(), lost) << what;
    EXPECT_NEAR(traffic.Rate(now), what == std::string_view("a slower rhythm") ? 5 : 10, 1.5) << what;
  }
}

}  // namespace tvx::receivetest
