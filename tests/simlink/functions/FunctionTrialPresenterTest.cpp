#include "simlink/functions/FunctionTrialPresenter.h"
#include "tests/simlink/Fixture.h"

namespace tvx {
namespace {

TEST(ValueToWrite, MustFitItsDataType) {
  const struct {
    DataType type;
    double lowest, highest;
    const char* outside;
  } rows[] = {
      {DataType::ByteType, 0, 255, "Datatype is byte; Value must be 0 end 255"},
      {DataType::Integer, -32767, 32767, "Datatype is Integer; Value must be -32767 and  +32767"},
      {DataType::UnsignedInt, 0, 65535, "Datatype is Unsigned Integer; Value must between 0 and  65535"},
      {DataType::Long, -2147483648.0, 2147483647.0,
       "Datatype is Long; Value must between -2147483648 and 2147483647"},
      {DataType::BcdCode, 0, 9999, "Datatype is BCD code; Value must between 0 and  9999"},
  };
  for (const auto& row : rows) {
    const int type = static_cast<int>(row.type);
    for (const double good : {row.lowest, row.highest}) EXPECT_EQ(OutOfRangeText(type, good), "");
    for (const double bad : {row.lowest - 1, row.highest + 1, std::numeric_limits<double>::quiet_NaN()})
      EXPECT_EQ(OutOfRangeText(type, bad), row.outside);
  }
  for (const DataType any : {DataType::Float, DataType::XplaneCmnd, DataType::XplaneDataref})
    EXPECT_EQ(OutOfRangeText(static_cast<int>(any), -1e30), "");
}

TEST(SweepOfValues, GoesUpAndDownAndMeetsBothLimits) {
  const struct {
    double lower, upper, step;
    std::vector<double> values;
  } rows[] = {
      {0, 4, 2, {0, 2, 4, 2, 0, 2, 4}},
      {-1, 4, 3, {-1, 2, 4, 2, -1, 2}},
      {0, 4, 100, {0, 4, 0, 4}},
      {7, 7, 1, {7, 7, 7, 7}},
  };
  for (const auto& row : rows) {
    Sweep sweep(row.lower, row.upper, row.step);
    for (const double value : row.values) EXPECT_EQ(sweep.Next(), value) << row.upper << '/' << row.step;
  }
}

struct FunctionTestTest : LinkTest {
  FunctionTestTest() { sim.SetCurrentOpener(42); }
  void Choose(int number, const char* sequence = "1") { test.Choose(std::to_string(number), sequence); }

