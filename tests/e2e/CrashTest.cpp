// The program as a process of its own that flies a yoke, and dies.
#include <sys/resource.h>

#include <QFile>
#include <QProcess>
#include <csignal>

#include "ffb/TakenControls.h"
#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

struct CrashTest : testing::Test {
  CrashTest()
      : flight_([](ConfigModel& model) {
          model.General.ComPortYoke1 = 31;
          Calibrate(model.Yoke1, 1, yokeoption::kStandard);
        }),
        yokes_(YokesOf(flight_.Model(), flight_.TheCockpit())) {
    flight_.EndProgram();
  }
  ~CrashTest() override {
    program_.kill();
    program_.waitForFinished();
  }

  // It runs by itself: the start-up file says so.
  void Launch() {
    program_.setChildProcessModifier([] {
      const rlimit none{0, 0};
      setrlimit(RLIMIT_CORE, &none);
    });
    program_.setProcessChannelMode(QProcess::MergedChannels);
    program_.start(QCoreApplication::applicationDirPath() + "/../torvex-control", QStringList{});
    ASSERT_TRUE(program_.waitForStarted());
  }
  bool Ended() const { return program_.state() == QProcess::NotRunning; }
  void Die(int signal) {
    ASSERT_EQ(::kill(static_cast<pid_t>(program_.processId()), signal), 0);
    ASSERT_TRUE(Eventually([this] { return Ended(); }));
  }
  // Both overrides of the simulator's yoke.
  double Taken() {
    return flight_.Dataref("sim/operation/override/override_joystick_roll") +
           flight_.Dataref("sim/operation/override/override_joystick_pitch");
  }
  bool Noted() const { return QFile::exists(QString::fromUtf8(TakenControls::kNote.data())); }

  Flight flight_;
  std::vector<std::unique_ptr<vc::YokeLine>> yokes_;
  QProcess program_;
};

TEST_F(CrashTest, GivesTheControlsBackAndAfterAKillTheNextStartDoes) {
  for (const int signal : {SIGSEGV, SIGABRT, SIGKILL}) {
    SCOPED_TRACE(signal);
    Launch();
    ASSERT_TRUE(Eventually([this] { return Taken() == 2; })) << program_.readAll().toStdString();
    EXPECT_TRUE(Noted());
    Die(signal);
    // A sanitizer reports the fault and ends the program itself.
    EXPECT_TRUE(program_.exitStatus() == QProcess::CrashExit || program_.exitCode() != 0);
    EXPECT_TRUE(Noted());
    EXPECT_TRUE(signal == SIGKILL || Eventually([this] { return Taken() == 0; }));
  }
  EXPECT_EQ(Taken(), 2) << "a kill says nothing";
  // Halted this time: what is given back was not taken anew.
  ConfigModel halted;
  halted.StartDelay = 60;
  ASSERT_TRUE(WriteStartFile(halted, "Flight.cfg"));
  Launch();
  EXPECT_TRUE(Eventually([this] { return Taken() == 0; }));
  EXPECT_TRUE(Eventually([this] { return !Noted(); })) << "the simulator is heard";
  Die(SIGTERM);
  EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
}

}  // namespace
}  // namespace tvx::e2e
