#include <QTemporaryDir>

#include "tests/Test.h"
#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/Options.h"

namespace tvx::vc {
namespace {

namespace fs = std::filesystem;
TEST(Cockpit, NeverTakesALinkThatLeadsToARealDevice) {
  const QTemporaryDir files;
  const std::string folder = files.path().toStdString(), link = folder + "/comports/com9";
  ConfigModel model;
  model.General.ComPortGS = 9;
  fs::create_directories(folder + "/comports");
  fs::create_symlink("/dev/ttyUSB7", link);
  {
    Cockpit cockpit(model, {0, folder, true});
    EXPECT_TRUE(cockpit.Start());
    EXPECT_FALSE(cockpit.GaugeLine().Line().LastError().empty());
  }
  EXPECT_EQ(fs::read_symlink(link), "/dev/ttyUSB7");
  fs::remove(link);
  // One that a crashed run left behind is taken; one that another cockpit has taken over since then stays.
  fs::create_symlink("/dev/pts/99999", link);
  Cockpit first(model, {0, folder, true}), second(model, {0, folder, true});
  ASSERT_TRUE(first.Start());
  ASSERT_TRUE(second.Start());
  first.Stop();
  EXPECT_EQ(fs::read_symlink(link), second.GaugeLine().Line().Device());
  second.Stop();
  EXPECT_FALSE(fs::is_symlink(link));
}

TEST(Cockpit, LeavesItsSimulatorOffUntilItIsSwitchedOn) {
  const ConfigModel model;
  Cockpit other(model, {0, ".", false});
  ASSERT_TRUE(other.Start());
  const int taken = other.Simulation().Port();  // as by a real simulator on this computer
  Cockpit cockpit(model, {taken, ".", false, Traits::Default(), false});
  EXPECT_TRUE(cockpit.Start());
  EXPECT_FALSE(cockpit.Simulation().Present());
  other.Stop();
  EXPECT_TRUE(cockpit.Simulation().Return());
  EXPECT_EQ(cockpit.Simulation().Port(), taken);
}

TEST(Options, TakesWhatIsSensibleAndNamesWhatIsNot) {
  Options options;
  QString error;
  EXPECT_TRUE(ParseOptions({"vc", "--config", "a.cfg", "--port", "0", "--speed", "2.5", "--print",
                            "--seconds", "30", "--screenshot", "b.png", "--folder", "demo"},
                           options, error));
  EXPECT_EQ((std::tuple{options.speed, options.port, options.folder}), (std::tuple{2.5, 0, "demo"}));
  const QStringList wrong[] = {{"--port"},
                               {"--port", "65536"},
                               {"--port", "x"},
                               {"--port", "1 "},
                               {"--speed", "nan"},
                               {"--speed", "0"},
                               {"--seconds", "0"},
                               {"--config", ""},
                               {"--replay"},
                               {"--what"},
                               {"--behaviour", "odd"},
                               {"file.cfg"},
                               {"--without", "yokes,wings"},
                               {"--without", "instruments,units,controls"}};
  for (const QStringList& bad : wrong) {
    error.clear();
    EXPECT_FALSE(ParseOptions(QStringList("vc") + bad, options, error));
    EXPECT_TRUE(error.contains(QString(bad[0]).remove("--"))) << error.toStdString();
  }
  options = {};
  EXPECT_FALSE(ParseOptions({"vc", "--help", "-platform", "offscreen"}, options, error));
  EXPECT_TRUE(options.help) << "also beside words that only Qt knows";
}

}  // namespace
}  // namespace tvx::vc
