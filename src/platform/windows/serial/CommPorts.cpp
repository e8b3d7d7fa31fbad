#include "platform/windows/serial/CommPorts.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

using Event = std::shared_ptr<void>;

// A manual one: an overlapped call resets it when it begins.
Event MakeEvent(bool signalled) {
  return {CreateEventW(nullptr, TRUE, signalled ? TRUE : FALSE, nullptr), [](HANDLE event) {
            if (event != nullptr) CloseHandle(event);
          }};
}

bool StartThread(auto&& work) {
  try {
    std::thread(std::forward<decltype(work)>(work)).detach();
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

bool Configure(HANDLE port) {
  DCB settings{};
  settings.DCBlength = sizeof settings;
  if (GetCommState(port, &settings) == 0) return false;
  settings = {};
  settings.DCBlength = sizeof settings;
  settings.BaudRate = CBR_38400;
  settings.fBinary = TRUE;
  settings.ByteSize = 8;
  settings.Parity = NOPARITY;
  settings.StopBits = TWOSTOPBITS;
  settings.fDtrControl = DTR_CONTROL_ENABLE;
  settings.fRtsControl = RTS_CONTROL_ENABLE;
  settings.XonChar = 17;
  settings.XoffChar = 19;
  constexpr DWORD kInput = 65536, kOutput = 4096;
  SetupComm(port, kInput, kOutput);
  COMMTIMEOUTS noTimeouts{};  // a read waits for its byte, a write until its bytes are out
  if (SetCommState(port, &settings) == 0 || SetCommTimeouts(port, &noTimeouts) == 0) return false;
  PurgeComm(port, PURGE_RXCLEAR | PURGE_TXCLEAR);
  return true;
}

SerialState StateOf(DWORD code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DEV_NOT_EXIST:
      return SerialState::NotFound;
    case ERROR_ACCESS_DENIED:  // what Windows says of a port that somebody has
    case ERROR_SHARING_VIOLATION:
      return SerialState::Busy;
    default:
      return SerialState::Failed;
  }
}

struct OpenedPort {
  Handle port;
  SerialState state = SerialState::Failed;
};

OpenedPort OpenPort(const std::string& name) {
  OpenedPort opened;
  opened.port = Handle(CreateFileW(Wide("\\\\.\\" + name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                   OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
  opened.state = opened.port ? SerialState::Open : StateOf(GetLastError());
  if (opened.port && !Configure(opened.port.Get())) return OpenedPort();
  return opened;
}

// What the system works with while a call is under way. It outlives the line until that has come to an end.
struct Port {
  Handle handle;
  Event closed, readDone = MakeEvent(false), writeDone = MakeEvent(false);
  OVERLAPPED read{}, write{};
  bool reading = false, writing = false;
  Byte first = 0;
  std::array<Byte, CommLine::kMostAtOnce> output{};
};

class RealLine final : public CommLine {
 public:
  explicit RealLine(std::unique_ptr<Port> port) : port_(std::move(port)) {}
  ~RealLine() override;
  void* ReadEvent() const override { return port_->readDone.get(); }
  void* WriteEvent() const override { return port_->writeDone.get(); }
  bool BeginRead() override;
  std::optional<std::size_t> EndRead(std::span<Byte> out) override;
  bool BeginWrite(ByteView bytes) override;
  std::optional<std::size_t> EndWrite() override;
  LineErrors TakeErrors() override { return std::exchange(errors_, {}); }
  std::optional<bool> Carrier() const override;

 private:
  std::size_t Waiting();
  std::size_t TakeWaiting(std::span<Byte> out);

  std::unique_ptr<Port> port_;
  LineErrors errors_;
};

bool UnderWay(BOOL begun) {
  return begun != 0 || GetLastError() == ERROR_IO_PENDING;
}

// What came of a call that was under way: std::nullopt where it failed, 0 where it still is.
std::optional<DWORD> Outcome(HANDLE port, OVERLAPPED& call, bool& underWay) {
  DWORD count = 0;
  if (GetOverlappedResult(port, &call, &count, FALSE) == 0)
    return GetLastError() == ERROR_IO_INCOMPLETE ? std::optional<DWORD>(0) : std::nullopt;
  underWay = false;
  ResetEvent(call.hEvent);
  return count;
}

void LetGo(std::unique_ptr<Port> port) {
  DWORD count = 0;
  const HANDLE handle = port->handle.Get();
  CancelIoEx(handle, nullptr);
  PurgeComm(handle, PURGE_TXABORT | PURGE_RXABORT | PURGE_TXCLEAR | PURGE_RXCLEAR);
  if (port->reading) GetOverlappedResult(handle, &port->read, &count, TRUE);
  if (port->writing) GetOverlappedResult(handle, &port->write, &count, TRUE);
  port->handle.Close();
  SetEvent(port->closed.get());
}

RealLine::~RealLine() {
  auto held = std::make_shared<std::unique_ptr<Port>>(std::move(port_));
  if (!StartThread([held] { LetGo(std::move(*held)); })) LetGo(std::move(*held));
}

// Windows gives no read that ends as soon as anything has come: one waits for the first byte, and what came
// with it is taken then.
bool RealLine::BeginRead() {
  if (port_->reading) return true;
  port_->read = {};
  port_->read.hEvent = port_->readDone.get();
  port_->reading = UnderWay(ReadFile(port_->handle.Get(), &port_->first, 1, nullptr, &port_->read));
  return port_->reading;
}

std::size_t RealLine::Waiting() {
  DWORD errors = 0;
  COMSTAT status{};
  if (ClearCommError(port_->handle.Get(), &errors, &status) == 0) return 0;
  errors_.broke |= (errors & CE_BREAK) != 0;
  errors_.faulty |= (errors & (CE_FRAME | CE_RXPARITY)) != 0;
  return status.cbInQue;
}

// Bytes that wait already, so the read ends at once.
std::size_t RealLine::TakeWaiting(std::span<Byte> out) {
  const std::size_t size = std::min(Waiting(), out.size());
  if (size == 0) return 0;
  DWORD count = 0;
  port_->read = {};
  port_->read.hEvent = port_->readDone.get();
  if (!UnderWay(ReadFile(port_->handle.Get(), out.data(), static_cast<DWORD>(size), nullptr, &port_->read)))
    return 0;
  GetOverlappedResult(port_->handle.Get(), &port_->read, &count, TRUE);
  ResetEvent(port_->readDone.get());
  return count;
}

std::optional<std::size_t> RealLine::EndRead(std::span<Byte> out) {
  if (!port_->reading) return 0;
  const auto count = Outcome(port_->handle.Get(), port_->read, port_->reading);
  if (!count) return std::nullopt;
  if (port_->reading) return 0;
  // No byte though it has ended: a break may end it so. A port that is gone says so at the next read.
  std::size_t stored = 0;
  if (*count > 0) out[stored++] = port_->first;
  return stored + TakeWaiting(out.subspan(stored));
}

bool RealLine::BeginWrite(ByteView bytes) {
  const std::size_t count = std::min(bytes.size(), port_->output.size());
  std::copy_n(bytes.begin(), count, port_->output.begin());
  port_->write = {};
  port_->write.hEvent = port_->writeDone.get();
  port_->writing = UnderWay(WriteFile(port_->handle.Get(), port_->output.data(), static_cast<DWORD>(count),
                                      nullptr, &port_->write));
  return port_->writing;
}

std::optional<std::size_t> RealLine::EndWrite() {
  if (!port_->writing) return 0;
  return Outcome(port_->handle.Get(), port_->write, port_->writing);
}

std::optional<bool> RealLine::Carrier() const {
  DWORD lines = 0;
  if (GetCommModemStatus(port_->handle.Get(), &lines) == 0) return std::nullopt;
  return (lines & MS_RLSD_ON) != 0;
}

// Shared by the program and the thread that opens; a port that nobody took closes with it.
struct Attempt {
  std::string name;
  bool twice = false;
  Event before;  // the closing of the same port
  Event done = MakeEvent(false);
  Event closed = MakeEvent(false);
  OpenedPort opened;

  Attempt() = default;
  ~Attempt() {
    opened.port.Close();
    if (closed) SetEvent(closed.get());
  }
  Attempt(const Attempt&) = delete;
  Attempt& operator=(const Attempt&) = delete;

  void Run() {
    if (before) WaitForSingleObject(before.get(), INFINITE);
    opened = OpenPort(name);
    if (twice && opened.port) {
      opened.port.Close();
      opened = OpenPort(name);
    }
    SetEvent(done.get());
  }
};

class Opening final : public CommOpening {
 public:
  explicit Opening(std::shared_ptr<Attempt> attempt) : attempt_(std::move(attempt)) {}
  void* DoneEvent() const override { return attempt_->done.get(); }
  OpenedLine Take() override {
    const auto attempt = std::exchange(attempt_, nullptr);
    const SerialState state = attempt->opened.state;
    if (state != SerialState::Open) return {state, nullptr};
    auto port = std::make_unique<Port>();
    port->handle = std::move(attempt->opened.port);
    port->closed = std::exchange(attempt->closed, nullptr);
    return {state, std::make_unique<RealLine>(std::move(port))};
  }

 private:
  std::shared_ptr<Attempt> attempt_;
};

}  // namespace

std::unique_ptr<CommOpening> CommPorts::Open(const std::string& name, SerialReset reset) {
  auto attempt = std::make_shared<Attempt>();
  attempt->name = name;
  attempt->twice = reset == SerialReset::Yes;
  attempt->before = std::exchange(closed_[name], attempt->closed);
  if (!StartThread([attempt] { attempt->Run(); })) return nullptr;
  return std::make_unique<Opening>(std::move(attempt));
}

}  // namespace tvx
