// The socket's side of the link: set-up, senders, subscriptions, errors.
#include "tests/simlink/Fixture.h"

namespace tvx::linktest {

using enum DataType;
using Link = LinkTest;

TEST_F(Link, OpensWithTheConfiguredEndpointsAndKeepsTheirNumbers) {
  model.General.RemoteIP = "10.0.0.2";
  model.General.RemotePort = " 49010 ";
  EXPECT_TRUE(sim.OpenUDP());
  model.General.RemotePort = "1";  // counts only from the next opening
  sim.SendDSEL(3);
  const UdpEndpoints expected{"10.0.0.2", 49010, 49003};
  EXPECT_EQ(socket.SetUps, (std::vector<UdpEndpoints>{expected, expected}));
  EXPECT_EQ(socket.Closes, 0);  // a set-up must not throw away what has arrived
  sim.StopSimcom();
  EXPECT_FALSE(sim.UdpOpen());
}

TEST_F(Link, RefusesTextsThatAreNoPortNumbers) {
  for (const char* bad : {"", "0", "65536", "-1", "49000x", "99999999999"}) {
    model.General.LocalPort = bad;
    EXPECT_FALSE(sim.OpenUDP()) << bad;
    EXPECT_EQ(sim.LinkError(), "the local port \"" + std::string(bad) + "\" is no number from 1 to 65535");
    sim.SendDSEL(1);
    sim.SendDataChar('a');
  }
  model.General.RemotePort = "x";
  EXPECT_FALSE(sim.OpenUDP());
  EXPECT_EQ(sim.LinkError(), "the simulator's port \"x\" is no number from 1 to 65535");
  EXPECT_TRUE(socket.SetUps.empty() && socket.Sent.empty() && boxes.shown.empty());

  model.General.RemotePort = model.General.LocalPort = "65535";
  socket.SetUpError = "local port 65535 is in use by another program";
  EXPECT_FALSE(sim.OpenUDP());
  EXPECT_EQ(sim.LinkError(), socket.SetUpError);
  socket.SetUpError.clear();
  EXPECT_TRUE(sim.OpenUDP());
  EXPECT_EQ(sim.LinkError(), "");
}

TEST_F(Link, SomeSendersSetTheSocketUpAndOthersOnlyTheRemotePort) {
  sim.SendDataInt(1, 0, 5);  // the socket is still closed
  EXPECT_TRUE(socket.Sent.empty());
  sim.SendDSEL(1);
  sim.SendUSEL(1);
  sim.SendXplaneRREF("a", 1, 0, Register::No);
  EXPECT_EQ(socket.SetUps.size(), 3u);
  socket.RemotePorts.clear();
  sim.SendDataFloat(1, 0, 5);
  sim.SendDataInt(1, 0, 5);
  sim.SendDataChar('a');
  sim.SendXplaneCommand("#1:c\r\n", 1);
  sim.SendXplaneDREF("d", 1);
  EXPECT_EQ(socket.SetUps.size(), 3u);
  EXPECT_EQ(socket.RemotePorts, std::vector<std::int32_t>(5, 49000));
  std::string tags;
  for (const std::string& bytes : socket.TakeSent()) tags += bytes.substr(0, 4) + " ";
  EXPECT_EQ(tags, "DSEL USEL RREF DATA DATA CHAR CMND DREF ");
}

TEST_F(Link, WhatDoesNotFitAPacketIsDroppedSilently) {
  sim.OpenUDP();
  sim.SendDSEL(256);
  sim.SendUSEL(-1);
  sim.SendDataFloat(1, 8, 1);
  sim.SendDataInt(-1, 0, 1);
  sim.SendDataInt(256, 0, 1);
  sim.SendDataChar(256);
  sim.SendXplaneCommand("#256:a\r\n", 256);
  sim.SendXplaneCommand("#1:" + std::string(1401, 'p') + "\r\n", 1);
  sim.SendXplaneDREF(std::string(501, 'p'), 1);
  sim.SendXplaneRREF(std::string(401, 'p'), 1, 5, Register::No);
  EXPECT_TRUE(socket.Sent.empty() && boxes.shown.empty());
}

TEST_F(Link, CommandStopAllUnselectsGroups0To135) {
  sim.CommandStopAll();
  EXPECT_EQ(socket.Sent.size(), 100u) << "more at once the simulator may not read";
  clock.Advance(101);
  sim.Tick();
  const auto sent = socket.TakeSent();
  ASSERT_EQ(sent.size(), 136u);
  for (std::size_t i = 0; i < sent.size(); ++i)
    EXPECT_EQ(sent[i].substr(4, 2), std::string("0") + static_cast<char>(i));
  sim.SetUdpMonitorMode(true);
  sim.CommandStopAll();
  model.General.BlockUSEL = 1;
  sim.SendUSEL(3);
  EXPECT_TRUE(socket.Sent.empty());
  EXPECT_EQ(socket.SetUps.size(), 136u);
}

TEST_F(Link, RecordsSubscriptionsOnceAndCancelsThem) {
  sim.SendXplaneRREF("a", 20, 5, Register::Yes);
  sim.SendXplaneRREF("b", 10, 5, Register::Yes);  // the identifier is taken
  EXPECT_EQ(boxes.shown, Texts{"RREF Indent: 5, already used for: a"});
  EXPECT_EQ(socket.Sent.size(), 1u);
  EXPECT_TRUE(sim.UdpOpen());
  sim.SendXplaneRREF("c", 0, 5, Register::Yes);  // a cancellation is never recorded
  sim.SendXplaneRREF("c", 9, 5, Register::No);
  sim.SendXplaneRREF("d", 1, 6, Register::Yes);
  ASSERT_EQ(sim.Rrefs().size(), 2u);
  EXPECT_EQ(sim.Rrefs()[0].Dataref + sim.Rrefs()[1].Dataref, "ad");
  EXPECT_EQ(socket.TakeSent().size(), 4u);

  sim.ClearAllRREF();
  EXPECT_TRUE(sim.Rrefs().empty());
  const auto sent = socket.TakeSent();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0].substr(0, 15), "RREF" + Hex("00 00 00 00 00 05 00 00 00") + "a" + '\0');
  EXPECT_EQ(sent[1].substr(9, 5), Hex("06 00 00 00") + "d");
}

