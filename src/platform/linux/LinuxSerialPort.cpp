#include "platform/linux/LinuxSerialPort.h"

#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/ComPortMap.h"
#include "platform/linux/TtyDevice.h"

namespace tvx {

namespace {

// 16 kB in one call: at 38400 baud that is more than four seconds of the line.
constexpr int kReadsPerCall = 4;

bool LineIsFull(int error) {
  return error == EAGAIN || error == EWOULDBLOCK;
}

}  // namespace

LinuxSerialPort::LinuxSerialPort(std::unique_ptr<FdWatcher> watcher) : watcher_(std::move(watcher)) {
  output_.reserve(kOutputRoom);
  watcher_->SetCallbacks([this] { OnReadable(); }, [this] { OnWritable(); });
}

LinuxSerialPort::~LinuxSerialPort() {
  Leave(SerialState::Closed);
}

void LinuxSerialPort::SetReceiveThreshold(std::size_t threshold) {
  threshold_ = std::max<std::size_t>(threshold, 1);
}

bool LinuxSerialPort::Open(int comNumber) {
  Leave(SerialState::Closed);
  const ComPortTarget target = FindComPort(comNumber);
  device_ = target.device;
  if (target.path.empty()) {
    state_ = SerialState::NotFound;
    return false;
  }
  const OpenedTty opened = OpenTty(target.path);
  state_ = opened.state;
  if (state_ == SerialState::NoPermission) group_ = GroupOfDevice(target.path);
  if (state_ != SerialState::Open) return false;
  fd_ = opened.fd;
  judge_.Restart(ReadLineCounts(fd_));
  watcher_->Attach(fd_);
  return true;
}

void LinuxSerialPort::Close() {
  Leave(SerialState::Closed);
}

void LinuxSerialPort::HangUp() {
  Leave(SerialState::Unplugged);
}

void LinuxSerialPort::Leave(SerialState state) {
  ++life_;
  state_ = state;
  ForgetInput();
  output_.clear();
  outputNext_ = 0;
  if (fd_ < 0) return;
  watcher_->Release();
  CloseTty(std::exchange(fd_, -1));
}

void LinuxSerialPort::ForgetInput() {
  consumed_ += input_.Size();
  input_.Clear();
  chunkNext_ = chunkEnd_ = 0;
  unmarker_.Reset();
}

bool LinuxSerialPort::Write(ByteView bytes) {
  if (state_ != SerialState::Open || outputNext_ < output_.size() || bytes.size() > kOutputRoom) return false;
  if (bytes.empty()) return true;
  ssize_t written = 0;
  do {
    written = ::write(fd_, bytes.data(), bytes.size());
  } while (written < 0 && errno == EINTR);
  if (written < 0) {
    if (!LineIsFull(errno)) HangUp();
    return false;
  }
  if (written == 0) return false;
  const ByteView rest = bytes.subspan(static_cast<std::size_t>(written));
  if (rest.empty()) return true;
  // A frame cut in two would garble the next one, so the rest must follow.
  output_.assign(rest.begin(), rest.end());
  outputNext_ = 0;
  watcher_->WatchWrite(true);
  return true;
}

void LinuxSerialPort::OnWritable() {
  if (state_ != SerialState::Open) return;
  const ByteView rest = ByteView(output_).subspan(outputNext_);
  if (!rest.empty()) {
    const ssize_t written = ::write(fd_, rest.data(), rest.size());
    if (written < 0) {
      if (!LineIsFull(errno) && errno != EINTR) HangUp();
      return;
    }
    outputNext_ += static_cast<std::size_t>(written);
    if (outputNext_ < output_.size()) return;
  }
  output_.clear();
  outputNext_ = 0;
  watcher_->WatchWrite(false);
}

std::size_t LinuxSerialPort::Read(std::span<Byte> out) {
  const std::size_t count = input_.Pop(out);
  consumed_ += count;
  return count;
}

void LinuxSerialPort::DiscardInput() {
  ForgetInput();
  if (fd_ < 0) return;
  tcflush(fd_, TCIFLUSH);
  judge_.Restart(ReadLineCounts(fd_));
}

void LinuxSerialPort::DiscardOutput() {
  output_.clear();
  outputNext_ = 0;
  if (fd_ < 0) return;
  watcher_->WatchWrite(false);
  tcflush(fd_, TCOFLUSH);
}

std::optional<bool> LinuxSerialPort::CarrierDetect() const {
  int lines = 0;
  if (fd_ < 0 || ioctl(fd_, TIOCMGET, &lines) != 0) return std::nullopt;
  return (lines & TIOCM_CAR) != 0;
}

void LinuxSerialPort::OnReadable() {
  const unsigned life = life_;
  // Called from inside a handler that yields: what lies in the chunk came first.
  if (chunkNext_ < chunkEnd_) Deliver();
  for (int i = 0; i < kReadsPerCall && life == life_ && fd_ >= 0; ++i) {
    const ssize_t count = ::read(fd_, chunk_.data(), chunk_.size());
    if (count > 0) {
      chunkNext_ = 0;
      chunkEnd_ = static_cast<std::size_t>(count);
      Deliver();
    } else if (count == 0 || (!LineIsFull(errno) && errno != EINTR)) {
      // A line never ends, so an end of input means that the device is gone.
      HangUp();
    } else if (LineIsFull(errno)) {
      return;
    }
  }
}

void LinuxSerialPort::Deliver() {
  const unsigned life = life_;
  while (chunkNext_ < chunkEnd_) {
    const Unmarker::Item item = unmarker_.Feed(chunk_[chunkNext_++]);
    if (item.kind == Unmarker::Kind::Nothing) continue;
    if (item.kind == Unmarker::Kind::Data) {
      input_.Push(item.value);
      continue;
    }
    bool isBreak = false;
    if (item.kind == Unmarker::Kind::ZeroMark) {
      isBreak = judge_.IsBreak(ReadLineCounts(fd_));
    } else {
      judge_.SawFaulty();
    }
    RaiseReceived();  // the bytes before it
    if (life != life_) return;
    Raise(isBreak ? SerialEvent::Break : SerialEvent::Framing);
    if (life != life_) return;
  }
  RaiseReceived();
}

void LinuxSerialPort::RaiseReceived() {
  const unsigned life = life_;
  while (life == life_ && state_ == SerialState::Open && input_.Size() >= threshold_) {
    const std::uint64_t before = consumed_;
    Raise(SerialEvent::Received);
    if (consumed_ == before) return;
  }
}

}  // namespace tvx
