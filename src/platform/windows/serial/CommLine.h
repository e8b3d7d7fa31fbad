// The calls on a COM port, so that a test can stand in for the port.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/Bytes.h"
#include "platform/SerialPort.h"

namespace tvx {

// What went wrong on the line since this was last asked. Where in the input, Windows does not say.
struct LineErrors {
  bool broke = false;
  bool faulty = false;  // framing or parity
};

// An open COM port: 38400 baud, 8 data bits, no parity, 2 stop bits, no handshake. No call waits, and the
// destructor lets go of the port without waiting.
class CommLine {
 public:
  static constexpr std::size_t kMostAtOnce = 4096;  // bytes of one EndRead or BeginWrite

  virtual ~CommLine() = default;
  // The events (HANDLEs) that are signalled when a read or a write has come to its end.
  virtual void* ReadEvent() const = 0;
  virtual void* WriteEvent() const = 0;

  // Begins to wait for input. False where the port is gone.
  virtual bool BeginRead() = 0;
  // After ReadEvent: moves what has arrived to `out`; 0 where that is still to come. std::nullopt where the
  // port is gone.
  virtual std::optional<std::size_t> EndRead(std::span<Byte> out) = 0;
  // Begins to write a copy of the bytes, at most kMostAtOnce. False where the port is gone.
  virtual bool BeginWrite(ByteView bytes) = 0;
  // After WriteEvent: how many bytes have left; 0 where none has yet. std::nullopt where the port is gone.
  virtual std::optional<std::size_t> EndWrite() = 0;

  virtual LineErrors TakeErrors() = 0;
  // The carrier-detect line; std::nullopt where there is none.
  virtual std::optional<bool> Carrier() const = 0;
};

struct OpenedLine {
  SerialState state = SerialState::Failed;
  std::unique_ptr<CommLine> line;  // where the state is Open
};

// A port that is being opened, which may take as long as its driver likes. Whoever wants it no more destroys
// this.
class CommOpening {
 public:
  virtual ~CommOpening() = default;
  virtual void* DoneEvent() const = 0;  // a HANDLE
  virtual OpenedLine Take() = 0;        // after DoneEvent, once
};
// Begins to open a port by its name, "COM5".
using OpenComm = std::function<std::unique_ptr<CommOpening>(const std::string& name, SerialReset reset)>;

}  // namespace tvx
