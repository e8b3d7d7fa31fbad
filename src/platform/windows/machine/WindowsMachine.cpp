#include "platform/windows/machine/WindowsMachine.h"

#include <utility>

#include "platform/TtyPort.h"
#include "platform/sdl/SdlJoystick.h"
#include "platform/windows/EndRequests.h"
#include "platform/windows/FaultWords.h"
#include "platform/windows/PortOwner.h"
#include "platform/windows/SendInputKeys.h"
#include "platform/windows/machine/QtHandleWatcher.h"
#include "platform/windows/serial/CommTty.h"

namespace tvx {
namespace {

std::unique_ptr<HandleWatcher> NewWatcher() {
  return std::make_unique<QtHandleWatcher>();
}

}  // namespace

std::unique_ptr<Machine> MakeMachine() {
  return std::make_unique<WindowsMachine>();
}

FolderStart WindowsMachine::ClaimFolder(const std::string& folder, int milliseconds) {
  return lock_.TakeOrAsk(folder, milliseconds);
}

void WindowsMachine::ListenForStarts(std::function<void()> asked) {
  lock_.Listen(NewWatcher(), std::move(asked));
}

std::unique_ptr<EndWatch> WindowsMachine::WatchForEnd(std::function<void()> ended,
                                                      std::function<bool()> gone) {
  return std::make_unique<EndRequests>(std::move(ended), std::move(gone));
}

void WindowsMachine::CatchCrashes() {
  FaultWords::CatchFaults();
}

std::unique_ptr<SerialPort> WindowsMachine::MakePort(std::function<std::string(int)> resolve) {
  const auto open = [this](const std::string& name, SerialReset reset) { return ports_.Open(name, reset); };
  return std::make_unique<TtyPort>(std::make_unique<CommTty>(open, NewWatcher, std::move(resolve)));
}

std::unique_ptr<SerialPort> WindowsMachine::MakePort() {
  return MakePort(ComName);
}

std::unique_ptr<SerialPort> WindowsMachine::MakePortTo(std::function<std::string()> path) {
  return MakePort([path = std::move(path)](int) { return path(); });
}

std::unique_ptr<KeyInjector> WindowsMachine::MakeKeys() {
  return std::make_unique<SendInputKeys>();
}

std::unique_ptr<JoystickDevice> WindowsMachine::MakeJoysticks() {
  return std::make_unique<SdlJoystick>();
}

std::unique_ptr<LastWords> WindowsMachine::MakeLastWords(std::function<std::optional<UdpTarget>()> target) {
  return std::make_unique<FaultWords>(std::move(target));
}

std::string WindowsMachine::UserOfUdpPort(std::int32_t port) const {
  return OwnerOfUdpPort(port);
}

}  // namespace tvx
