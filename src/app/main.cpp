#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <string_view>

#include "app/Program.h"
#include "app/TerminationSignals.h"
#include "base/Version.h"
#include "platform/linux/CrashWords.h"
#include "platform/linux/FolderClaim.h"
#include "platform/qt/QtFdWatcher.h"
#include "ui/Look.h"

namespace {

constexpr int kAnswerMs = 2000;

// The second start in a folder: two programs would take the hardware and the simulator's port from each
// other.
int SaySecond(tvx::FolderClaim::Start start, int argc, char** argv) {
  if (start == tvx::FolderClaim::Start::Shown) {
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
  tvx::FolderClaim claim;
  const auto start = claim.TakeOrAsk(".", kAnswerMs);
  if (start != tvx::FolderClaim::Start::First) return SaySecond(start, argc, argv);
  tvx::LineServer lines;  // before windows and threads: it is split off from this process
  QApplication application(argc, argv);
  tvx::look::FollowDesktop();
  tvx::look::Apply(application, tvx::look::Theme::Dark);
  tvx::Program program(nullptr, nullptr, nullptr, &lines);
  claim.Listen(std::make_unique<tvx::QtFdWatcher>(), [&program] { program.ShowItself(); });
  const tvx::TerminationSignals termination([&program] { program.Exit(); });
  tvx::CrashWords::CatchFatalSignals();  // behind the line server, which is no part of it
  program.Begin();
  return program.Ended() ? 0 : QApplication::exec();
}
