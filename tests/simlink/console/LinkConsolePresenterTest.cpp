#include "platform/AtomicFile.h"
#include "simlink/console/LinkConsolePresenter.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/simlink/Fixture.h"

namespace tvx::linkconsolepresentertest {

Texts Describe(const std::string& bytes, bool reverse = false) {
  const ByteView view = View(bytes);
  return DescribeDatagram({"14:30:15", 49001, {view.begin(), view.end()}}, reverse);
}

TEST(DatagramLog, TellsEachKindInItsLines) {
  const std::string header = "Time: 14:30:15, Received from port 49001. Packet Length: ";
  EXPECT_EQ(
      Describe("DREF+" + FloatBytes(1.5f) + "sim/a/b" + std::string(3, '\0') + "rest"),
      (Texts{header + "23", "Data:", "44 52 45 46 2B 00 00 C0 3F 73 69 6D 2F 61 2F 62 00 00 00 72 65 73 74",
             "DREF package received:", "Data Value: 1.5", "Data Reference: sim/a/b"}));
  EXPECT_EQ(Describe(RrefDatagram({{7, -0.25f}, {300, 1e20f}})),
            (Texts{header + "21", "Data:", "52 52 45 46 2C 07 00 7F 7F 00 00 80 BE 2C 01 7F 7F EC 78 AD 60",
                   "RREF package received, containing 2 Values:", "--Identifier: 7, Data Value: -0.25",
                   "--Identifier: 300, Data Value: 1e+20"}));
  const Texts data = Describe(DataDatagram({{3, 10}, {150, 0}}));
  ASSERT_EQ(data.size(), 23u);
  EXPECT_EQ(data[5] + data[6] + data[13], "Data Package received, Index: 3--Value #0= 10--Value #7= 17");
  EXPECT_EQ(data[14] + data[22], "Data Package received, Index: 150--Value #7= 7");
  EXPECT_EQ(Describe(""), (Texts{header + "0", "Data:"}));
}

TEST(DatagramLog, ReverseOrderTurnsValuesOnly) {
  const std::string big = "RREF," + Hex("07 01 00 00 3F C0 00 00");
  EXPECT_EQ(Describe(big, true).back(), "--Identifier: 263, Data Value: 1.5");
  EXPECT_EQ(Describe("DREF+" + Hex("3F C0 00 00") + "a/b", true)[4], "Data Value: 1.5");
  EXPECT_EQ(Describe("DATA*" + Hex("03 00 00 00 3F C0 00 00") + std::string(28, '\0'), true)[5],
            "--Value #0= 1.5");
}

TEST(DatagramLog, TrustsNothing) {
  for (const std::string& odd :
       {std::string("DREF+1"), std::string("DREF+1234"), std::string("RREF,123456"), std::string("DATA*"),
        "DREF+" + FloatBytes(std::numeric_limits<float>::quiet_NaN()) + "a\n\x01\xFF\x1B[2J",
        std::string(65507, '\xFF'), "DATA*" + std::string(65000, '\n'), "RREF," + std::string(65000, '\x80'),
        "DREF+" + std::string(65000, 'x')}) {
    const Texts lines = Describe(odd);
    EXPECT_LE(lines.size(), 900u);
    for (const std::string& line : lines) {
      EXPECT_LE(line.size(), 600u);
      for (const char c : line) EXPECT_TRUE(c >= ' ' && c <= '~');
    }
    const std::string dump = HexDump(View(odd));
    EXPECT_LE(std::count(dump.begin(), dump.end(), '\n'), 129);
  }
  EXPECT_EQ(Describe("RREF," + std::string(65000, '\x80')).back(),
            "=== The rest of this datagram is not shown ===");
  EXPECT_EQ(HexDump(View("DATA*\n")), "0000  44 41 54 41 2A 0A                                DATA*.\n");
}

struct LinkConsoleTest : LinkTest {
  LinkConsoleTest() {
    model.General.RemotePort = "50991";
    model.General.LocalPort = "50992";
    Can({{"start", [this] { console.cmdStartUDP_Click(); }},
         {"stop", [this] { console.CmdStopUDP_Click(); }},
         {"close", [this] { console.Close(); }},
         {"tick", [this] { return console.DisplayTimer_Tick() ? "changed" : ""; }},
         {"arrive", [this](int count) { Arrive(count); }},
         {"log", [this] { console.cmdStopLog_Click(); }},
         {"status",
          [this] { return console.Shown().Status + (sim.UdpMonitorMode() ? ", has the link" : ""); }},
         {"logged", [this] { return console.Log().Size(); }}});
  }
  ~LinkConsoleTest() override { console.Close(); }
  // One tick's worth of datagrams.
  void Arrive(int count, const std::string& bytes = "DATA*1") {
    for (int i = 0; i < count; ++i) socket.Deliver(bytes);
    console.DisplayTimer_Tick();
  }
  Texts Sent() { return socket.TakeSent(); }

