#include <gtest/gtest.h>

#include "platform/linux/ComPortMap.h"
#include "platform/linux/LinuxSerialDevices.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx {
namespace {

namespace fs = std::filesystem;

// A computer's /dev, /sys and /proc, in a folder.
struct SerialDevicesTest : testing::Test, ScratchFolder {};

TEST_F(SerialDevicesTest, NamesEachAdapterItsUserAndItsState) {
  for (const char* name : {"ttyUSB0", "ttyACM1", "ttyS0", "ttyS1", "tty1", "ttyprintk"})
    Put(std::string("dev/") + name);
  Put("sys/class/tty/ttyS0/type", "4\n");
  Put("sys/class/tty/ttyS1/type", "0\n");
  Put("sys/devices/usb1/1-2/product", "FT232R USB UART\n");
  Put("sys/devices/usb1/1-2/serial", "A50285BI\n");
  fs::create_directories("sys/devices/usb1/1-2/1-2:1.0/ttyUSB0");
  Link(Path() + "/sys/devices/usb1/1-2/1-2:1.0/ttyUSB0", "sys/class/tty/ttyUSB0/device");
  Link("../../ttyUSB0", "dev/serial/by-id/usb-FTDI_A50285BI-if00");
  Put("proc/4711/comm", "minicom\n");
  Link(Path() + "/dev/ttyACM1", "proc/4711/fd/5");
  Link("socket:[1]", "proc/4711/fd/6");

  const auto devices = LinuxSerialDevices(Path()).List();
  ASSERT_EQ(devices.size(), 3u);
  EXPECT_EQ(devices[0].Words(), "/dev/ttyACM1");
  EXPECT_EQ(devices[0].StateWords(), "in use by minicom (4711)");
  EXPECT_EQ(devices[1].path, "/dev/ttyS0");
  EXPECT_EQ(devices[2].stableName, "/dev/serial/by-id/usb-FTDI_A50285BI-if00");
  EXPECT_EQ(devices[2].Words(), "FT232R USB UART, serial A50285BI, /dev/ttyUSB0");
  EXPECT_EQ(devices[2].StateWords(), "free");
  EXPECT_TRUE(LinuxSerialDevices(Path() + "/nowhere").List().empty());
}

// A number leads to an adapter by its path, by its stable name, and by a link to either.
TEST_F(SerialDevicesTest, ComNumbersLeadToAdapters) {
  SerialDevice adapter, other;
  adapter.path = Path() + "/dev/ttyUSB3";
  adapter.stableName = Path() + "/dev/serial/by-id/x";
  other.path = "/dev/ttyUSB7";
  Put(adapter.path);
  Link(adapter.path, adapter.stableName);
  Link(adapter.path, "comports/com6");
  Link(adapter.stableName, "comports/com8");
  Link("comports/com6", "alias");
  Link(Path() + "/alias", "comports/com99");
  Link(Path() + "/gone", "comports/com9");
  const LinuxComPorts numbers;
  EXPECT_EQ(numbers.NumbersOf(adapter), (std::vector<int>{6, 8, 99}));
  EXPECT_EQ(numbers.NumbersOf(other), std::vector<int>{12});
  EXPECT_EQ(numbers.WordsFor(8, {other, adapter}), adapter.path + ", " + adapter.StateWords());
  EXPECT_EQ(numbers.WordsFor(8, {other}), adapter.stableName);
  EXPECT_EQ(numbers.WordsFor(9, {adapter}), "comports/com9 -> " + Path() + "/gone, not there");
  EXPECT_EQ(numbers.WordsFor(0, {adapter}), "");
}

TEST_F(SerialDevicesTest, AssigningPointsTheLink) {
  LinuxSerialDevices devices;
  std::string error;
  SerialDevice device;
  device.path = Path() + "/dev/ttyUSB3";
  ASSERT_TRUE(devices.Assign(5, device, error)) << error;
  EXPECT_EQ(fs::read_symlink("comports/com5"), device.path);
  device.stableName = Path() + "/dev/serial/by-id/x";
  ASSERT_TRUE(devices.Assign(5, device, error)) << error;
  EXPECT_EQ(fs::read_symlink("comports/com5"), device.stableName);
  EXPECT_FALSE(devices.Assign(0, device, error));
  fs::remove_all("comports");
  Put("comports", "a file in the way");
  EXPECT_FALSE(devices.Assign(5, device, error));
  EXPECT_FALSE(error.empty());
}

}  // namespace
}  // namespace tvx