TEST_F(Link, WhatThePortsReadIsAskedForUntilItComes) {
  OpenEnabled(60, Float, 17, 0);
  OpenEnabled(61, Float, 17, 1);
  OpenEnabled(62, Long, 20, 0);
  OpenEnabled(63, Long, -5, 0);
  Define(64, Float, 33);
  sim.OpenSimPort(64, 1);  // not enabled
  Define(65, XplaneDataref, 44, 2).FullName = "#1:x\r\n";
  sim.EnableReadSimPort(sim.OpenSimPort(65, 1));
  socket.Sent.clear();
  clock.Advance(1000);
  sim.Tick();
  std::string asked;
  for (const std::string& bytes : socket.TakeSent())
    asked += bytes.substr(0, 4) + std::to_string(bytes[5]) + " ";
  EXPECT_EQ(asked, "DSEL17 DSEL20 RREF2 ");
  socket.Deliver(RrefDatagram({{5, 1.0f}}));
  socket.Deliver(DataDatagram({{17, 1.0f}}));
  clock.Advance(2000);
  sim.Tick();
  EXPECT_EQ(socket.TakeSent(), Texts{"DSEL0" + Hex("14 00 00 00")});
  sim.DisableReadSimPort(1);
  EXPECT_EQ(socket.TakeSent(), (Texts{"USEL0" + Hex("11 00 00 00"), "DSEL0" + Hex("11 00 00 00")}))
      << "port 0 still reads the group";
  sim.CloseAllPorts();
  clock.Advance(1000);
  sim.Tick();
  socket.TakeSent();
  clock.Advance(60000);
  sim.Tick();
  EXPECT_TRUE(socket.Sent.empty());
}

TEST_F(Link, ASocketErrorIsShownThenHandedOn) {
  socket.RaiseError(1, "early");  // before anyone listens
  int code = 0;
  std::size_t shownBefore = 0;
  const Registration handler = sim.SetSocketErrorHandler([&](int c) {
    code = c;
    shownBefore = boxes.shown.size();
  });
  socket.RaiseError(10054, "reset by peer");
  EXPECT_EQ(code, 10054);
  ASSERT_EQ(shownBefore, 2u);
  EXPECT_EQ(boxes.shown[1], "Error reading data via UDP: reset by peer\r\nErrorcode= 10054");
}

}  // namespace tvx::linktest
