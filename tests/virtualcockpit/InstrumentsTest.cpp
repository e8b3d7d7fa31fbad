// Every instrument of the range by its contract: what commands show, and the answers byte by byte.
#include "drawn/devices/AltimeterDevice.h"
#include "drawn/devices/AutopilotDevice.h"
#include "drawn/devices/ClockDevice.h"
#include "drawn/devices/DiscDevices.h"
#include "drawn/devices/DmeDevice.h"
#include "drawn/devices/NeedleDevice.h"
#include "drawn/devices/RadioDevice.h"
#include "drawn/devices/TransponderDevice.h"
#include "drawn/devices/TrimDevice.h"
#include "drawn/devices/VorDevice.h"
#include "tests/Test.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

using test::As;

const Byte kModel = 1, kVersion = 9;

// A hand, and what the instrument answers then. Commands are "number=value".
TEST(Replies, ByteByByteAndPressesOnce) {
  const struct {
    const char* name;
    int type, options;
    const char* commands;
    void (*hand)(Device&);
    const char *first, *second = nullptr;  // the second answer only where it differs
  } cases[] = {
      {"Clock", 104, 0, "4=-6465 5=65535 6=1224 12=26", [](Device& d) { As<ClockDevice>(d).TurnMinutes(2); },
       ". 1A 0C 18 . 12 0E 0F"},
      // to the band's other end, 17xx
      {"AdfRadio", 121, 4, "4=3505 5=3950", [](Device& d) { As<RadioDevice>(d).TurnCoarse(-3); },
       "A =3505 S =17950"},
      {"ComNavKeepsItsOwn", 120, 4, "4=20000 5=20000",
       [](Device& d) { As<ComNavDevice>(d).Swap(0), As<ComNavDevice>(d).TurnFine(1, -1); },
       "C =21700 S =23450 . =18500 . =27775"},
      {"ComNavWithoutPower", 120, 0, "8=1", [](Device& d) { As<ComNavDevice>(d).Swap(0); },
       "C =21700 S =23450 . =18500 . =27800 ..... 20"},
      {"TransponderWithKeys", 122, 4, "4=7000 6=2",
       [](Device& d) {
         auto& transponder = As<TransponderDevice>(d);
         for (const int key : {8, 4, 5}) transponder.Key(key);
         EXPECT_EQ(transponder.Code(), 7000) << "not before the fourth key";
         for (const int key : {2, 1}) transponder.Key(key);
         transponder.TurnMode(1);
       },
       "X 45 21 F ....... 05"},
      {"DmeTellsNoFrequencyThatNobodySet", 123, 0, "12=10300",
       [](Device& d) { As<DmeDevice>(d).TurnSource(1); }, "S .. D"},
      {"TrimByHandAndByMotor", 140, 0, "5=5000 11=1",
       [](Device& d) { As<TrimDevice>(d).TurnByHand(1); },  // 20 against the motor
       "P =5020 T ... 01", "P =5020 T"},
  };
  for (const auto& c : cases) {
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

TEST(Instruments, KeepTheHalfOf10kHzThatTheSimulatorDoesNotCount) {
  const auto device = MakeDevice({40, 111, 1, 9});
  auto& radio = As<RadioDevice>(*device);
  device->Receive(4, 18500);
  radio.TurnFine(-7);
  radio.Swap();
  const int own = radio.Frequencies().active;
  device->Answer();
  EXPECT_EQ(own % 10, 5);
  for (const auto& [told, shown] : {std::pair{own / 10 * 10, own}, {20000, 20000}}) {
    device->Receive(4, told);
    EXPECT_EQ(radio.Frequencies().active, shown);
  }
}

TEST(Instruments, ShowWhatTheyWereToldWithinTheirScales) {
  const struct {
    int type, command, told;
    int (*shown)(Device&);
    int value;
  } cases[] = {
      {1, 5, 539, [](Device& d) { return *As<NeedleDevice>(d).First(); }, 539},
      {2, 6, 700, [](Device& d) { return *As<NeedleDevice>(d).Display(); }, 700},
      {2, 11, 160, [](Device& d) { return As<NeedleDevice>(d).DisplayControl(); }, 160},
      {3, 6, 700, [](Device& d) { return *As<NeedleDevice>(d).Second(); }, 700},
      {8, 5, 1080, [](Device& d) { return *As<NeedleDevice>(d).Second(); }, 1079},
      {101, 4, -2000, [](Device& d) { return *As<AltimeterDevice>(d).Feet(); }, -2000},
      {106, 5, 945, [](Device& d) { return As<VorDevice>(d).Course(); }, 944},
      {106, 11, 258, [](Device& d) { return static_cast<int>(As<VorDevice>(d).Flag()); }, 2},
      {109, 13, -135, [](Device& d) { return *As<ClockDevice>(d).Temperature(); }, -135},
      {113, 5, 118, [](Device& d) { return As<DmeDevice>(d).Speed(); }, 118},
      {113, 5, -1, [](Device& d) { return As<DmeDevice>(d).Speed(); }, 0},
      {130, 5, 4319, [](Device& d) { return As<RmiDevice>(d).Pointer1(); }, 4319},
      {130, 6, 4320, [](Device& d) { return As<RmiDevice>(d).Pointer2(); }, kParked},
      {124, 5, 60000, [](Device& d) { return As<AutopilotDevice>(d).Altitude(); }, 50000},
      {124, 6, -9900, [](Device& d) { return As<AutopilotDevice>(d).VerticalSpeed(); }, -6000},
  };
  for (const auto& c : cases) {
    const auto device = MakeDevice({40, static_cast<Byte>(c.type), kModel, kVersion});
    device->Receive(c.command, c.told);
    EXPECT_EQ(c.shown(*device), c.value) << c.type << ", " << c.told;
  }
}

TEST(Instruments, AnAutopilotTellsEachTurnOnceAndTheHandRulesBothNumbers) {
  const auto device = MakeDevice({40, 124, kModel, kVersion});
  device->SetTraits({.handRules = true});
  auto& autopilot = As<AutopilotDevice>(*device);
  EXPECT_EQ(device->Answer()[14], 0) << "nothing was turned yet";
  device->Receive(6, -500);
  autopilot.TurnVerticalSpeed(1);
  device->Receive(6, -500);
  EXPECT_EQ(autopilot.VerticalSpeed(), -400);
  EXPECT_EQ(device->Answer()[14], 1);
  EXPECT_EQ(device->Answer()[14], 0);
}

// Between the hand and the next poll the program still sends what it knew before.
TEST(Instruments, HandRulesUntilItWasToldButNotForEver) {
  const auto device = MakeDevice({40, 105, 1, 9, 1});
  device->SetTraits({.handRules = true});
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
  device->SetTraits({});
  heading.TurnBug(1);
  device->Receive(6, 2400);
  EXPECT_EQ(heading.Bug(), 2400) << "a real one shows what it was told last";
}

}  // namespace
}  // namespace tvx::vc
