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

// An answer of 25 bytes: its head, then the bytes that are not zero, by their number on the wire.
Bytes Answer(int type, std::initializer_list<std::pair<int, int>> bytes) {
  Bytes reply(25, 0);
  reply[1] = 40;
  reply[2] = static_cast<Byte>(type);
  reply[3] = 1;
  reply[4] = 9;
  for (const auto& [number, value] : bytes)
    reply[static_cast<std::size_t>(number - 1)] = static_cast<Byte>(value);
  reply[24] = 0xFF;
  return reply;
}

struct ReplyCase {
  const char* name;
  int type, options;
  Commands commands;
  void (*hand)(Device&);
  Bytes first, second;  // the second answer where it differs; otherwise empty
};
class Replies : public testing::TestWithParam<ReplyCase> {};

TEST_P(Replies, ByteByByteAndPressesOnce) {
  const ReplyCase& c = GetParam();
  const auto device = MakeDevice({40, static_cast<Byte>(c.type), 1, 9, c.options});
  for (const auto& [command, value] : c.commands) device->Receive(command, value);
  const std::uint64_t before = device->Changes();
  c.hand(*device);
  EXPECT_GT(device->Changes(), before) << "the face is drawn anew";
  const Reply first = device->Answer();
  EXPECT_EQ(Bytes(first.begin(), first.end()), c.first);
  const Reply second = device->Answer();
  EXPECT_EQ(Bytes(second.begin(), second.end()), c.second.empty() ? c.first : c.second);
}