  LinkConsolePresenter console{model, sim, boxes, clock};
};

TEST_F(LinkConsoleTest, TheDisplayTakesTheLinkFromThePortsAndGivesItBack) {
  OpenEnabled(60, DataType::Float, 3, 0);
  Play("start; status = Running, has the link; data 3 5; get 0 = 0; tick = changed");
  EXPECT_FALSE(sim.PacketArrived());
  EXPECT_TRUE(Holds(console.Shown().Raw, "Packet Length: 41\n0000  44 41 54 41"));
  Play("stop; status = Stopped; data 3 6; get 0 = 6; tick =; start");
  socket.Deliver("DATA*1");
  Play("stop; start; tick =");
  EXPECT_FALSE(Holds(console.Shown().Raw, "Packet Length: 6")) << "it came before";
  console.Close();
  EXPECT_FALSE(sim.UdpMonitorMode()) << "closing must give the link back";
}

TEST_F(LinkConsoleTest, ItsEndpointIsItsOwn) {
  console.Endpoint = {"10.0.0.2", "1234", "4321"};
  console.cmdDSEL_Click("5");
  EXPECT_EQ(socket.SetUps.back(), (UdpEndpoints{"10.0.0.2", 1234, 4321}));
  console.cmdSendCharacter_Click("x");
  EXPECT_EQ(socket.Sent.back().bytes, "CHAR0x10.0.0.20000000");
  EXPECT_EQ(model.General.RemoteIP, "127.0.0.1");
  console.Close();
  EXPECT_FALSE(sim.UdpOpen());
  sim.OpenUDP();
  EXPECT_EQ(socket.SetUps.back(), (UdpEndpoints{"127.0.0.1", 50991, 50992}));
}

TEST_F(LinkConsoleTest, AnEndpointThatCannotBeUsedIsSaid) {
  console.Endpoint.LocalPort = "none";
  console.cmdStartUDP_Click();
  EXPECT_EQ(boxes.shown,
            Texts{"The link to the simulator cannot be opened: the local port \"none\" is no number "
                  "from 1 to 65535"});
  console.Endpoint.LocalPort = "50992";
  Play("status = Stopped; start");
  console.Endpoint.RemotePort = "0";
  console.cmdDSEL_Click("1");
  EXPECT_EQ(console.Shown().Status, "Stopped") << "the socket is closed: nothing can arrive";
}

TEST_F(LinkConsoleTest, TellsWhetherAnythingArrives) {
  Play("start; pass 3000; tick = changed");
  EXPECT_TRUE(console.Shown().Silent);
  Arrive(150);
  EXPECT_EQ(console.Shown().Arrived, "150 datagrams have arrived");
  EXPECT_FALSE(console.Shown().Silent);
  Play("pass 5000; tick = changed");
  EXPECT_EQ(console.Shown().Arrived, "150 datagrams have arrived, the last 5 s ago");
}

TEST_F(LinkConsoleTest, ClosingStopsWhatWasAskedForHere) {
  for (const char* group : {"140", "9"}) console.cmdDSEL_Click(group);
  console.cmdUSEL_Click("9");
  console.cmdSelectRREF_Click("sim/e", "9", "1");
  Sent();
  console.Close();
  const Texts sent = Sent();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(std::min(sent[0], sent[1]).substr(0, 14), Hex("52 52 45 46 00 00 00 00 00 09 00 00 00") + 's');
  EXPECT_EQ(std::max(sent[0], sent[1]), Hex("55 53 45 4C 30 8C 00 00 00"));
}

TEST_F(LinkConsoleTest, UnselectsAllUnlessThatIsBlocked) {
  console.cmdStartUDP_Click();
  console.cmdUSELall_Click();
  clock.Advance(101);
  sim.Tick();
  EXPECT_EQ(Sent().size(), 136u) << "monitor mode must not hold it back";
  model.General.BlockUSEL = 1;
  console.cmdStopAll_Click();
  console.cmdUSEL_Click("7");
  EXPECT_TRUE(Sent().empty());
}

TEST_F(LinkConsoleTest, WhatWasTypedWronglyIsNotSent) {
  for (const char* bad : {"", "x", "7 7", "-1", "256", "1.5"}) {
    console.cmdDSEL_Click(bad);
    console.cmdUSEL_Click(bad);
    console.cmdDataUdp_Click(bad, "0", "1");
    console.cmdDataUdp_Click("1", bad, "1");
    console.cmdSendDataInteger_Click(bad, "0", "1");
  }
  console.cmdDataUdp_Click("1", "8", "1");
  console.cmdDataUdp_Click("1", "0", "x");
  console.cmdSendDataInteger_Click("1", "0", "2147483648");
  console.cmdSendDataInteger_Click("1", "0", "0.5");
  for (const char* bad : {"", "ab", "\x01", "\xC3\xA4"}) console.cmdSendCharacter_Click(bad);
  console.cmdSendDREF_Click("no path", "1");
  console.cmdSendDREF_Click("a/b", "x");
  console.cmdSelectRREF_Click("a/b", "1", "0");
  console.cmdSelectRREF_Click("a/b", "32768", "1");
  console.cmdDeleteRREF_Click("", "1");
  EXPECT_EQ(boxes.shown, Texts(43, "Incorrect data"));
  EXPECT_TRUE(socket.Sent.empty());
}

TEST_F(LinkConsoleTest, ListsRecordedSubscriptionsAndItsOwn) {
  FunctionRecord& function = Define(60, DataType::XplaneDataref);
  function.FullName = "#1:sim/a\r\n";
  function.XPVal1 = 5;
  sim.OpenSimPort(60, 1);
  socket.Deliver(RrefDatagram({{0, -12.34f}}));
  console.cmdStartUDP_Click();
  console.cmdSelectRREF_Click("sim/b", "200", "20");
  // Above 128 an answer carries the number that the request's bytes make.
  Arrive(1, RrefDatagram({{456, 1234567.0f}, {5, 1}}));
  EXPECT_EQ(console.cmdShowRREF_Click(),
            (Texts{"Ident: 000, Freq: 5 p/s ,Value= -00012.3  --->Dataref: sim/a",
                   "Ident: 200, Freq: 20 p/s ,Value= 1234567.0  --->Dataref: sim/b"}));
  console.cmdSelectRREF_Click("sim/c", "0", "1");
  EXPECT_EQ(boxes.shown, Texts{"RREF Indent: 0, already used for: sim/a"});
  Sent();
  console.cmdDeleteRREF_Click("", "200");
  const Texts cancelled = Sent();
  ASSERT_EQ(cancelled.size(), 1u);
  EXPECT_EQ(cancelled[0].substr(0, 19), Hex("52 52 45 46 00 00 00 00 00 C8 01 00 00") + "sim/b" + '\0');
  console.cmdSelectRREF_Click("sim/d", "9", "1");
  Sent();
  console.CmdClearAllRREFs_Click();
  EXPECT_EQ(Sent().size(), 2u);
  EXPECT_EQ(console.cmdShowRREF_Click(), Texts{"=== There are no active RREF references ==="});
}

TEST_F(LinkConsoleTest, LogsOneSomeOrAllDatagrams) {
  Play("start; arrive 3; logged = 0; (shown, not logged)");
  console.cmdSingleLog_Click();
  Play("arrive 3; logged = 3; (one has three lines)");
  EXPECT_EQ(console.Shown().LogStatus, "Stopped");
  console.cmdMultiFrame_Click(4);
  Play("arrive 3; arrive 3; logged = 15");
  console.cmdClearConverted_Click();
  Play("log; arrive 20; arrive 20; log; arrive 20; logged = 120");
}

TEST_F(LinkConsoleTest, AFloodNeitherGrowsTheLogNorHidesThatItWas) {
  Play("start; log; arrive 150; logged = 301");
  EXPECT_EQ(console.Log().At(300), "=== 50 more came too fast to be logged ===");
  Play("arrive 1; logged = 304; (said once)");
  for (int i = 0; i < 10; ++i) Arrive(100);
  Play("logged = 1000");
}

TEST_F(LinkConsoleTest, TheLogCanBeSaved) {
  const ScratchFolder folder;
  console.cmdSingleLog_Click();
  EXPECT_EQ(console.Shown().Status, "Running") << "there is nothing to log without the display";
  Arrive(1);
  EXPECT_TRUE(console.cmdSaveLog_Click("log.txt"));
  std::string error;
  EXPECT_EQ(ReadWholeFile("log.txt", error),
            "Time: 14:30:15, Received from port 0. Packet Length: 6\r\nData:\r\n44 41 54 41 2A 31\r\n");
  EXPECT_FALSE(console.cmdSaveLog_Click("missing/folder/log.txt"));
  EXPECT_EQ(boxes.shown.size(), 1u);
}

TEST_F(LinkConsoleTest, CopiesADatarefIntoAConfigurableFunction) {
  for (const char* bad : {"50", "270", "x"}) EXPECT_FALSE(console.cmdCopyToFunction_Click(bad, "a/b"));
  EXPECT_EQ(boxes.shown, Texts(3, "Function number must be between 51 and 269"));
  EXPECT_FALSE(console.cmdCopyToFunction_Click("51", "===== Not Found ====="));
  EXPECT_EQ(boxes.shown.back(), "Incorrect X-Plane command; Cannot be copied");
  EXPECT_FALSE(model.ConfigChanged);

  EXPECT_TRUE(console.cmdCopyToFunction_Click("51", "a/b[3]"));
  EXPECT_EQ(model.Functions[51].FullName, "#1:a/b[3]\r\n");
  EXPECT_TRUE(model.Functions[51].Is(DataType::XplaneDataref));
  EXPECT_EQ(model.Functions[51].XPVal1, 10);
  EXPECT_TRUE(model.ConfigChanged);
  Define(269, DataType::Float).FullName = "Own words";
  boxes.answers = {kAnswerNo, kAnswerYes};
  EXPECT_FALSE(console.cmdCopyToFunction_Click("269", "a/b"));
  EXPECT_EQ(model.Functions[269].FullName, "Own words");
  EXPECT_TRUE(console.cmdCopyToFunction_Click("269", "a/b"));
  EXPECT_EQ(model.Functions[269].FullName, "#1:a/b\r\n");
  EXPECT_TRUE(model.Functions[269].Is(DataType::Float)) << "a defined Function keeps its type";
  EXPECT_EQ(boxes.asked, Texts(2, "The Description field of this function is not empty; Overwrite?"));
}

}  // namespace tvx::linkconsolepresentertest
