#include "simlink/SpecialValues.h"
#include "tests/simlink/Fixture.h"

namespace tvx::specialvaluestest {

struct SpecialValuesTest : LinkTest {
  SpecialValuesTest() { sim.OpenUDP(); }
  // The simulator's times, hours of the day.
  void SetTime(float zulu, float local) { socket.Deliver(DataDatagram(1, {0, 0, 0, 0, 0, zulu, local, 0})); }
  SpecialValues special{sim, boxes, clock};
};

TEST_F(SpecialValuesTest, TimesAreFoldedAndJumpsNoticed) {
  const std::tuple<float, float, std::int32_t, std::int32_t, int, bool> steps[] = {
      {13.5f, 13.5f, 48600, 48600, 13, true}, {13.502f, 0.0f, 48607, 0, 0, false},
      {13.499f, 0.0f, 48596, 0, 0, true},     {20.0f, 18.25f, -6465, -165, 18, true},
      {-1.0f, 1e30f, 0, 0, 0, true},
  };
  for (const auto& [zulu, local, zuluSeconds, localSeconds, localHour, jumped] : steps) {
    SetTime(zulu, local);
    special.ClearTimeJumped();
    special.GetTimeAndDate();
    EXPECT_EQ(special.ZuluSeconds, zuluSeconds) << zulu;
    EXPECT_EQ(special.LocalSeconds, localSeconds) << local;
    EXPECT_EQ(special.LocalHour, localHour) << local;
    EXPECT_EQ(special.TimeJumped(), jumped) << zulu;
  }
  EXPECT_EQ((std::vector<int>{special.DateYear, special.DateMonth, special.DateDay}),
            (std::vector<int>{24, 3, 5}));
}

TEST_F(SpecialValuesTest, BothNavWritersWriteTheSameSlot) {
  socket.TakeSent();
  special.PutNAV1Frequency(11030);
  special.PutNAV2Frequency(11030);
  const auto sent = socket.TakeSent();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0], sent[1]);
  EXPECT_EQ(sent[0].substr(0, 9), std::string("DATA0s\0\0\0", 9));
  EXPECT_EQ(sent[0].substr(13, 4), std::string("\x00\x58\x2C\x46", 4)) << "value number 1";
}

TEST_F(SpecialValuesTest, AdfDigitsBecomeKilohertz) {
  socket.TakeSent();
  special.PutADF("03505", false);
  special.PutADF("17990", true);
  special.PutADF("350", false);
  const auto sent = socket.TakeSent();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(FloatAt(sent[0], 5), 350.5f);
  EXPECT_STREQ(sent[0].c_str() + 9, "sim/cockpit/radios/adf1_freq_hz");
  EXPECT_EQ(FloatAt(sent[1], 5), 1799.0f);
  EXPECT_STREQ(sent[1].c_str() + 9, "sim/cockpit/radios/adf1_stdby_freq_hz");
}

TEST_F(SpecialValuesTest, RmiNeedles) {
  const struct {
    const char* what;
    float bearing1, bearing2;
    std::int16_t angle3, angle4, valid;
    bool second, fourth;
    std::array<int, 4> positions;
  } cases[] = {
      {"none valid", 90, 90, 100, 100, 0, true, true, {5000, 5000, 5000, 5000}},
      {"one of each, shown twice", 90, 0, 16384, 0, 0x0A, false, false, {1080, 1080, 1080, 1080}},
      {"all four", 359, 10, -16384, 8192, 0x80E, true, true, {4308, 120, 3240, 540}},
      {"the second not valid", 90, 10, 0, 0, 0x02, true, false, {1080, 5000, 5000, 5000}},
  };
  for (const auto& c : cases) {
    SpecialValues s{sim, boxes, clock};
    s.RmiBearing1 = c.bearing1;
    s.RmiBearing2 = c.bearing2;
    s.RmiAngle3 = c.angle3;
    s.RmiAngle4 = c.angle4;
    s.RmiValid = c.valid;
    s.RmiHasSecond = c.second;
    s.RmiHasFourth = c.fourth;
    s.getRMIData();
    EXPECT_EQ((std::array<int, 4>{s.RmiPos1, s.RmiPos2, s.RmiPos3, s.RmiPos4}), c.positions) << c.what;
  }
}

TEST_F(SpecialValuesTest, AutopilotOffsetsWithoutAPortAreReported) {
  for (const int n : {-1, 21}) special.GetPortAP(n);
  EXPECT_EQ(boxes.shown, (Texts{"Get APPort, OffsetNr: -1", "Get APPort, OffsetNr: 21"}));
  FunctionRecord& function = DefineFunction(model, 91, DataType::Float);
  function.FuncType = static_cast<Byte>(FunctionUse::Macro);
  function.BoxMacroNr = 4;
  SpecialValues::AutopilotPortTable ports;
  ports.fill(sim.OpenSimPort(91, 1));
  sim.EnableReadSimPort(0);
  special.SetAutopilotPorts(ports);
  float two = 2;
  sim.PutPort(0, two);
  special.GetPortAP(0);
  special.GetPortAP(7);
  EXPECT_EQ(special.APEngaged, 1.0f);
  EXPECT_EQ(special.APVariable[7], 2.0f);
  special.GetAPvaluesFX();
  EXPECT_EQ(special.APStatusBits, 0x01 | 0x08 | 0x10 | 0x20);
  EXPECT_EQ(special.APTrim, 320);
}

}  // namespace tvx::specialvaluestest
