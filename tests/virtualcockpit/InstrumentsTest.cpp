// Every instrument of the range by its contract: what commands show, and the answers byte by byte.
#include <gtest/gtest.h>

#include "Bytes.h"
#include "virtualcockpit/bus/GaugeBus.h"
#include "virtualcockpit/devices/AudioDevice.h"
#include "virtualcockpit/devices/AutopilotDevice.h"
#include "virtualcockpit/devices/ClockDevice.h"
#include "virtualcockpit/devices/DiscDevices.h"
#include "virtualcockpit/devices/DmeDevice.h"
#include "virtualcockpit/devices/RadioDevice.h"
#include "virtualcockpit/devices/TransponderDevice.h"
#include "virtualcockpit/devices/TrimDevice.h"
#include "virtualcockpit/devices/VorDevice.h"

namespace tvx::vc {
namespace {

using test::Bytes;
using Commands = std::vector<std::pair<int, int>>;

template <typename Kind>
Kind& As(Device& device) {
  return dynamic_cast<Kind&>(device);
}

const Byte kModel = 1, kVersion = 9;

// A hand, and what the instrument answers then. Commands are "number=value".
struct ReplyCase {
  const char* name;
  int type, options;
  const char* commands;
  void (*hand)(Device&);
  const char *first, *second = nullptr;  // the second answer only where it differs
};

TEST(Replies, ByteByByteAndPressesOnce) {
  using Audio = AudioDevice::Selector;
  using Autopilot = AutopilotDevice::Button;
  const ReplyCase cases[] = {
      {"Clock", 104, 0, "4=-6465 5=65535 6=1224 12=26", [](Device& d) { As<ClockDevice>(d).TurnMinutes(2); },
       ". 1A 0C 18 . 12 0E 0F"},
      {"HeadingBugAndGyro", 105, 1, "5=1200 6=4314",
       [](Device& d) { As<HeadingDevice>(d).TurnBug(3), As<HeadingDevice>(d).TurnGyro(-1); },
       ". =4308 . =30"},
      {"CourseOfTheSecondReceiver", 107, 0, "", [](Device& d) { As<VorDevice>(d).TurnKnob(30); }, "C =813 A"},
      // 89.5 degrees: the knob takes hold at the next whole one
      {"AdfCardFromWhereItStands", 108, 0, "6=1074", [](Device& d) { As<AdfDevice>(d).TurnCard(-90); },
       "C =1084 A"},
      // 136 comes round to 118
      {"ComRadio", 111, 4, "4=18500 5=36970",
       [](Device& d) {
         As<RadioDevice>(d).TurnCoarse(1), As<RadioDevice>(d).TurnFine(1), As<RadioDevice>(d).Swap();
       },
       "A =18975 S =18500"},
      {"NavRadio", 110, 5, "4=10300 5=8950", [](Device& d) { As<RadioDevice>(d).TurnFine(1); },
       "A =10300 S =8000"},
      // to the band's other end, 17xx
      {"AdfRadio", 121, 4, "4=3505 5=3950", [](Device& d) { As<RadioDevice>(d).TurnCoarse(-3); },
       "A =3505 S =17950"},
      {"ComNavKeepsItsOwn", 120, 4, "4=20000 5=20000",
       [](Device& d) { As<ComNavDevice>(d).Swap(0), As<ComNavDevice>(d).TurnFine(1, -1); },
       "C =21700 S =23450 . =18500 . =27775"},
      {"ComNavWithoutPower", 120, 0, "8=1", [](Device& d) { As<ComNavDevice>(d).Swap(0); },
       "C =21700 S =23450 . =18500 . =27800 ..... 20"},
      {"Transponder", 114, 5, "4=1234 4=1289 6=3",  // 1289 is no code
       [](Device& d) { As<TransponderDevice>(d).TurnDigit(0, -2), As<TransponderDevice>(d).Ident(); },
       "X 72 34 Y ... 01 . 01 . 04", "X 72 34 Y ..... 01 . 04"},
      {"TransponderWithKeys", 122, 4, "4=7000 6=2",
       [](Device& d) {
         auto& transponder = As<TransponderDevice>(d);
         for (const int key : {8, 4, 5}) transponder.Key(key);
         EXPECT_EQ(transponder.Code(), 7000) << "not before the fourth key";
         for (const int key : {2, 1}) transponder.Key(key);
         transponder.TurnMode(1);
       },
       "X 45 21 F ....... 05"},
      {"DmeSelector", 113, 0, "", [](Device& d) { As<DmeDevice>(d).TurnReceiver(1); }, "S .. D ....... 04"},
      {"DmeFrequencyLowByteFirst", 123, 0, "12=10300",
       [](Device& d) { As<DmeDevice>(d).TurnFine(1), As<DmeDevice>(d).TurnSource(5); },
       "S .. D ....... 03 . 6E 28 ... 03"},
      {"DmeTellsNoFrequencyThatNobodySet", 123, 0, "12=10300",
       [](Device& d) { As<DmeDevice>(d).TurnSource(1); }, "S .. D"},
      {"AutopilotOnce", 124, 0, "5=2450 6=0",
       [](Device& d) {
         auto& autopilot = As<AutopilotDevice>(d);
         for (const Autopilot button : {Autopilot::Hdg, Autopilot::Dn}) autopilot.Press(button);
         autopilot.TurnAltitude(2), autopilot.TurnVerticalSpeed(-3);
       },
       "A 82 . V =2600 01 FE D4 01", "A .. V =2600 . FE D4"},
      {"AudioSelectors", 125, 0, "",
       [](Device& d) {
         for (const Audio selector :
              {Audio::Com1, Audio::Com2, Audio::Nav2, Audio::Nav1, Audio::Marker, Audio::Adf, Audio::Dme})
           As<AudioDevice>(d).Toggle(selector);
         As<AudioDevice>(d).TurnVolume(100);
       },
       ". 03 0F . FF"},
      {"TrimByHandAndByMotor", 140, 0, "5=5000 11=1",
       [](Device& d) { As<TrimDevice>(d).TurnByHand(1); },  // 20 against the motor
       "P =5020 T ... 01", "P =5020 T"},
  };
  for (const ReplyCase& c : cases) {
    SCOPED_TRACE(c.name);
    const auto type = static_cast<Byte>(c.type);
    const auto device = MakeDevice({40, type, kModel, kVersion, c.options});
    std::istringstream commands(c.commands);
    char equals = 0;
    for (int command = 0, value = 0; commands >> command >> equals >> value;) device->Receive(command, value);
    const std::uint64_t before = device->Changes();
    c.hand(*device);
    EXPECT_GT(device->Changes(), before) << "the face is drawn anew";
    for (const char* wire : {c.first, c.second == nullptr ? c.first : c.second}) {
      const Reply reply = device->Answer();
      EXPECT_EQ(Bytes(reply.begin(), reply.end()), test::Answer({40, type, kModel, kVersion}, wire));
    }
  }
}

TEST(Instruments, ShowWhatTheyAreSentWithinTheirLimits) {
  const auto make = [](int type, const Commands& commands) {
    auto device = MakeDevice({40, static_cast<Byte>(type), 1, 9});
    for (const auto& [command, value] : commands) device->Receive(command, value);
    return device;
  };
  const auto attitude = make(103, {{4, -125}, {5, 304}});
  EXPECT_EQ(As<AttitudeDevice>(*attitude).Pitch(), -12.5);
  EXPECT_EQ(As<AttitudeDevice>(*attitude).Bank(), 30.4);
  attitude->Receive(4, 65535);
  EXPECT_EQ(As<AttitudeDevice>(*attitude).Pitch(), 90);

  const auto clock = make(109, {{4, -6465}, {5, 3600}, {13, -55}, {14, 281}});
  EXPECT_EQ(As<ClockDevice>(*clock).Utc(), 72000);
  EXPECT_EQ(As<ClockDevice>(*clock).Temperature(), -55);
  As<ClockDevice>(*clock).TurnMinutes(-61);
  EXPECT_EQ(As<ClockDevice>(*clock).Local(), 86400 - 60);
  clock->Receive(11, 1);
  EXPECT_EQ(As<ClockDevice>(*clock).Local(), 3600) << "the time jumped: what the hand had added is gone";

  const auto rmi = make(130, {{4, 900}, {5, 5000}, {6, 4319}, {12, 123}});
  EXPECT_EQ(As<RmiDevice>(*rmi).Pointer1(), kParked);
  EXPECT_EQ(As<RmiDevice>(*rmi).Pointer2(), 4319);
  EXPECT_EQ(As<RmiDevice>(*rmi).Distance(), 123);

  const auto dme = make(113, {{4, 125}, {5, 110}, {6, 7}, {11, 1 + 0x20}});
  EXPECT_TRUE(As<DmeDevice>(*dme).Received());
  EXPECT_EQ(As<DmeDevice>(*dme).ToldSource(), 2);

  const auto autopilot = make(124, {{4, 0x31}, {12, -16000}});
  EXPECT_TRUE(As<AutopilotDevice>(*autopilot).Lit(AutopilotDevice::kEngaged));
  EXPECT_FALSE(As<AutopilotDevice>(*autopilot).Lit(AutopilotDevice::kNav));
  EXPECT_EQ(As<AutopilotDevice>(*autopilot).Trim(), -16000);

  // 118.525 comes back from a simulator that counts in 10 kHz.
  const auto radio = make(111, {{4, 18500}});
  As<RadioDevice>(*radio).TurnCoarse(-3);
  As<RadioDevice>(*radio).TurnFine(-7);
  As<RadioDevice>(*radio).Swap();
  const int own = As<RadioDevice>(*radio).Frequencies().active;
  radio->Answer();
  EXPECT_EQ(own % 10, 5);
  radio->Receive(4, own / 10 * 10);
  EXPECT_EQ(As<RadioDevice>(*radio).Frequencies().active, own);
  radio->Receive(4, 20000);
  EXPECT_EQ(As<RadioDevice>(*radio).Frequencies().active, 20000);
}

TEST(Instruments, AreDarkOnlyWhenToldThatNoBusHasPower) {
  const auto radio = MakeDevice({40, 111, 1, 9});
  EXPECT_TRUE(radio->Powered()) << "nothing was told yet";
  radio->Receive(8, 0x81);
  EXPECT_FALSE(radio->Powered());
  radio->Receive(8, 0x05);
  EXPECT_TRUE(radio->Powered()) << "the second bus is enough";
  radio->Receive(8, 0);
  radio->FollowBuses(false);
  EXPECT_TRUE(radio->Powered()) << "without a voltage Function the word says nothing of the buses";
}

// Between the hand and the next poll the program still sends what it knew before.
TEST(Instruments, HandRulesUntilItWasToldButNotForEver) {
  const auto device = MakeDevice({40, 105, 1, 9, 1});
  auto& heading = As<HeadingDevice>(*device);
  device->SetNow(1000);
  device->Receive(6, 1200);
  heading.TurnBug(1);
  device->SetNow(3900);
  device->Receive(6, 1200);
  EXPECT_EQ(heading.Bug(), 1212);
  device->Answer();
  device->Receive(6, 1212);
  device->Receive(6, 2400);
  EXPECT_EQ(heading.Bug(), 2400) << "told: the program leads again";
  heading.TurnBug(1);
  device->SetNow(6900);
  device->Receive(6, 2400);
  EXPECT_EQ(heading.Bug(), 2400) << "nobody polls it";
}

TEST(Instruments, TransponderAnswersItsFlightLevelAndNoOtherDoes) {
  std::vector<Bytes> written;
  GaugeBus bus([&written](ByteView bytes) { written.emplace_back(bytes.begin(), bytes.end()); });
  bus.Add(MakeDevice({40, 122, 1, 9}));
  bus.Add(MakeDevice({41, 114, 1, 9}));
  for (const int gauge : {40, 41}) bus.OnBytes(test::Command(gauge, 5, 25), 0);
  ASSERT_EQ(written.size(), 1u);
  EXPECT_EQ(written[0][1], 40);
  EXPECT_EQ(As<TransponderDevice>(*bus.Find(40)).FlightLevel(), 25);
}

}  // namespace
}  // namespace tvx::vc
