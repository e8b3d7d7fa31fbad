#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

using ProgramTest = FormsTest;

// A question about a file stands while the program is ended: what goes on behind it opens nothing again.
TEST_F(ProgramTest, EndingBehindAQuestionLeavesNothingOpen) {
  Configured([](ConfigModel& foreign) { foreign.General.ConfigHeader = "made by something else"; });
  boxes_.whileAsking = [this] { program_->Exit(); };
  Begin();
  EXPECT_FALSE(boxes_.asked.empty());
  EXPECT_TRUE(program_->Ended());
  EXPECT_EQ(Start(), nullptr);
  program_->Start().WaitForAutostart_Tick();
  EXPECT_EQ(Status(), nullptr);
}

TEST_F(ProgramTest, EndingGivesTheConsolesLinkBack) {
  Click(Configure(), "cmdTestXplaneInterface");
  Click(program_->Functions().Console(), "cmdStartUDP");
  EXPECT_TRUE(program_->Sim().UdpMonitorMode());
  program_->Exit();
  Settle();
  EXPECT_FALSE(program_->Sim().UdpMonitorMode());
  EXPECT_FALSE(program_->Sim().UdpOpen());
}

}  // namespace
}  // namespace tvx
