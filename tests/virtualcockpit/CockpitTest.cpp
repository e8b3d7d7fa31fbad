// The stand-ins on a real socket and a real pseudo-terminal.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <filesystem>

#include "Bytes.h"
#include "config/ConfigFile.h"
#include "platform/WaitUntil.h"
#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/Options.h"
#include "virtualcockpit/devices/NeedleDevice.h"

namespace tvx::vc {
namespace {

namespace fs = std::filesystem;
using test::Bytes;

class CockpitTest : public testing::Test {
 protected:
  CockpitTest() {
    model_.General.ComPortGS = 9;
    model_.Gauges[10].GaugeType = 4;
    model_.Gauges[10].GaugeSetting1 = 1;
    model_.Gauges[10].GaugeSetting2 = 12;
    model_.Functions[200].ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    model_.Functions[200].FullName = "#1:some/thing/new\r\n#2:some/array[3]\r\nno line\r\n";
    folder_ = files_.path().toStdString();
    link_ = folder_ + "/comports/com9";
  }
  Cockpit::Settings Settings() const { return {0, folder_, true}; }

  QTemporaryDir files_;
  ConfigModel model_;
  std::string folder_, link_;
};

TEST_F(CockpitTest, AnswersOverTheLinkAndTakesItAwayAtTheEnd) {
  Cockpit cockpit(model_, Settings());
  ASSERT_TRUE(cockpit.Start()) << cockpit.GaugeLine().Line().LastError();
  EXPECT_EQ(fs::read_symlink(link_), cockpit.GaugeLine().Line().Device());
  const int handle = ::open(link_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  ASSERT_GE(handle, 0);
  // Every byte value passes both ways unchanged: a position of 0x3FF, and the answer's zeros and 0xFF.
  const Bytes frames{0, 10, 0x5B, 0xFF, 0x03, 0xFF, 0, 10, 0x78, 0x01, 0x02, 0xFF};
  ASSERT_EQ(::write(handle, frames.data(), frames.size()), static_cast<ssize_t>(frames.size()));
  Bytes reply;
  EXPECT_TRUE(WaitUntil([&] {
    Byte buffer[64];
    const ssize_t count = ::read(handle, buffer, sizeof buffer);
    if (count > 0) reply.insert(reply.end(), buffer, buffer + count);
    return reply.size() >= kReplySize;
  }));
  EXPECT_EQ(reply.size(), kReplySize);
  EXPECT_EQ(reply.back(), 0xFF);
  EXPECT_EQ(dynamic_cast<NeedleDevice&>(*cockpit.Gauges().Find(10)).First(), 0x3FF);
  ::close(handle);
  cockpit.Stop();
  EXPECT_FALSE(fs::is_symlink(link_));
}

TEST_F(CockpitTest, NeverTakesALinkThatLeadsToARealDevice) {
  fs::create_directories(folder_ + "/comports");
  fs::create_symlink("/dev/ttyUSB7", link_);
  {
    Cockpit cockpit(model_, Settings());
    EXPECT_TRUE(cockpit.Start());
    EXPECT_TRUE(cockpit.GaugeLine().Line().Link().empty());
    EXPECT_FALSE(cockpit.GaugeLine().Line().LastError().empty());
  }
  EXPECT_EQ(fs::read_symlink(link_), "/dev/ttyUSB7");
  fs::remove(link_);
  // One that a crashed run left behind is taken; one that another cockpit has taken over since then stays.
  fs::create_symlink("/dev/pts/99999", link_);
  Cockpit first(model_, Settings());
  ASSERT_TRUE(first.Start());
  Cockpit second(model_, Settings());
  ASSERT_TRUE(second.Start());
  first.Stop();
  EXPECT_EQ(fs::read_symlink(link_), second.GaugeLine().Line().Device());
}

TEST_F(CockpitTest, AStoppedSimulatorForgetsAndReturnsToItsPortWhichNoSecondOneGets) {
  Cockpit cockpit(model_, Settings());
  ASSERT_TRUE(cockpit.Start());
  SimulatorService& simulation = cockpit.Simulation();
  const std::uint16_t port = simulation.Port();
  cockpit.Sim().OnDatagram(test::SubscribeTo("some/array[3]", 20, 5), {0x7F000001, 9});
  EXPECT_EQ(cockpit.Sim().Subscriptions(), 1u);
  simulation.Stop();
  EXPECT_EQ(cockpit.Sim().Subscriptions(), 0u);
  ASSERT_TRUE(simulation.Return());
  EXPECT_EQ(simulation.Port(), port);
  SimulatorService second;
  EXPECT_FALSE(second.Start(port));
  EXPECT_NE(second.LastError().find("in use"), std::string::npos) << second.LastError();
}

TEST_F(CockpitTest, ConfigurationsThatAreNoneAreToldInWords) {
  ConfigModel model;
  std::string error;
  EXPECT_FALSE(LoadConfiguration(folder_ + "/missing.cfg", model, error));
  EXPECT_NE(error.find("missing.cfg"), std::string::npos);
  error.clear();
  EXPECT_TRUE(LoadConfiguration(TVX_SOURCE_DIR "/demo/Default.cfg", model, error)) << error;
  const Cockpit cockpit(model, Settings());
  EXPECT_GE(const_cast<Cockpit&>(cockpit).Gauges().Devices().size(), 12u);
}

TEST(Options, TakesWhatIsSensibleAndNamesWhatIsNot) {
  Options options;
  std::string error;
  EXPECT_TRUE(ParseOptions({"--config", "a.cfg", "--port", "0", "--speed", "2.5", "--print", "--seconds",
                            "30", "--screenshot", "b.png", "--folder", "demo"},
                           options, error));
  EXPECT_EQ(options.config, "a.cfg");
  EXPECT_EQ(options.port, 0);
  EXPECT_EQ(options.speed, 2.5);
  EXPECT_EQ(options.seconds, 30);
  using Words = std::vector<std::string>;
  const Words wrong[] = {{"--port"},         {"--port", "65536"}, {"--port", "x"},    {"--port", "1 "},
                         {"--speed", "nan"}, {"--speed", "0"},    {"--seconds", "0"}, {"--config", ""},
                         {"--what"},         {"file.cfg"}};
  for (const Words& bad : wrong) {
    error.clear();
    EXPECT_FALSE(ParseOptions(bad, options, error));
    EXPECT_NE(error.find(bad[0]), std::string::npos);
  }
}

}  // namespace
}  // namespace tvx::vc
