// One serial port, as the hardware's handlers see it.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "base/Bytes.h"
#include "base/Registration.h"

namespace tvx {

// What a port's event handler is told.
enum class SerialEvent : int {
  Received = 2,    // at least the threshold's number of bytes is waiting
  Break = 1001,    // a break on the line
  Framing = 1004,  // a byte with a framing error
};

// How a port stands, for the words that the status form shows.
enum class SerialState {
  Closed,   // not opened, or closed by the program
  Opening,  // asked for; the device has not answered yet
  Open,
  NotFound,      // no such device
  NoPermission,  // the device is there, the user may not open it
  Busy,          // another program holds it
  Failed,        // the device refused the settings, or is no serial device
  NoHelper,      // the process that would open the device cannot be started, or has been ended
  Unplugged,     // it was open and went away
};

// Closing drops an adapter's modem lines (DTR, RTS), and that resets what hangs on it.
enum class SerialReset { No, Yes };

// Settings are always 38400 baud, 8 data bits, no parity, 2 stop bits, no handshake, every byte 0..255 kept.
// No operation ever waits: with a port that is slow, full, stuck or gone it fails.
class SerialPort {
 public:
  // Called from the event loop. The handler reads with Read(). While at least `threshold` bytes are still
  // waiting after a handler that read something, it is called again.
  using Handler = std::function<void(SerialEvent)>;

  virtual ~SerialPort() = default;

  // In force until its Registration ends, or another handler is set. The handler may do either itself.
  Registration SetHandler(Handler handler) { return handler_.Give(std::move(handler)); }
  // Bytes that must wait before Received is raised (1 or more).
  virtual void SetReceiveThreshold(std::size_t threshold) = 0;

  // Told when State() or CarrierDetect() has changed, other than by Close. It may open or close the port. It
  // may be called from inside Open and Write.
  Registration SetWatcher(std::function<void()> watcher) { return watcher_.Give(std::move(watcher)); }

  // Asks for COM port `comNumber` (1 or more). A port that is open is closed first; with `reset` the device
  // is opened, closed and opened again. Input that waited in the device is discarded. State() is Opening
  // until the device has answered, which takes some milliseconds, or as long as it is stuck.
  virtual void Open(int comNumber, SerialReset reset = SerialReset::No) = 0;
  virtual void Close() = 0;
  virtual SerialState State() const = 0;
  bool IsOpen() const { return State() == SerialState::Open; }
  // The device's path, or what was tried; empty before the first Open.
  virtual std::string Device() const = 0;
  // The group whose members may open the device; meant for the words of SerialState::NoPermission.
  virtual std::string Group() const { return "dialout"; }
  // Whether the user chose this very adapter. Otherwise the number counts adapters in the order of plugging
  // in, and may lead to another one next time.
  virtual bool Assigned() const { return true; }

  // Hands the bytes to the line, all or none. False, and none is sent, when the port is not open or bytes of
  // an earlier write are still waiting: the line is full.
  virtual bool Write(ByteView bytes) = 0;
  // Moves up to out.size() waiting bytes to `out`; returns how many.
  virtual std::size_t Read(std::span<Byte> out) = 0;
  virtual std::size_t Waiting() const = 0;
  virtual void DiscardInput() = 0;
  virtual void DiscardOutput() = 0;
  // The carrier-detect line as it was at opening, or when last asked; std::nullopt where the device has none
  // or the port is not open.
  virtual std::optional<bool> CarrierDetect() const = 0;
  // Asks the device anew. The answer changes CarrierDetect() later.
  virtual void AskCarrier() = 0;

 protected:
  void Raise(SerialEvent event) const { handler_(event); }
  void Tell() const { watcher_(); }

 private:
  Callback<SerialEvent> handler_;
  Callback<> watcher_;
};

}  // namespace tvx
