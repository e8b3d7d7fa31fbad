// The real program without a screen, pressed by commands, that tells how long its window would have stood
// still.
#include <QApplication>
#include <QTextStream>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>

#include "app/Program.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeKeyInjector.h"

namespace {

using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Runs the event loop for a while; returns the longest time that it did not come round.
double Spin(int milliseconds) {
  double longest = 0;
  const auto start = Clock::now();
  auto last = start;
  QTimer beat;
  beat.start(1);
  while (MsSince(start) < milliseconds) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    longest = std::max(longest, MsSince(last));
    last = Clock::now();
  }
  return longest;
}

void Press(tvx::Program& program, const std::string& command) {
  if (command == "run") program.Run().cmdRun_Click();
  if (command == "stop") program.Run().cmdStop_Click();
  if (command == "configure") program.Run().CmdConfig_Click();
  if (command == "ok") program.Start().butOK_Click();
  if (command == "exit") program.Exit();
}

}  // namespace

// Commands on standard input, one a line: run, stop, configure, ok, exit, or a number of milliseconds to let
// pass. After each a line: what the press took, the longest pause since, and how the gauge bus stands.
int main(int argc, char** argv) {
  const auto machine = tvx::MakeMachine();
  machine->BeforeWindows();
  QApplication application(argc, argv);
  tvx::FakeMessageBoxes boxes;
  tvx::FakeKeyInjector keys;
  tvx::Program program(&boxes, &keys, nullptr, machine.get());
  program.Begin();
  Spin(500);
  for (std::string line; !program.Ended() && std::getline(std::cin, line);) {
    const auto start = Clock::now();
    const bool wait = !line.empty() && line.find_first_not_of("0123456789") == std::string::npos;
    if (!wait) Press(program, line);
    const double press = MsSince(start);
    const double pause = Spin(wait ? std::stoi(line) : 200);
    const int com = program.HardwareBus().Ports().ComNumber(tvx::HardwareGroup::GaugeBus);
    std::printf("%-10s press %7.1f ms, longest pause %7.1f ms; %s\n", line.c_str(), press, pause,
                com > 0 ? program.HardwareBus().LineWords().c_str() : "no gauge bus");
    std::fflush(stdout);
  }
  for (const std::string& text : boxes.shown) std::printf("box: %s\n", text.c_str());
  return 0;
}
