// The device behind a COM number, seen so that no call on it ever waits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/Bytes.h"
#include "platform/SerialPort.h"

namespace tvx {

// The error counters that some drivers keep; all 0 where there are none.
struct LineCounts {
  std::uint32_t breaks = 0;
  std::uint32_t errors = 0;  // framing and parity
};

// What came of an opening.
struct TtyAnswer {
  SerialState state = SerialState::Failed;
  std::optional<bool> carrier;  // the carrier-detect line; std::nullopt where there is none
};

// Which device a COM number led to when it was last opened.
struct TtyName {
  std::string device;             // its path, or what was tried
  std::string group = "dialout";  // whose members may open it
  bool assigned = false;          // false: the number counts adapters in the order of plugging in
};

// Opening, setting, asking and closing a device may take as long as the kernel and the adapter like, even for
// ever. Here they are asked for and answered by a callback; reading and writing take and give what there is.
class TtyDevice {
 public:
  struct Callbacks {
    std::function<void(const TtyAnswer&)> opened;      // once for each Open, from inside it or later
    std::function<void(std::optional<bool>)> carrier;  // after AskCarrier
    std::function<void()> readable, writable, gone;    // while it is open; each may call anything here
  };

  // Lets go of the line, without waiting.
  virtual ~TtyDevice() = default;
  virtual void SetCallbacks(Callbacks callbacks) = 0;

  // Opens the device that COM `comNumber` leads to now, for this program alone, with the settings of
  // SerialPort. Input that waited is discarded. A device that is open or being opened is let go first.
  virtual void Open(int comNumber, SerialReset reset) = 0;
  // Lets go of the line. No callback comes afterwards. Output that has not left yet may be lost.
  virtual void Close() = 0;
  virtual TtyName Name() const = 0;

  // Asks for the carrier-detect line anew. Asked again before the answer came, it is asked once.
  virtual void AskCarrier() = 0;
  // How many bytes were moved: 0 where there are none, or the line is full; std::nullopt where the device is
  // gone or not open.
  virtual std::optional<std::size_t> Read(std::span<Byte> out) = 0;
  virtual std::optional<std::size_t> Write(ByteView bytes) = 0;
  // Whether `writable` is called when the line takes bytes; false after Open.
  virtual void WatchWrite(bool enabled) = 0;
  virtual LineCounts Counts() const = 0;
};

}  // namespace tvx
