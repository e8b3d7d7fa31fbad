#include "simlink/functions/FunctionTrialPresenter.h"
#include "tests/simlink/Fixture.h"

namespace tvx::functiontrialpresentertest {

TEST(ValueToWrite, MustFitItsDataType) {
  const std::tuple<DataType, double, double, const char*> rows[] = {
      {DataType::ByteType, 0, 255, "Datatype is byte; Value must be 0 end 255"},
      {DataType::Integer, -32767, 32767, "Datatype is Integer; Value must be -32767 and  +32767"},
      {DataType::UnsignedInt, 0, 65535, "Datatype is Unsigned Integer; Value must between 0 and  65535"},
      {DataType::Long, -2147483648.0, 2147483647.0,
       "Datatype is Long; Value must between -2147483648 and 2147483647"},
      {DataType::BcdCode, 0, 9999, "Datatype is BCD code; Value must between 0 and  9999"},
  };
  for (const auto& [dataType, lowest, highest, outside] : rows) {
    const int type = static_cast<int>(dataType);
    for (const double good : {lowest, highest}) EXPECT_EQ(OutOfRangeText(type, good), "");
    for (const double bad : {lowest - 1, highest + 1, std::numeric_limits<double>::quiet_NaN()})
      EXPECT_EQ(OutOfRangeText(type, bad), outside);
  }
  for (const DataType any : {DataType::Float, DataType::XplaneCmnd, DataType::XplaneDataref})
    EXPECT_EQ(OutOfRangeText(static_cast<int>(any), -1e30), "");
}

TEST(SweepOfValues, GoesUpAndDownAndMeetsBothLimits) {
  const std::tuple<double, double, double, std::vector<double>> rows[] = {
      {0, 4, 2, {0, 2, 4, 2, 0, 2, 4}},
      {-1, 4, 3, {-1, 2, 4, 2, -1, 2}},
      {0, 4, 100, {0, 4, 0, 4}},
      {7, 7, 1, {7, 7, 7, 7}},
  };
  for (const auto& [lower, upper, step, values] : rows) {
    Sweep sweep(lower, upper, step);
    for (const double value : values) EXPECT_EQ(sweep.Next(), value) << upper << '/' << step;
  }
}

struct FunctionTestTest : LinkTest {
  FunctionTestTest() {
    sim.SetCurrentOpener(42);
    Can({{"choose", [this](const std::string& function) { test.Choose(function, "1"); }},
         {"read", [this] { test.CmdRead_Click(); }},
         {"stop", [this] { test.CmdStopRead_Click(); }},
         {"tick", [this] { test.Read_Tick(); }},
         {"shows", [this] { return test.Shown().Raw + test.Shown().Note; }},
         {"write", [this](const std::string& value) { test.CmdWriteOnce_Click(value); }},
         {"written", [this] { return test.Shown().Written + test.Shown().WriteNote; }}});
  }

