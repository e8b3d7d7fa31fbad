#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <string_view>

#include "app/Program.h"
#include "base/Version.h"
#include "platform/machine/Machine.h"
#include "ui/Look.h"

namespace {

constexpr int kAnswerMs = 2000;

// The second start in a folder: two programs would take the hardware and the simulator's port from each
// other.
int SaySecond(tvx::FolderStart start, int argc, char** argv) {
  if (start == tvx::FolderStart::Shown) {
    std::fputs("torvex-control runs in this folder already; it has been brought to the front.\n", stderr);
    return 0;
  }
  const char* text = "torvex-control runs in this folder already, but does not answer. End that one first.";
  std::fprintf(stderr, "%s\n", text);
  QApplication application(argc, argv);
  QMessageBox::warning(nullptr, QApplication::translate("main", "Torvex control"),
                       QApplication::translate("main", text));
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "--version") {
    std::printf("torvex-control %s\n", std::string(tvx::kProgramVersion).c_str());
    return 0;
  }
  const auto machine = tvx::MakeMachine();
  const auto start = machine->ClaimFolder(".", kAnswerMs);
  if (start != tvx::FolderStart::First) return SaySecond(start, argc, argv);
  machine->BeforeWindows();
  QApplication application(argc, argv);
  tvx::look::FollowDesktop();
  tvx::look::Apply(application, tvx::look::Theme::Dark);
  tvx::Program program(nullptr, nullptr, nullptr, machine.get());
  machine->ListenForStarts([&program] { program.ShowItself(); });
  const auto termination =
      machine->WatchForEnd([&program] { program.Exit(); }, [&program] { return program.Gone(); });
  machine->CatchCrashes();
  program.Begin();
  return program.Ended() ? 0 : QApplication::exec();
}
