#include "platform/linux/machine/LinuxMachine.h"

#include <utility>

#include "platform/TtyPort.h"
#include "platform/linux/CrashWords.h"
#include "platform/linux/JoystickAccess.h"
#include "platform/linux/KeyInjectors.h"
#include "platform/linux/TerminationSignals.h"
#include "platform/linux/UdpPortUser.h"
#include "platform/linux/serial/KeptTty.h"
#include "platform/qt/QtFdWatcher.h"
#include "platform/sdl/SdlJoystick.h"

namespace tvx {
namespace {

std::unique_ptr<FdWatcher> NewWatcher() {
  return std::make_unique<QtFdWatcher>();
}

}  // namespace

std::unique_ptr<Machine> MakeMachine() {
  return std::make_unique<LinuxMachine>();
}

FolderStart LinuxMachine::ClaimFolder(const std::string& folder, int milliseconds) {
  switch (claim_.TakeOrAsk(folder, milliseconds)) {
    case FolderClaim::Start::First:
      return FolderStart::First;
    case FolderClaim::Start::Shown:
      return FolderStart::Shown;
    case FolderClaim::Start::NoAnswer:
      break;
  }
  return FolderStart::NoAnswer;
}

void LinuxMachine::ListenForStarts(std::function<void()> asked) {
  claim_.Listen(NewWatcher(), std::move(asked));
}

std::unique_ptr<EndWatch> LinuxMachine::WatchForEnd(std::function<void()> ended, std::function<bool()>) {
  return std::make_unique<TerminationSignals>(NewWatcher(), std::move(ended));
}

void LinuxMachine::CatchCrashes() {
  CrashWords::CatchFatalSignals();
}

LineKeepers& LinuxMachine::Keepers() {
  if (!keepers_) {
    lines_ = std::make_unique<LineServer>();
    keepers_ = std::make_unique<LineKeepers>(*lines_, NewWatcher);
  }
  return *keepers_;
}

std::unique_ptr<SerialPort> LinuxMachine::MakePort() {
  return std::make_unique<TtyPort>(std::make_unique<KeptTty>(Keepers()));
}

std::unique_ptr<SerialPort> LinuxMachine::MakePortTo(std::function<std::string()> path) {
  return std::make_unique<TtyPort>(std::make_unique<KeptTty>(Keepers(), [path = std::move(path)](int) {
    const std::string device = path();
    return ComPortTarget{device, device, true, false};
  }));
}

std::unique_ptr<KeyInjector> LinuxMachine::MakeKeys() {
  return MakeKeyInjector();
}

std::unique_ptr<JoystickDevice> LinuxMachine::MakeJoysticks() {
  return std::make_unique<SdlJoystick>([] { return UnreadableJoystick(); });
}

std::unique_ptr<LastWords> LinuxMachine::MakeLastWords(std::function<std::optional<UdpTarget>()> target) {
  return std::make_unique<CrashWords>(std::move(target));
}

std::string LinuxMachine::UserOfUdpPort(std::int32_t port) const {
  return tvx::UserOfUdpPort(port);
}

}  // namespace tvx
