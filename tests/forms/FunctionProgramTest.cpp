#include "forms/FormsRig.h"

namespace tvx {
namespace {

// The program's own way to both forms, and out of them.
class FunctionsFromTheProgram : public FormsTest {};

TEST_F(FunctionsFromTheProgram, TheConfigurationOpensBothForms) {
  Begin();
  Control<QPushButton>(Start(), "CmdConfigure")->click();
  Settle();
  ASSERT_NE(Configuration(), nullptr);
  Control<QPushButton>(Configuration(), "cmdGetOffset")->click();
  ASSERT_NE(program_->Functions().Editor(), nullptr);
  EXPECT_TRUE(program_->Functions().Editor()->isModal());
  program_->Functions().Editor()->close();
  Settle();
  EXPECT_EQ(program_->Functions().Editor(), nullptr);
  Control<QPushButton>(Configuration(), "cmdTestXplaneInterface")->click();
  ASSERT_NE(program_->Functions().Console(), nullptr);
  Control<QPushButton>(program_->Functions().Console(), "cmdStartUDP")->click();
  EXPECT_NE(program_->Sim().UdpMonitorMode, 0);
  program_->Exit();
  Settle();
  EXPECT_EQ(program_->Sim().UdpMonitorMode, 0) << "ending the program must give the link back";
  EXPECT_FALSE(program_->Sim().UdpOpen());
}

}  // namespace
}  // namespace tvx
