#include "core/StatusPresenter.h"
#include "tests/Test.h"
#include "tests/core/ProgramRig.h"

namespace tvx {
namespace {

// A rig with one needle gauge, loaded and activated.
struct ActivatedRig : ProgramRig {
  ActivatedRig() {
    for (const int n : {1, 2, 14, 51}) Define(n);
    AddPlate(0, 100, 1000);
    model.Gauges[12] = {.GaugeType = 1, .GaugeFunction1 = 51};
    model.General.TransferInterval = 120;
    Activate();
  }
};

TEST(StatusPresenter, ActivationPreparesOnceAndLeavesTheFormHalted) {
  ActivatedRig rig;
  EXPECT_TRUE(rig.run.Activated() && !rig.run.Running() && rig.Bus().IsOpen());
  EXPECT_EQ(rig.processTimer.interval, 120);
  EXPECT_FALSE(rig.processTimer.enabled);
  EXPECT_TRUE(rig.writeTimer.enabled);
  EXPECT_EQ(rig.sim.PortCount(), 4) << "Functions 1, 2, 14 and the gauge's";
  EXPECT_EQ(rig.sim.PortAt(3).OpenedBy, 12);
  EXPECT_EQ(rig.sim.PortAt(0).OpenedBy, opener::kInternal);
  rig.run.Form_Activate();
  EXPECT_EQ(rig.sim.PortCount(), 4);
  rig.run.ProcessTimer_Tick();
  EXPECT_TRUE(rig.Bus().Writes.empty()) << "a late tick while halted does nothing";
  rig.run.SliderXferTimer_Change(0);
  EXPECT_EQ(rig.model.General.TransferInterval, 10);
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

TEST(StatusPresenter, RunAndStopAreGuarded) {
  ActivatedRig rig;
  const StatusView& view = rig.run.View();
  rig.run.cmdRun_Click();
  EXPECT_EQ((std::pair{view.BoxRun, view.BoxRunColour}), (std::pair<std::string, int>{"Running", 255}));
  EXPECT_TRUE(rig.processTimer.enabled && !rig.writeTimer.enabled);
  const auto opened = rig.Bus().CountOf("open 5 twice");
  rig.run.cmdRun_Click();
  EXPECT_EQ(rig.Bus().CountOf("open 5 twice"), opened);
  rig.Set(51, 50);
  rig.run.ProcessTimer_Tick();
  ASSERT_EQ(rig.Bus().Writes.size(), 1u);
  EXPECT_EQ(CommandsOf(rig.Bus().Writes[0]), (Commands{{12, 5, 500}}));

  rig.run.cmdStop_Click();
  EXPECT_EQ((std::pair{view.BoxRun, view.BoxRunColour}), (std::pair<std::string, int>{"Halted", 49152}));
  EXPECT_TRUE(!rig.processTimer.enabled && rig.writeTimer.enabled && !rig.sim.UdpOpen());
  const int closes = rig.socket.Closes;
  rig.run.cmdStop_Click();
  EXPECT_EQ(rig.socket.Closes, closes);
}

TEST(StatusPresenter, AFrameQueuedWhileHaltedIsSentWhenTheRunStarts) {
  ActivatedRig rig;
  rig.serial.WriteGaugeCommand(12, 3, 7);
  rig.run.cmdRun_Click();
  ASSERT_EQ(rig.Bus().Writes.size(), 1u);
  EXPECT_EQ(CommandsOf(rig.Bus().Writes[0]), (Commands{{12, 3, 7}}));
  EXPECT_FALSE(rig.serial.TransmitPending());
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

TEST(StatusPresenter, ExitClosesUnsubscribesAndEnds) {
  ActivatedRig rig;
  rig.run.cmdRun_Click();
  rig.LinkTicks(20);
  rig.socket.TakeSent();
  rig.run.cmdExit_Click();
  EXPECT_FALSE(rig.Bus().IsOpen() || rig.sim.UdpOpen());
  EXPECT_EQ(rig.sim.PortCount(), 0);
  EXPECT_TRUE(rig.sim.SayingGoodbye());
  rig.LinkTicks(10);
  EXPECT_FALSE(rig.sim.SayingGoodbye());
  EXPECT_EQ(rig.socket.TakeSent().size(), 136u) << "every group is unselected";
  EXPECT_EQ(rig.shell.log, (Texts{"unload configuration", "unload status", "end"}));
}

TEST(StatusPresenter, GoingToTheConfigurationHaltsAndMakesRoomForANewLife) {
  ActivatedRig rig;
  rig.run.cmdRun_Click();
  rig.run.CmdConfig_Click();
  EXPECT_TRUE(rig.run.EditingConfiguration);
  EXPECT_FALSE(rig.run.Running() || rig.Bus().IsOpen());
  EXPECT_FALSE(rig.timer1.enabled) << "it would open the ports again";
  EXPECT_EQ(rig.shell.log,
            (Texts{"unload configuration", "show start", "show configuration", "unload status"}));
  rig.run.Load();
  EXPECT_TRUE(rig.timer1.enabled && !rig.run.Activated());
  rig.run.Form_Activate();
  EXPECT_TRUE(rig.Bus().IsOpen());
  EXPECT_EQ(rig.sim.PortCount(), 4);
}

// Power that went and returned, and an adapter that was pulled: the instruments may still be starting.
TEST(StatusPresenter, InstrumentsWhoseLineIsBackAreToldEverythingTwice) {
  for (const bool pulled : {false, true}) {
    SCOPED_TRACE(pulled);
    ActivatedRig rig;
    const StatusView::Link& line = rig.run.View().GaugeBus;
    if (!pulled) rig.Bus().SetCarrier(true);
    rig.run.cmdRun_Click();
    rig.Set(51, 50);
    // How often the lighting and the needle's place went out in twenty ticks.
    const auto sent = [&rig] {
      rig.Bus().Writes.clear();
      for (int i = 0; i < 20; ++i, rig.clock.Advance(40)) rig.run.ProcessTimer_Tick();
      std::pair<long, long> count;
      for (const auto& write : rig.Bus().Writes) {
        const auto commands = CommandsOf(write);
        count.first += std::ranges::count(commands, SentCommand{12, 8, 0});
        count.second += std::ranges::count(commands, SentCommand{12, 5, 500});
      }
      return count;
    };
    const std::pair<long, long> once{1, 1}, never;
    EXPECT_EQ(sent(), once);
    if (pulled) {
      rig.Bus().Unplug();
      rig.run.ProcessTimer_Tick();
      rig.run.Timer1_Tick();
      EXPECT_TRUE(line.Trouble && !Holds(line.Text, "dropped")) << "it is away";
      rig.Bus().OpenResult = SerialState::Open;
      rig.run.Timer1_Tick();
      EXPECT_FALSE(line.Trouble);
    } else {
      rig.Bus().SetCarrier(false);
      rig.Bus().SetCarrier(true);
    }
    EXPECT_EQ(sent(), once);
    rig.clock.Advance(1999 - 800);
    rig.run.Timer1_Tick();
    EXPECT_EQ(sent(), never);
    rig.run.Timer1_Tick();
    EXPECT_EQ(sent(), once) << "two seconds later";
    rig.clock.Advance(2000);
    rig.run.Timer1_Tick();
    EXPECT_EQ(sent(), never);
  }
}

TEST(StatusPresenter, RatesAreShownAndCleared) {
  ActivatedRig rig;
  rig.run.cmdRun_Click();
  for (int i = 0; i < 8; ++i) rig.run.ProcessTimer_Tick();
  for (int i = 0; i < 3; ++i) rig.Set(1, 80);
  rig.run.Timer1_Tick();
  EXPECT_EQ(rig.run.View().frmXferCount, 7) << "a tick of lighting alone does not count";
  EXPECT_EQ(rig.run.View().boxUDPrate, 3);
  EXPECT_EQ(rig.run.View().boxNrofOffsets, 4);
  rig.run.Timer1_Tick();
  EXPECT_EQ(rig.run.View().boxUDPrate, 0);
}

TEST(StatusPresenter, ASilentSimulatorIsTroubleAndAskedAgain) {
  ActivatedRig rig;
  rig.run.cmdRun_Click();
  EXPECT_FALSE(rig.run.View().Simulator.Trouble) << "it has only just been asked";
  rig.LinkTicks(20);
  rig.socket.TakeSent();
  for (int second = 1; second <= 9; ++second) {
    rig.LinkTicks(50);
    rig.run.Timer1_Tick();
    if (second % 2 == 0) {
      EXPECT_FALSE(rig.socket.TakeSent().empty()) << second;
    }
  }
  EXPECT_TRUE(rig.run.View().Simulator.Trouble);
  rig.Set(1, 81);
  rig.run.Timer1_Tick();
  EXPECT_FALSE(rig.run.View().Simulator.Trouble);
}

TEST(StatusPresenter, SaysWhatDoesNotCome) {
  ActivatedRig rig;
  const StatusView& view = rig.run.View();
  for (const auto& [number, path] : {std::pair{60, "sim/there"}, {61, "sim/gone"}, {62, "sim/late"}}) {
    FunctionRecord& function = DefineFunction(rig.model, number, DataType::XplaneDataref, 0, 20);
    function.FullName = "#1:" + std::string(path) + "\r\n";
  }
  DefineFunction(rig.model, 63, DataType::Float, 0, 0);
  rig.sim.EnableReadSimPort(rig.sim.OpenSimPort(63, 1));
  const Port there = rig.sim.OpenSimPort(60, 1);
  rig.sim.EnableReadSimPort(there);
  rig.sim.EnableReadSimPort(rig.sim.OpenSimPort(61, 1));
  rig.run.cmdRun_Click();
  for (int second = 0; second < 8; ++second) {
    rig.LinkTicks(50);
    rig.socket.Deliver(RrefDatagram({{there, 1.0f}}));
    rig.run.ProcessTimer_Tick();
  }
  rig.run.Timer1_Tick();
  for (const char* words :
       {"Data groups 0, 1, 2, 14 and 51 do not come. X-Plane, Settings, Data Output: enter this computer "
        "(192.168.1.20, port 49003).",
        "\nFunction 61 F61: sim/gone was never answered (this aircraft may not have it)."})
    EXPECT_TRUE(Holds(view.Findings, words));
  EXPECT_TRUE(view.OfferDataOutput);
  EXPECT_TRUE(Holds(view.Flow, "0 values lost, 0 datagrams given up"));
  rig.socket.TakeSent();
  rig.run.cmdDataOutput_Click();
  EXPECT_EQ(rig.socket.TakeSent().at(0).substr(0, 21), std::string("ISE4\0\x40\0\0\0", 9) + "192.168.1.20");

  // All groups come now; a record that is none, and a value 30 ms before the tick that shows it.
  for (const int number : {1, 2, 14, 51, 63}) rig.Set(number, 50);
  rig.socket.Deliver("RREF,12345");
  rig.clock.Advance(30);
  rig.run.ProcessTimer_Tick();
  rig.run.Timer1_Tick();
  EXPECT_FALSE(view.OfferDataOutput || Holds(view.Findings, "Data group")) << view.Findings;
  EXPECT_TRUE(Holds(view.Findings, "1 datagram given up, last for a record that is none."));
  EXPECT_TRUE(Holds(view.Flow, "99 of 100 within 30 ms; "));

  // One group goes on, and another dataref is answered.
  const Port late = rig.sim.OpenSimPort(62, 1);
  for (int second = 0; second < 12; ++second) {
    rig.LinkTicks(50);
    rig.Set(1, 50);
    rig.socket.Deliver(RrefDatagram({{late, 1.0f}}));
  }
  rig.run.Timer1_Tick();
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

TEST(StatusPresenter, AStrangersAddressCanBeTaken) {
  ActivatedRig rig;
  rig.run.cmdRun_Click();
  rig.socket.Sender = {0xC0A80107, 49001, false};
  for (int i = 0; i < 412; ++i) rig.Set(1, 80);
  rig.run.Timer1_Tick();
  EXPECT_EQ(rig.run.View().Ignored, "412 datagrams from 192.168.1.7 ignored");
  rig.run.cmdTakeAddress_Click();
  EXPECT_EQ(rig.model.General.RemoteIP, "192.168.1.7");
  EXPECT_TRUE(rig.model.ConfigChanged);
  EXPECT_EQ(rig.socket.SetUps.back().remoteHost, "192.168.1.7");
  EXPECT_EQ(rig.run.View().Ignored, "");
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

TEST(StatusPresenter, ADroppedBatchIsSaidForAWhile) {
  ActivatedRig rig;
  const StatusView::Link& line = rig.run.View().GaugeBus;
  EXPECT_FALSE(line.Trouble || rig.run.View().Simulator.Trouble);
  rig.run.cmdRun_Click();
  EXPECT_FALSE(Holds(line.Text, "dropped"));
  rig.run.ProcessTimer_Tick();
  rig.Bus().RefuseWrites = true;
  rig.Set(51, 50);
  rig.run.ProcessTimer_Tick();
  rig.Bus().RefuseWrites = false;
  rig.run.Timer1_Tick();
  EXPECT_TRUE(line.Text.ends_with(", 1 batch dropped")) << line.Text;
  rig.clock.Advance(10000);
  rig.run.Timer1_Tick();
  EXPECT_FALSE(Holds(line.Text, "dropped"));
}

}  // namespace
}  // namespace tvx
