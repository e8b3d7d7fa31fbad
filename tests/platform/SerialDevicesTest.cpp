#include <unistd.h>

#include "platform/linux/serial/ComPortMap.h"
#include "platform/linux/serial/LinuxSerialDevices.h"
#include "tests/Test.h"
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
  Link("../../ttyUSB0", "dev/serial/by-path/pci-0000:00:14.0-usbv2-0:2:1.0-port0");
  Link("../../ttyUSB0", "dev/serial/by-path/pci-0000:00:14.0-usb-0:2:1.0-port0");
  fs::create_directories("proc/1/fd");
  Put("proc/4711/comm", "minicom\n");
  fs::create_hard_link("dev/ttyACM1", "dev/under-another-name");
  Link(Path() + "/dev/under-another-name", "proc/4711/fd/5");
  Link("socket:[1]", "proc/4711/fd/6");

  const auto devices = LinuxSerialDevices(Path()).List();
  ASSERT_EQ(devices.size(), 3u);
  EXPECT_EQ((Texts{devices[0].Words(), devices[0].StateWords(), devices[1].byName, devices[1].bySocket,
                   devices[1].Words(), devices[1].StateWords()}),
            (Texts{"/dev/ttyACM1", "in use by minicom (4711)", "/dev/serial/by-id/usb-FTDI_A50285BI-if00",
                   "/dev/serial/by-path/pci-0000:00:14.0-usb-0:2:1.0-port0",
                   "FT232R USB UART, serial A50285BI, /dev/ttyUSB0", "free"}));
  EXPECT_EQ(devices[2].path, "/dev/ttyS0") << "what is plugged in comes first";
  EXPECT_TRUE(LinuxSerialDevices(Path() + "/nowhere").List().empty());
}

// A number leads to an adapter by its path, by its stable name, and by a link to either.
TEST_F(SerialDevicesTest, ComNumbersLeadToAdapters) {
  SerialDevice adapter, other;
  adapter.path = Path() + "/dev/ttyUSB3";
  adapter.byName = Path() + "/dev/serial/by-id/x";
  other.path = "/dev/ttyUSB7";
  Put(adapter.path);
  Link(adapter.path, adapter.byName);
  Link(adapter.path, "comports/com6");
  Link(adapter.byName, "comports/com8");
  Link("comports/com6", "alias");
  Link(Path() + "/alias", "comports/com99");
  Link(Path() + "/gone", "comports/com9");
  const LinuxComPorts numbers;
  EXPECT_EQ(numbers.NumbersOf(adapter), (std::vector<int>{6, 8, 99}));
  EXPECT_EQ(numbers.NumbersOf(other), std::vector<int>{12});
  EXPECT_EQ(numbers.WordsFor(8, {other, adapter}),
            adapter.path + ", " + adapter.StateWords() + ", also COM 6, also COM 99");
  EXPECT_EQ(numbers.PathOf(8), numbers.PathOf(99));
  EXPECT_EQ(numbers.PathOf(9), "");
  EXPECT_EQ(numbers.WordsFor(8, {other}), adapter.byName);
  EXPECT_EQ(numbers.WordsFor(9, {adapter}), "comports/com9 -> " + Path() + "/gone, not there");
  EXPECT_EQ(numbers.WordsFor(0, {adapter}), "");
}

TEST_F(SerialDevicesTest, EveryUserIsNamedAndFreeIsSaidOnlyWhereNobodyIsHidden) {
  Put("dev/ttyUSB0");
  const auto state = [this] { return LinuxSerialDevices(Path()).List().at(0).StateWords(); };
  EXPECT_EQ(state(), "not in use by any program of yours") << "the others are hidden";
  const auto use = [this](const std::string& pid, const char* name) {
    Put("proc/" + pid + "/comm", name);
    Link(Path() + "/dev/ttyUSB0", "proc/" + pid + "/fd/3");
    Link(Path() + "/dev/ttyUSB0", "proc/" + pid + "/fd/4");
  };
  fs::create_directories("proc/1/fd");
  use("70", "torvex-line\n");
  EXPECT_EQ(state(), "in use by torvex-line (70)") << "left over from a program that ended";
  use(std::to_string(getpid()), "torvex-control\n");
  EXPECT_EQ(state(), "in use by this program");
  use("4711", "minicom\n");
  EXPECT_TRUE(Holds(state(), "minicom (4711)"));
  EXPECT_TRUE(Holds(state(), "bytes get lost"));
}

TEST_F(SerialDevicesTest, AdaptersThatSayTheSameOfThemselvesAreToldApartByTheirSockets) {
  const struct {
    const char *name, *socket, *product, *serial, *line;
    bool twin;
  } adapters[] = {{"ttyUSB0", "1-1", "Quad", "A1", "00", false},
                  {"ttyUSB1", "1-1", "Quad", "A1", "01", false},
                  {"ttyUSB2", "1-2", "Single", "", "00", true},
                  {"ttyUSB3", "1-3", "Single", "", "00", true},
                  {"ttyUSB4", "1-4", "Single", "B", "00", false}};
  for (const auto& adapter : adapters) {
    const std::string usb = std::string("sys/devices/usb1/") + adapter.socket;
    const std::string line = usb + "/" + adapter.socket + ":1." + adapter.line;
    Put(std::string("dev/") + adapter.name);
    Put(usb + "/product", adapter.product);
    Put(usb + "/serial", adapter.serial);
    Put(line + "/bInterfaceNumber", adapter.line);
    fs::create_directories(line + "/" + adapter.name);
    Link(Path() + "/" + line + "/" + adapter.name, std::string("sys/class/tty/") + adapter.name + "/device");
    Link(std::string("../../") + adapter.name, std::string("dev/serial/by-path/usb-") + adapter.name);
    Link(std::string("../../") + adapter.name,
         std::string("dev/serial/by-id/") + adapter.product + adapter.serial + adapter.line);
  }
  const auto devices = LinuxSerialDevices(Path()).List();
  ASSERT_EQ(devices.size(), std::size(adapters));
  for (std::size_t i = 0; i < devices.size(); ++i) {
    EXPECT_EQ(devices[i].twin, adapters[i].twin) << devices[i].path;
    EXPECT_EQ(devices[i].LastingName().find("by-path") != std::string::npos, adapters[i].twin)
        << devices[i].path;
  }
}

TEST_F(SerialDevicesTest, AssigningPointsTheLink) {
  LinuxSerialDevices devices;
  std::string error;
  SerialDevice device;
  device.path = Path() + "/dev/ttyUSB3";
  ASSERT_TRUE(devices.Assign(1, device, error)) << error;
  EXPECT_EQ(fs::read_symlink("comports/com1"), device.path);
  device.byName = Path() + "/dev/serial/by-id/x";
  ASSERT_TRUE(devices.Assign(5, device, error)) << error;
  EXPECT_EQ(fs::read_symlink("comports/com5"), device.byName);
  EXPECT_FALSE(devices.Assign(0, device, error));
  fs::remove_all("comports");
  Put("comports", "a file in the way");
  EXPECT_FALSE(devices.Assign(5, device, error));
  EXPECT_FALSE(error.empty());
}

}  // namespace
}  // namespace tvx
