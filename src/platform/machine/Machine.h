// The machine that the program runs on: all that differs from one operating system to another.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/ComPorts.h"
#include "platform/Host.h"
#include "platform/JoystickDevice.h"
#include "platform/KeyInjector.h"
#include "platform/LastWords.h"
#include "platform/SerialDevices.h"
#include "platform/SerialPort.h"

namespace tvx {

// What came of a start in a folder.
enum class FolderStart {
  First,     // the folder is this program's as long as the Machine lives
  Shown,     // another program has it, and has shown itself
  NoAnswer,  // another program has it, and does not answer
};

// For as long as it lives, requests to end the program are heard.
class EndWatch {
 public:
  virtual ~EndWatch() = default;
};

// One to a process. What it makes must not outlive it.
class Machine {
 public:
  virtual ~Machine() = default;

  // Claims a folder, so that one program runs in it, or asks whoever has it to show itself. Waits up to
  // `milliseconds` for a first one that is still starting, or about to end, or does not answer.
  virtual FolderStart ClaimFolder(const std::string& folder, int milliseconds) = 0;
  // What has to be done before there are windows, threads and much memory; after ClaimFolder. Without this
  // call it is done when first needed.
  virtual void BeforeWindows() = 0;
  // Calls `asked` from the event loop whenever a later start in the folder asks this one to show itself.
  virtual void ListenForStarts(std::function<void()> asked) = 0;
  // Calls `ended` from the event loop when the system asks the program to end. Where the system waits for no
  // program that has answered, the answer is held back until `gone` is true, for some seconds at most.
  virtual std::unique_ptr<EndWatch> WatchForEnd(std::function<void()> ended, std::function<bool()> gone) = 0;
  // From now on what LastWords prepared is sent when the program crashes.
  virtual void CatchCrashes() = 0;

  virtual const Clock& Clocks() const = 0;
  // A port that opens COM numbers.
  virtual std::unique_ptr<SerialPort> MakePort() = 0;
  // A port that opens the adapter whose SerialDevice::path `path` tells, whatever COM number is given.
  virtual std::unique_ptr<SerialPort> MakePortTo(std::function<std::string()> path) = 0;
  virtual SerialDevices& Adapters() = 0;
  virtual const ComPorts& Numbers() const = 0;
  virtual std::unique_ptr<KeyInjector> MakeKeys() = 0;
  virtual std::unique_ptr<JoystickDevice> MakeJoysticks() = 0;
  // `target` says where the simulator's datagrams go now. One object at a time.
  virtual std::unique_ptr<LastWords> MakeLastWords(std::function<std::optional<UdpTarget>()> target) = 0;
  // "name (pid)" of the program that is bound to the IPv4 port of UDP; empty where that is not known.
  virtual std::string UserOfUdpPort(std::int32_t port) const = 0;
};

// The one that this program was built for.
std::unique_ptr<Machine> MakeMachine();

}  // namespace tvx
