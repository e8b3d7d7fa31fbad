#include "core/StatusPresenter.h"
#include "tests/core/ProgramRig.h"

namespace tvx::statuspresentertest {

// With one needle gauge at 12, of Function 51, loaded and activated.
struct StatusRig : ProgramRig {
  StatusRig() {
    Can({
        {"run", [this] { run.cmdRun_Click(); }},
        {"stop", [this] { run.cmdStop_Click(); }},
        {"exit", [this] { run.cmdExit_Click(); }},
        {"configure", [this] { run.CmdConfig_Click(); }},
        {"load", [this] { run.Load(); }},
        {"show", [this] { run.Form_Activate(); }},
        {"tick", [this] { run.ProcessTimer_Tick(); }},
        {"second", [this] { run.Timer1_Tick(); }},
        {"link", [this](int ticks) { LinkTicks(ticks); }},
        {"is",
         [this] {
           return view.BoxRun + (run.Activated() ? " " : " new ") + std::to_string(view.BoxRunColour);
         }},
        {"timers",
         [this] {
           return Those(
               {{"process", processTimer.enabled}, {"watch", timer1.enabled}, {"write", writeTimer.enabled}});
         }},
        {"open",
         [this] {
           return Those({{"bus", Bus().IsOpen()}, {"link", sim.UdpOpen()}, {"goodbye", sim.SayingGoodbye()}});
         }},
        {"opened", [this] { return Bus().CountOf("open 5 twice"); }},
        {"ports", [this] { return sim.PortCount(); }},
        {"asks", [this] { return socket.TakeSent().size(); }},
        {"writes", [this] { return Written(); }},
        {"shell", [this] { return std::exchange(shell.log, {}); }},
        {"rates",
         [this] { return std::to_string(view.frmXferCount) + ' ' + std::to_string(view.boxUDPrate); }},
        {"trouble",
         [this] {
           return Those({{"simulator", view.Simulator.Trouble}, {"bus", view.GaugeBus.Trouble}});
         }},
        {"dropped", [this] { return view.GaugeBus.Text.find("dropped") != std::string::npos; }},
    });
    for (const int n : {1, 2, 14, 51}) Define(n);
    AddPlate(0, 100, 1000);
    model.Gauges[12] = {.GaugeType = 1, .GaugeFunction1 = 51};
    model.General.TransferInterval = 120;
    Activate();
  }
  // The commands since the last call.
  Texts Written() {
    Commands written;
    for (const auto& write : std::exchange(Bus().Writes, {}))
      std::ranges::copy(CommandsOf(write), std::back_inserter(written));
    return InWords(written);
  }
  const StatusView& view = run.View();
};

struct StatusTest : testing::Test, StatusRig {};

TEST_F(StatusTest, ActivationPreparesOnceAndLeavesTheFormHalted) {
  Play(
      "is = Halted 49152; open = bus, link; timers = watch, write; ports = 4; "
      "(of Functions 1, 2 and 14, and the gauge's); show; ports = 4; tick; writes =; "
      "(a late tick while halted does nothing)");
  EXPECT_EQ(processTimer.interval, 120);
  EXPECT_EQ(sim.PortAt(3).OpenedBy, 12);
  EXPECT_EQ(sim.PortAt(0).OpenedBy, opener::kInternal);
  run.SliderXferTimer_Change(0);
  EXPECT_EQ(model.General.TransferInterval, 10);
}

TEST(StatusPresenter, StandardPortsAreOpenedTwiceInTheirOrder) {
  ProgramRig rig;
  for (int n = 1; n <= 16; ++n) rig.Define(n);
  rig.Activate();
  std::ostringstream opened;
  for (int port = 0; port < rig.sim.PortCount(); ++port) {
    const PortRow& row = rig.sim.PortAt(port);
    opened << row.FunctionNr << '/' << int{row.SeqNr} << (row.ReadEnabled ? " " : "- ");
  }
  EXPECT_EQ(opened.str(), "1/1 2/1 3/1 4/1 5/1 6/1 7/1 8/1 9/1 10/1- 13/1- 14/1 16/1 9/2 ");
  rig.LinkTicks(10);
  const Texts sent = rig.socket.TakeSent();
  ASSERT_TRUE(Begins(sent.front(), "DSEL"));
  EXPECT_EQ(std::ranges::count(sent, sent.front()), 2);
}

TEST_F(StatusTest, RunAndStopAreGuarded) {
  Play(
      "run; is = Running 255; timers = process, watch; opened = 2; run; opened = 2; set 51 50; tick; "
      "writes = 12 5 500; stop; is = Halted 49152; timers = watch, write; open = bus, goodbye");
  const int closes = socket.Closes;
  run.cmdStop_Click();
  EXPECT_EQ(socket.Closes, closes);
}

TEST_F(StatusTest, AFrameQueuedWhileHaltedIsSentWhenTheRunStarts) {
  serial.WriteGaugeCommand(12, 3, 7);
  Play("run; writes = 12 3 7");
  EXPECT_FALSE(serial.TransmitPending());
}

TEST(StatusPresenter, PeripheralsFollowInTheirOrders) {
  ProgramRig rig;
  for (auto& p : rig.peripheral) p.configured = p.name != "IOM2";
  rig.model.General.ComPortYoke2 = 9;
  rig.Activate();
  EXPECT_EQ(rig.peripheralLog, (Texts{"yokes ports", "EC ports", "IOM1 ports", "EC load", "IOM1 load",
                                      "IOM2 unload", "yokes load", "yokes ports", "EC ports", "IOM1 ports"}));
  EXPECT_EQ(rig.run.View().TransferInterval, 40) << "with a yoke, whatever the configuration says";
  EXPECT_EQ(rig.processTimer.interval, 40);
  rig.peripheralLog.clear();
  rig.run.cmdRun_Click();
  rig.run.cmdStop_Click();
  rig.run.cmdExit_Click();
  EXPECT_EQ(rig.peripheralLog, (Texts{"EC run", "IOM1 run", "yokes run", "EC stop", "IOM1 stop", "yokes stop",
                                      "EC unload", "IOM1 unload", "IOM2 unload", "yokes unload"}));
}

TEST_F(StatusTest, ExitClosesUnsubscribesAndEnds) {
  Play("run; link 20");
  socket.TakeSent();
  Play(
      "exit; open = goodbye; ports = 0; link 10; open =; asks = 136; (every group is unselected); "
      "shell = unload configuration, unload status, end");
}

TEST_F(StatusTest, GoingToTheConfigurationHaltsAndMakesRoomForANewLife) {
  Play(
      "run; configure; is = Halted 49152; open = goodbye; timers = write; "
      "(the watch would open the ports again); shell = unload configuration, show start, show "
      "configuration, unload status");
  EXPECT_TRUE(run.EditingConfiguration);
  Play("load; is = Halted new 49152; timers = watch, write; show; open = bus, link; ports = 4");
}

// Power that went and returned, and an adapter that was pulled: the instruments may still be starting.
TEST(StatusPresenter, InstrumentsWhoseLineIsBackAreToldEverythingTwice) {
  for (const bool pulled : {false, true}) {
    SCOPED_TRACE(pulled);
    StatusRig rig;
    // How often the lighting and the needle's place went out in twenty ticks.
    rig.verbs.emplace("twenty", [&rig] {
      rig.Bus().Writes.clear();
      for (int i = 0; i < 20; ++i, rig.clock.Advance(40)) rig.run.ProcessTimer_Tick();
      const Texts sent = rig.Written();
      const auto times = [&](const char* command) {
        return std::to_string(std::ranges::count(sent, command));
      };
      return times("12 8 0") + ' ' + times("12 5 500");
    });
    if (!pulled) rig.Bus().SetCarrier(true);
    rig.Play("run; set 51 50; twenty = 1 1");
    if (pulled) {
      rig.Bus().Unplug();
      rig.Play("tick; second; trouble = bus; dropped = false");
      rig.Bus().OpenResult = SerialState::Open;
      rig.Play("second; trouble =");
    } else {
      rig.Bus().SetCarrier(false);
      rig.Bus().SetCarrier(true);
    }
    rig.Play(
        "twenty = 1 1; pass 1199; second; twenty = 0 0; second; twenty = 1 1; (two seconds later); "
        "pass 2000; second; twenty = 0 0");
  }
}

// A tick of lighting alone does not count.
TEST_F(StatusTest, RatesAreShownAndCleared) {
  Play(
      "run; tick; tick; tick; tick; tick; tick; tick; tick; set 1 80; set 1 80; set 1 80; second; "
      "rates = 7 3; second; rates = 0 0");
  EXPECT_EQ(view.boxNrofOffsets, 4);
}

TEST_F(StatusTest, ASilentSimulatorIsTroubleAndAskedAgain) {
  Play("run; trouble =; (it has only just been asked); link 20");
  for (int second = 2; second <= 8; second += 2) {
    socket.TakeSent();
    Play("link 50; second; link 50; second");
    EXPECT_FALSE(socket.TakeSent().empty()) << second;
  }
  Play("link 50; second; trouble = simulator; set 1 81; second; trouble =");
}

TEST_F(StatusTest, SaysWhatDoesNotCome) {
  for (const auto& [number, path] : {std::pair{60, "sim/there"}, {61, "sim/gone"}, {62, "sim/late"}}) {
    FunctionRecord& function = DefineFunction(model, number, DataType::XplaneDataref, 0, 20);
    function.FullName = "#1:" + std::string(path) + "\r\n";
  }
  DefineFunction(model, 63, DataType::Float, 0, 0);
  sim.EnableReadSimPort(sim.OpenSimPort(63, 1));
  const Port there = sim.OpenSimPort(60, 1);
  sim.EnableReadSimPort(there);
  sim.EnableReadSimPort(sim.OpenSimPort(61, 1));
  run.cmdRun_Click();
  for (int second = 0; second < 8; ++second) {
    LinkTicks(50);
    socket.Deliver(RrefDatagram({{there, 1.0f}}));
    run.ProcessTimer_Tick();
  }
  run.Timer1_Tick();
  for (const char* words :
       {"Data groups 0, 1, 2, 14 and 51 do not come. X-Plane, Settings, Data Output: enter this computer "
        "(192.168.1.20, port 49003).",
        "\nFunction 61 F61: sim/gone was never answered (this aircraft may not have it)."})
    EXPECT_TRUE(Holds(view.Findings, words));
  EXPECT_TRUE(view.OfferDataOutput);
  EXPECT_TRUE(Holds(view.Flow, "0 values lost, 0 datagrams given up"));
  socket.TakeSent();
  run.cmdDataOutput_Click();
  EXPECT_EQ(socket.TakeSent().at(0).substr(0, 21), std::string("ISE4\0\x40\0\0\0", 9) + "192.168.1.20");

  // All groups come now; a record that is none, and a value 30 ms before the tick that shows it.
  for (const int number : {1, 2, 14, 51, 63}) Set(number, 50);
  socket.Deliver("RREF,12345");
  clock.Advance(30);
  run.ProcessTimer_Tick();
  run.Timer1_Tick();
  EXPECT_FALSE(view.OfferDataOutput || Holds(view.Findings, "Data group")) << view.Findings;
  EXPECT_TRUE(Holds(view.Findings, "1 datagram given up, last for a record that is none."));
  EXPECT_TRUE(Holds(view.Flow, "99 of 100 within 30 ms; "));

  // One group goes on, and another dataref is answered.
  const Port late = sim.OpenSimPort(62, 1);
  for (int second = 0; second < 12; ++second) {
    LinkTicks(50);
    Set(1, 50);
    socket.Deliver(RrefDatagram({{late, 1.0f}}));
  }
  run.Timer1_Tick();
  EXPECT_TRUE(
      Begins(view.Findings,
             "Data groups 0, 2, 14 and 51 do not come, though others do (this X-Plane may not have it).\n"
             "Function 60 F60: sim/there is not answered any more (this aircraft may not have it).\n"
             "Function 61 F61: sim/gone was never answered (this aircraft may not have it).\n"));
  EXPECT_FALSE(view.OfferDataOutput);
}

TEST(LatencyMeter, KnowsTheLastMinute) {
  LatencyMeter meter;
  EXPECT_FALSE(meter.OfLastMinute(0));
  for (int i = 1; i <= 100; ++i) meter.Note(i, 1000 * (i % 30));
  EXPECT_EQ(meter.OfLastMinute(30000)->medianMs, 50);
  EXPECT_EQ(meter.OfLastMinute(30000)->percentile99Ms, 99);
  meter.Note(100000, 85000);
  EXPECT_GT(meter.OfLastMinute(85000)->percentile99Ms, 1000);
  const auto alone = meter.OfLastMinute(95000);
  EXPECT_EQ(alone->medianMs, alone->percentile99Ms) << "the others are too old";
  EXPECT_FALSE(meter.OfLastMinute(146000));
  for (const int ms : {99, 100, 250, 259, 1000}) {  // exact up to 100 ms, in steps of 10 above
    LatencyMeter one;
    one.Note(ms, 0);
    EXPECT_EQ(one.OfLastMinute(0)->medianMs, ms < 100 ? ms : ms / 10 * 10);
  }
}

TEST_F(StatusTest, AStrangersAddressCanBeTaken) {
  run.cmdRun_Click();
  socket.Sender = {0xC0A80107, 49001, false};
  for (int i = 0; i < 412; ++i) Set(1, 80);
  run.Timer1_Tick();
  EXPECT_EQ(view.Ignored, "412 datagrams from 192.168.1.7 ignored");
  run.cmdTakeAddress_Click();
  EXPECT_EQ(model.General.RemoteIP, "192.168.1.7");
  EXPECT_TRUE(model.ConfigChanged);
  EXPECT_EQ(socket.SetUps.back().remoteHost, "192.168.1.7");
  EXPECT_EQ(view.Ignored, "");
}

TEST(StatusPresenter, ALocalPortThatBecomesFreeLaterIsOpened) {
  ProgramRig rig;  // asks for no values, so that no subscription opens the socket on the way
  rig.Activate();
  rig.socket.SetUpError = "local port 49003 is in use by another program";
  rig.run.cmdRun_Click();
  EXPECT_FALSE(rig.sim.UdpOpen());
  rig.socket.SetUpError.clear();
  rig.clock.Advance(3000);
  rig.run.Timer1_Tick();
  EXPECT_TRUE(rig.sim.UdpOpen());
}

TEST_F(StatusTest, ADroppedBatchIsSaidForAWhile) {
  Play("trouble =; run; dropped = false; tick; refuse 1; set 51 50; tick; refuse 0; second");
  EXPECT_TRUE(view.GaugeBus.Text.ends_with(", 1 batch dropped")) << view.GaugeBus.Text;
  Play("pass 10000; second; dropped = false");
}

}  // namespace tvx::statuspresentertest