  FunctionTrialPresenter test{model, sim, boxes};
};

TEST_F(FunctionTestTest, AValueIsCheckedAgainstItsFunction) {
  EXPECT_EQ(test.ProblemOf("1000"), "") << "none is chosen yet";
  Define(1, DataType::ByteType);
  Choose(1);
  EXPECT_NE(test.ProblemOf("256"), "");
  EXPECT_EQ(test.ProblemOf("255"), "");
}

TEST_F(FunctionTestTest, ReadsRawAndCorrectedUntilItIsStopped) {
  FunctionRecord& function = Define(60, DataType::Float, 3, 2);
  function.BoxAdd = 1;
  function.Multiplier = 2;
  Choose(60);
  EXPECT_TRUE(socket.Sent.empty());
  test.CmdRead_Click();
  EXPECT_EQ(test.Shown().Status, "Reading");
  EXPECT_EQ(socket.TakeSent(), Texts{Hex("44 53 45 4C 30 03 00 00 00")});
  EXPECT_NE(test.Shown().Note, "");
  EXPECT_EQ(sim.PortAt(0).OpenedBy, opener::kInternal);
  EXPECT_EQ(sim.CurrentOpener(), 42);
  socket.Deliver(DataDatagram({{3, 8.5f}}));
  test.Read_Tick();
  EXPECT_EQ(test.Shown().Raw + ' ' + test.Shown().Corrected + test.Shown().Note, "10.5000 23.0000");
  sim.SetUdpMonitorMode(true);
  test.Read_Tick();
  EXPECT_NE(test.Shown().Note, "");
}

TEST_F(FunctionTestTest, WhatNeverCameIsNoValue) {
  FunctionRecord& function = Define(60, DataType::XplaneDataref);
  function.FullName = "#1:a/b\r\n#2:a/c\r\n";
  function.XPVal1 = 5;
  Define(61, DataType::Float, 3, 0);
  FunctionRecord& macro = Define(62, DataType::Float);
  macro.FuncType = static_cast<Byte>(FunctionUse::Macro);
  macro.BoxMacroNr = 3;
  const struct {
    const char *function, *sequence, *value, *note;
  } rows[] = {{"60", "1", "---", "may not know it"},
              {"60", "2", "---", "written only"},
              {"61", "1", "---", "data group 3 has not come"},
              {"62", "1", "0.0000", ""}};
  for (const auto& row : rows) {
    test.Choose(row.function, row.sequence);
    test.CmdRead_Click();
    socket.Deliver(DataDatagram({{4, 1}}));
    test.Read_Tick();
    EXPECT_EQ(test.Shown().Raw, row.value) << row.function;
    EXPECT_TRUE(Holds(test.Shown().Note, row.note));
  }
  Choose(60);
  test.CmdRead_Click();
  socket.Deliver(RrefDatagram({{0, 2.5f}}));
  test.Read_Tick();
  EXPECT_EQ(test.Shown().Raw + test.Shown().Note, "2.5000");
  clock.Advance(4000);
  test.Read_Tick();
  EXPECT_EQ(test.Shown().Note, "Nothing has arrived from the simulator for 4 s.");
}

TEST_F(FunctionTestTest, OneFunctionAndSequenceIsOpenedOnce) {
  FunctionRecord& function = Define(60, DataType::XplaneDataref);
  function.FullName = "#1:a/b\r\n";
  function.XPVal1 = 5;
  Choose(60);
  test.CmdRead_Click();
  test.CmdStopRead_Click();
  test.CmdRead_Click();
  EXPECT_EQ(sim.PortCount(), 1);
  function.FullName = "#1:a/c\r\n";
  test.CmdRead_Click();
  EXPECT_EQ(sim.PortCount(), 2) << "an edited Function must be subscribed anew";
  test.Close();
  EXPECT_EQ(sim.PortCount(), 0);
  EXPECT_TRUE(sim.Rrefs().empty());
  EXPECT_FALSE(sim.UdpOpen());
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
  const struct {
    const char *function, *sequence, *message;
  } rows[] = {
      {"", "1", "Incorrect data"},
      {"301", "1", "Incorrect data"},
      {"61", "5", "Incorrect data"},
      {"61", "x", "Incorrect data"},
      {"62", "1", "Function 62 is not defined."},
      {"60", "2", "Function 60 has no data reference line \"#2:\"."},
  };
  for (const auto& row : rows) {
    boxes.shown.clear();
    test.Choose(row.function, row.sequence);
    test.CmdRead_Click();
    EXPECT_EQ(boxes.shown, Texts{row.message}) << row.function << '#' << row.sequence;
    EXPECT_FALSE(test.Reading());
  }
  socket.SetUpError = "local port 49003 is used by another program";
  sim.CloseUDP();
  test.Choose("61", "0");
  test.CmdRead_Click();
  EXPECT_EQ(boxes.shown.back(),
            "The link to the simulator cannot be opened: local port 49003 is used by another program");
}

TEST_F(FunctionTestTest, WritesOnceWhatFits) {
  Define(60, DataType::Integer, 7, 1).Devider = 2;
  Choose(60);
  for (const char* bad : {"32768", "x"}) test.CmdWriteOnce_Click(bad);
  EXPECT_EQ(boxes.shown, (Texts{"Datatype is Integer; Value must be -32767 and  +32767", "Incorrect data"}));
  EXPECT_TRUE(socket.Sent.empty());
  test.CmdWriteOnce_Click("12.5");
  ASSERT_EQ(socket.Sent.size(), 1u);
  EXPECT_EQ(socket.Sent[0].bytes.substr(0, 17), Hex("44 41 54 41 30 07 00 00 00 FF FF FC 19 00 00 00 19"));
  EXPECT_EQ((Texts{test.Shown().Written, test.Shown().WrittenRaw}), (Texts{"12.5000", "25.0000"}));
}

TEST_F(FunctionTestTest, WhatIsNotSentIsNotCalledWritten) {
  Define(60, DataType::ByteType).Devider = 2;
  Define(61, DataType::XplaneCmnd).FullName = "#1:a/b\r\n";
  Define(62, static_cast<DataType>(8));
  const struct {
    int function;
    const char *value, *note;
  } rows[] = {{60, "200", "does not fit"}, {61, "2", "\"#2:\""}, {62, "1", "not written"}};
  for (const auto& row : rows) {
    Choose(row.function);
    test.CmdWriteOnce_Click(row.value);
    EXPECT_TRUE(Holds(test.Shown().WriteNote, row.note));
    EXPECT_EQ(test.Shown().Written, "");
  }
  EXPECT_TRUE(socket.Sent.empty());
  Choose(61);
  test.CmdWriteOnce_Click("1");
  EXPECT_EQ(test.Shown().WriteNote + test.Shown().Written, "1.0000");
}

TEST_F(FunctionTestTest, WritesSweepingWithinItsLimits) {
  Define(60, DataType::ByteType, 7, 0);
  Choose(60);
  const struct {
    const char *lower, *upper, *step, *message;
  } rows[] = {
      {"-1", "10", "1", "Datatype is byte; Value must be 0 end 255"},
      {"10", "0", "1", "Incorrect data"},
      {"0", "10", "0", "Incorrect data"},
      {"0", "10", "", "Incorrect data"},
  };
  for (const auto& row : rows) {
    test.CmdWriteInterval_Click(row.lower, row.upper, row.step);
    EXPECT_EQ(boxes.shown.back(), row.message) << row.lower << ".." << row.upper << '/' << row.step;
    EXPECT_FALSE(test.Writing());
  }
  test.CmdWriteInterval_Click("250", "255", "3");
  EXPECT_EQ(test.Shown().WriteStatus, "Writing");
  test.IntervalTimer_Tick();
  EXPECT_EQ(test.Shown().Written, "253.0000");
  EXPECT_EQ(socket.TakeSent().size(), 2u);
  Choose(61);
  test.IntervalTimer_Tick();
  EXPECT_TRUE(socket.Sent.empty()) << "another Function ends the writing";
  EXPECT_EQ(test.Shown().WriteStatus, "Stopped");
}

}  // namespace
}  // namespace tvx
