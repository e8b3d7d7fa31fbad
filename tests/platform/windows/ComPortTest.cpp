// Real COM ports: pseudo-terminals that packaging/windows/echo-ports keeps, and that wine shows as COM ports.
// COM 21 sends back what it hears; "SET?" is answered with its settings, and after "PULL" it goes away for a
// while.
#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/TtyPort.h"
#include "platform/windows/serial/ComDevices.h"
#include "platform/windows/serial/ComNumbers.h"
#include "platform/windows/serial/CommPorts.h"
#include "platform/windows/serial/CommTty.h"
#include "tests/platform/windows/SystemLoop.h"

namespace tvx::test {
namespace {

constexpr int kEcho = 21, kMissing = 77;

struct RealComPort : testing::Test {
  RealComPort() {
    handler_ = port_.SetHandler([this](SerialEvent event) {
      if (event != SerialEvent::Received) return;
      std::array<Byte, 4096> bytes{};
      const std::size_t count = port_.Read(bytes);
      heard_.append(reinterpret_cast<const char*>(bytes.data()), count);
    });
  }
  bool OpenAgain(SerialReset reset = SerialReset::No) {
    port_.Open(kEcho, reset);
    return Eventually([&] { return port_.State() != SerialState::Opening; }) && port_.IsOpen();
  }
  bool Say(std::string_view text) {
    return port_.Write({reinterpret_cast<const Byte*>(text.data()), text.size()});
  }
  bool Hears(const std::string& text) {
    const bool heard = Eventually([&] { return heard_.size() >= text.size(); }) && heard_ == text;
    if (!heard) ADD_FAILURE() << "heard " << heard_.size() << " bytes of " << text.size();
    heard_.clear();
    return heard;
  }

  CommPorts ports_;
  TtyPort port_{std::make_unique<CommTty>(
      [this](const std::string& name, SerialReset reset) { return ports_.Open(name, reset); }, NewLoopWatcher,
      ComName)};
  Registration handler_;
  std::string heard_;
};

TEST_F(RealComPort, CarriesEveryByteBothWays) {
  ASSERT_TRUE(OpenAgain());
  EXPECT_EQ(port_.Device(), "COM21");
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  for (int round = 0; round < 20; ++round) {
    ASSERT_TRUE(Say(all));
    ASSERT_TRUE(Hears(all)) << round;
  }
  ASSERT_TRUE(Say("SET?"));
  EXPECT_TRUE(Hears("38400 8N2 raw\n"));
}

TEST_F(RealComPort, OpensAgainAtOnce) {
  for (int i = 0; i < 10; ++i) {
    ASSERT_TRUE(OpenAgain(i % 2 == 0 ? SerialReset::No : SerialReset::Yes)) << i;
    ASSERT_TRUE(Say("hello"));
    ASSERT_TRUE(Hears("hello"));
  }
  port_.Open(kEcho);
  port_.Close();  // in the middle of it
  EXPECT_EQ(port_.State(), SerialState::Closed);
  EXPECT_TRUE(OpenAgain());
}

TEST_F(RealComPort, SeesThatItIsPulledAndComesBack) {
  ASSERT_TRUE(OpenAgain());
  ASSERT_TRUE(Say("PULL"));
  ASSERT_TRUE(Eventually([&] { return port_.State() == SerialState::Unplugged; }));
  ASSERT_TRUE(Eventually([&] { return OpenAgain(); }));
  ASSERT_TRUE(Say("back"));
  EXPECT_TRUE(Hears("back"));
}

TEST_F(RealComPort, WhatIsNotThereIsNotFound) {
  port_.Open(kMissing);
  EXPECT_TRUE(Eventually([&] { return port_.State() == SerialState::NotFound; }));
  const ComNumbers numbers;
  EXPECT_EQ(numbers.DeviceOf(kMissing), "COM77, not there");
  EXPECT_EQ(numbers.PathOf(kMissing), "");
  EXPECT_EQ(numbers.DeviceOf(0), "");
  SerialDevice adapter;
  adapter.path = "COM21";
  EXPECT_EQ(numbers.NumbersOf(adapter), std::vector<int>{21});
}

TEST(ComDevices, AreNamedByWhatWindowsSaysOfThem) {
  struct Case {
    PortEntry entry;
    const char* words;
  };
  for (const Case& c : {
           Case{{"COM5", "USB Serial Port (COM5)", "FTDIBUS\\VID_0403+PID_6001+A50285BIA\\0000"},
                "USB Serial Port, serial A50285BIA, COM5"},
           Case{{"COM6", "Arduino Uno (COM6)", "USB\\VID_2341&PID_0043\\85736323838351F0C1A1"},
                "Arduino Uno, serial 85736323838351F0C1A1, COM6"},
           Case{{"COM7", "USB-SERIAL CH340 (COM7)", "USB\\VID_1A86&PID_7523\\5&2C3A1B2&0&3"},
                "USB-SERIAL CH340, COM7"},
           Case{{"COM8", "Odd name", "FTDIBUS\\VID_0403+PID_6001\\0000"}, "Odd name, COM8"},
           Case{{"COM1", "Communications Port (COM1)", "ACPI\\PNP0501\\1"}, "Communications Port, COM1"},
           Case{{"COM10", "", ""}, "COM10"},
       }) {
    const SerialDevice device = DeviceOf(c.entry);
    EXPECT_EQ(device.Words(), c.words);
    EXPECT_EQ(device.StateWords(), "plugged in");
    EXPECT_EQ(device.LastingName(), device.path);
  }
  SerialDevice device;
  device.path = "COM5";
  std::string error;
  EXPECT_FALSE(ComDevices().Assign(6, device, error));
  EXPECT_TRUE(ComDevices().Assign(5, device, error)) << "so it is";
  EXPECT_NE(error.find("Device Manager"), std::string::npos);
}

}  // namespace
}  // namespace tvx::test