  FunctionTrialPresenter test{model, sim, boxes};
};

TEST_F(FunctionTestTest, AValueIsCheckedAgainstItsFunction) {
  EXPECT_EQ(test.ProblemOf("1000"), "") << "none is chosen yet";
  Define(1, DataType::ByteType);
  Play("choose 1");
  EXPECT_NE(test.ProblemOf("256"), "");
  EXPECT_EQ(test.ProblemOf("255"), "");
}

TEST_F(FunctionTestTest, ReadsRawAndCorrectedUntilItIsStopped) {
  FunctionRecord& function = Define(60, DataType::Float, 3, 2);
  function.BoxAdd = 1, function.Multiplier = 2;
  Play("choose 60; sends = 0; read");
  EXPECT_EQ(test.Shown().Status, "Reading");
  EXPECT_EQ(socket.TakeSent(), Texts{Hex("44 53 45 4C 30 03 00 00 00")});
  EXPECT_NE(test.Shown().Note, "");
  EXPECT_EQ(sim.PortAt(0).OpenedBy, opener::kInternal);
  EXPECT_EQ(sim.CurrentOpener(), 42);
  Play("data 3 8.5; tick; shows = 10.5000");
  EXPECT_EQ(test.Shown().Corrected, "23.0000");
  sim.SetUdpMonitorMode(true);
  test.Read_Tick();
  EXPECT_NE(test.Shown().Note, "");
}

TEST_F(FunctionTestTest, WhatNeverCameIsNoValue) {
  Define(60, DataType::XplaneDataref, 10, 5).FullName = "#1:a/b\r\n#2:a/c\r\n";
  Define(61, DataType::Float, 3, 0);
  FunctionRecord& macro = Define(62, DataType::Float);
  macro.FuncType = static_cast<Byte>(FunctionUse::Macro);
  macro.BoxMacroNr = 3;
  const std::array<const char*, 4> rows[] = {{"60", "1", "---", "may not know it"},
                                             {"60", "2", "---", "written only"},
                                             {"61", "1", "---", "data group 3 has not come"},
                                             {"62", "1", "0.0000", ""}};
  for (const auto& [function, sequence, value, note] : rows) {
    test.Choose(function, sequence);
    test.CmdRead_Click();
    socket.Deliver(DataDatagram({{4, 1}}));
    test.Read_Tick();
    EXPECT_EQ(test.Shown().Raw, value) << function;
    EXPECT_TRUE(Holds(test.Shown().Note, note));
  }
  Play("choose 60; read; rref 0 2.5; tick; shows = 2.5000; pass 4000; tick");
  EXPECT_EQ(test.Shown().Note, "Nothing has arrived from the simulator for 4 s.");
}

TEST_F(FunctionTestTest, OneFunctionAndSequenceIsOpenedOnce) {
  FunctionRecord& function = Define(60, DataType::XplaneDataref, 10, 5);
  function.FullName = "#1:a/b\r\n";
  Play("choose 60; read; stop; read; ports = 1");
  function.FullName = "#1:a/c\r\n";
  Play("read; ports = 2; (an edited Function must be subscribed anew)");
  test.Close();
  Play("ports = 0; link = false");
  EXPECT_TRUE(sim.Rrefs().empty());
}

TEST_F(FunctionTestTest, LeavesTheLinkAndPortsOfOthersAlone) {
  Define(60, DataType::Float);
  sim.OpenUDP();
  const Port other = OpenEnabled(61, DataType::Float);
  FunctionTrialPresenter second(model, sim, boxes);
  second.Choose("60", "1");
  second.CmdRead_Click();
  second.Close();
  EXPECT_TRUE(sim.UdpOpen());
  EXPECT_TRUE(sim.PortAt(other).ReadEnabled);
  EXPECT_FALSE(sim.PortAt(1).ReadEnabled);
}

TEST_F(FunctionTestTest, WhatCannotBeTestedIsSaid) {
  Define(60, DataType::XplaneDataref).XPVal2 = 5;
  Define(61, DataType::Float);
  const std::array<const char*, 3> rows[] = {
      {"", "1", "Incorrect data"},
      {"301", "1", "Incorrect data"},
      {"61", "5", "Incorrect data"},
      {"61", "x", "Incorrect data"},
      {"62", "1", "Function 62 is not defined."},
      {"60", "2", "Function 60 has no data reference line \"#2:\"."},
  };
  for (const auto& [function, sequence, message] : rows) {
    boxes.shown.clear();
    test.Choose(function, sequence);
    test.CmdRead_Click();
    EXPECT_EQ(boxes.shown, Texts{message}) << function << '#' << sequence;
    EXPECT_FALSE(test.Reading());
  }
  socket.SetUpError = "port 49003 is used";
  sim.CloseUDP();
  test.Choose("61", "0");
  boxes.shown.clear();
  Play("read; said = The link to the simulator cannot be opened: port 49003 is used");
}

TEST_F(FunctionTestTest, WritesOnceWhatFits) {
  Define(60, DataType::Integer, 7, 1).Devider = 2;
  Play("choose 60; write 32768; write x");
  EXPECT_EQ(boxes.shown, (Texts{"Datatype is Integer; Value must be -32767 and  +32767", "Incorrect data"}));
  EXPECT_TRUE(socket.Sent.empty());
  Play("write 12.5; written = 12.5000");
  ASSERT_EQ(socket.Sent.size(), 1u);
  EXPECT_EQ(socket.Sent[0].bytes.substr(0, 17), Hex("44 41 54 41 30 07 00 00 00 FF FF FC 19 00 00 00 19"));
  EXPECT_EQ(test.Shown().WrittenRaw, "25.0000");
}

TEST_F(FunctionTestTest, WhatIsNotSentIsNotCalledWritten) {
  Define(60, DataType::ByteType).Devider = 2;
  Define(61, DataType::XplaneCmnd).FullName = "#1:a/b\r\n";
  Define(62, static_cast<DataType>(8));
  const std::tuple<int, const char*, const char*> rows[] = {
      {60, "200", "does not fit"}, {61, "2", "\"#2:\""}, {62, "1", "not written"}};
  for (const auto& [function, value, note] : rows) {
    Play("choose " + std::to_string(function) + "; write " + value);
    EXPECT_TRUE(Holds(test.Shown().WriteNote, note));
    EXPECT_EQ(test.Shown().Written, "");
  }
  Play("sends = 0; choose 61; write 1; written = 1.0000");
}

TEST_F(FunctionTestTest, WritesSweepingWithinItsLimits) {
  Define(60, DataType::ByteType, 7, 0);
  Play("choose 60");
  const std::array<const char*, 4> rows[] = {
      {"-1", "10", "1", "Datatype is byte; Value must be 0 end 255"},
      {"10", "0", "1", "Incorrect data"},
      {"0", "10", "0", "Incorrect data"},
      {"0", "10", "", "Incorrect data"},
  };
  for (const auto& [lower, upper, step, message] : rows) {
    test.CmdWriteInterval_Click(lower, upper, step);
    EXPECT_EQ(boxes.shown.back(), message) << lower << ".." << upper << '/' << step;
    EXPECT_FALSE(test.Writing());
  }
  test.CmdWriteInterval_Click("250", "255", "3");
  EXPECT_EQ(test.Shown().WriteStatus, "Writing");
  test.IntervalTimer_Tick();
  Play("written = 253.0000; sends = 2; choose 61");
  test.IntervalTimer_Tick();
  EXPECT_TRUE(socket.Sent.empty()) << "another Function ends the writing";
  EXPECT_EQ(test.Shown().WriteStatus, "Stopped");
}

}  // namespace tvx::functiontrialpresentertest