INSTANTIATE_TEST_SUITE_P(
    All, Replies,
    testing::Values(
        ReplyCase{"Clock",
                  104,
                  0,
                  {{4, -6465}, {5, 65535}, {6, 1224}, {12, 26}},
                  [](Device& d) { As<ClockDevice>(d).TurnMinutes(2); },
                  Answer(104, {{7, 26}, {8, 12}, {9, 24}, {11, 18}, {12, 14}, {13, 15}}),
                  {}},
        ReplyCase{"HeadingBugAndGyro",
                  105,
                  1,
                  {{5, 1200}, {6, 4314}},
                  [](Device& d) {
                    As<HeadingDevice>(d).TurnBug(3);
                    As<HeadingDevice>(d).TurnGyro(-1);
                  },
                  Answer(105, {{7, 4308 / 256}, {8, 4308 % 256}, {10, 0}, {11, 30}}),
                  {}},
        ReplyCase{"CourseOfTheSecondReceiver",
                  107,
                  0,
                  {},
                  [](Device& d) { As<VorDevice>(d).TurnKnob(30); },
                  Answer(107, {{6, 'C'}, {9, 'A'}, {7, 813 / 256}, {8, 813 % 256}}),
                  {}},
        ReplyCase{"AdfCardFromWhereItStands",
                  108,
                  0,
                  {{6, 1074}},  // 89.5 degrees: the knob takes hold at the next whole one
                  [](Device& d) { As<AdfDevice>(d).TurnCard(-90); },
                  Answer(108, {{6, 'C'}, {9, 'A'}, {7, 1084 / 256}, {8, 1084 % 256}}),
                  {}},
        ReplyCase{"ComRadio",
                  111,
                  4,
                  {{4, 18500}, {5, 36970}},
                  [](Device& d) {
                    As<RadioDevice>(d).TurnCoarse(1);  // 136 comes round to 118
                    As<RadioDevice>(d).TurnFine(1);
                    As<RadioDevice>(d).Swap();
                  },
                  Answer(111, {{6, 'A'}, {9, 'S'}, {7, 18975 / 256}, {8, 18975 % 256}, {10, 0x48}, {11, 0x44}}),
                  {}},
        ReplyCase{"NavRadio",
                  110,
                  5,
                  {{4, 10300}, {5, 8950}},
                  [](Device& d) { As<RadioDevice>(d).TurnFine(1); },
                  Answer(110, {{6, 'A'}, {9, 'S'}, {7, 10300 / 256}, {8, 10300 % 256}, {10, 0x1F}, {11, 0x40}}),
                  {}},
        ReplyCase{"AdfRadio",
                  121,
                  4,
                  {{4, 3505}, {5, 3950}},
                  [](Device& d) { As<RadioDevice>(d).TurnCoarse(-3); },  // to the band's other end, 17xx
                  Answer(121, {{6, 'A'}, {9, 'S'}, {7, 0x0D}, {8, 0xB1}, {10, 17950 / 256}, {11, 17950 % 256}}),
                  {}},
        ReplyCase{"ComNavKeepsItsOwn",
                  120,
                  4,
                  {{4, 20000}, {5, 20000}},
                  [](Device& d) {
                    As<ComNavDevice>(d).Swap(0);
                    As<ComNavDevice>(d).TurnFine(1, -1);
                  },
                  Answer(120, {{6, 'C'},
                               {9, 'S'},
                               {7, 0x54},
                               {8, 0xC4},
                               {10, 0x5B},
                               {11, 0x9A},
                               {13, 0x48},
                               {14, 0x44},
                               {16, 27775 / 256},
                               {17, 27775 % 256}}),
                  {}},
        ReplyCase{"ComNavWithoutPower",
                  120,
                  0,
                  {{8, 0x01}},
                  [](Device& d) { As<ComNavDevice>(d).Swap(0); },
                  Answer(120, {{6, 'C'},
                               {9, 'S'},
                               {7, 0x54},
                               {8, 0xC4},
                               {10, 0x5B},
                               {11, 0x9A},
                               {13, 0x48},
                               {14, 0x44},
                               {16, 0x6C},
                               {17, 0x98},
                               {23, 0x20}}),
                  {}},
        ReplyCase{"Transponder",
                  114,
                  5,
                  {{4, 1234}, {4, 1289}, {6, 3}},  // 1289 is no code
                  [](Device& d) {
                    As<TransponderDevice>(d).TurnDigit(0, -2);
                    As<TransponderDevice>(d).Ident();
                  },
                  Answer(114, {{6, 'X'}, {9, 'Y'}, {7, 0x72}, {8, 0x34}, {13, 1}, {15, 1}, {17, 4}}),
                  Answer(114, {{6, 'X'}, {9, 'Y'}, {7, 0x72}, {8, 0x34}, {13, 0}, {15, 1}, {17, 4}})},
        ReplyCase{"TransponderWithKeys",
                  122,
                  4,
                  {{4, 7000}, {6, 2}},
                  [](Device& d) {
                    auto& transponder = As<TransponderDevice>(d);
                    for (const int key : {8, 4, 5}) transponder.Key(key);
                    EXPECT_EQ(transponder.Code(), 7000) << "not before the fourth key";
                    for (const int key : {2, 1}) transponder.Key(key);
                    transponder.TurnMode(1);
                  },
                  Answer(122, {{6, 'X'}, {9, 'F'}, {7, 0x45}, {8, 0x21}, {17, 5}}),
                  {}},
        ReplyCase{"DmeSelector",
                  113,
                  0,
                  {},
                  [](Device& d) { As<DmeDevice>(d).TurnReceiver(1); },
                  Answer(113, {{6, 'S'}, {9, 'D'}, {17, 4}}),
                  {}},
        ReplyCase{"DmeFrequencyLowByteFirst",
                  123,
                  0,
                  {{12, 10300}},
                  [](Device& d) {
                    As<DmeDevice>(d).TurnFine(1);
                    As<DmeDevice>(d).TurnSource(5);
                  },
                  Answer(123, {{6, 'S'}, {9, 'D'}, {17, 3}, {19, 10350 % 256}, {20, 10350 / 256}, {24, 3}}),
                  {}},
        ReplyCase{"DmeTellsNoFrequencyThatNobodySet",
                  123,
                  0,
                  {{12, 10300}},
                  [](Device& d) { As<DmeDevice>(d).TurnSource(1); },
                  Answer(123, {{6, 'S'}, {9, 'D'}}),
                  {}},
        ReplyCase{"AutopilotOnce",
                  124,
                  0,
                  {{5, 2450}, {6, 0}},
                  [](Device& d) {
                    auto& autopilot = As<AutopilotDevice>(d);
                    autopilot.Press(AutopilotDevice::Button::Hdg);
                    autopilot.Press(AutopilotDevice::Button::Dn);
                    autopilot.TurnAltitude(2);
                    autopilot.TurnVerticalSpeed(-3);
                  },
                  Answer(124, {{6, 'A'},
                               {9, 'V'},
                               {7, 0x82},
                               {10, 2600 / 256},
                               {11, 2600 % 256},
                               {12, 1},
                               {13, 0xFE},
                               {14, 0xD4},
                               {15, 1}}),
                  Answer(124, {{6, 'A'}, {9, 'V'}, {10, 2600 / 256}, {11, 2600 % 256}, {13, 0xFE}, {14, 0xD4}})},
        ReplyCase{"AudioSelectors",
                  125,
                  0,
                  {},
                  [](Device& d) {
                    using S = AudioDevice::Selector;
                    for (const S selector : {S::Com1, S::Com2, S::Nav2, S::Nav1, S::Marker, S::Adf, S::Dme})
                      As<AudioDevice>(d).Toggle(selector);
                    As<AudioDevice>(d).TurnVolume(100);
                  },
                  Answer(125, {{7, 0x03}, {8, 0x0F}, {10, 255}}),
                  {}},
        ReplyCase{"TrimByHandAndByMotor",
                  140,
                  0,
                  {{5, 5000}, {11, 1}},
                  [](Device& d) { As<TrimDevice>(d).TurnByHand(1); },  // 20 against the motor
                  Answer(140, {{6, 'P'}, {9, 'T'}, {7, 5020 / 256}, {8, 5020 % 256}, {13, 1}}),
                  Answer(140, {{6, 'P'}, {9, 'T'}, {7, 5020 / 256}, {8, 5020 % 256}, {13, 0}})}),
    [](const auto& one) { return one.param.name; });

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
  bus.OnBytes(Bytes{0, 40, 0x59, 25, 0x02, 0xFF, 0, 41, 0x59, 25, 0x02, 0xFF}, 0);  // command 5, value 25
  ASSERT_EQ(written.size(), 1u);
  EXPECT_EQ(written[0][1], 40);
  EXPECT_EQ(As<TransponderDevice>(*bus.Find(40)).FlightLevel(), 25);
}

}  // namespace
}  // namespace tvx::vc
