#include "platform/TtyPort.h"

#include <algorithm>
#include <utility>

namespace tvx {

namespace {

// 16 kB in one call: at 38400 baud that is more than four seconds of the line.
constexpr int kReadsPerCall = 4;

}  // namespace

TtyPort::TtyPort(std::unique_ptr<TtyDevice> device) : device_(std::move(device)) {
  output_.reserve(kOutputRoom);
  device_->SetCallbacks({[this](const TtyAnswer& answer) { OnOpened(answer); },
                         [this](std::optional<bool> carrier) { OnCarrier(carrier); },
                         [this] { OnReadable(); }, [this] { OnWritable(); }, [this] { HangUp(); }});
}

void TtyPort::SetReceiveThreshold(std::size_t threshold) {
  threshold_ = std::max<std::size_t>(threshold, 1);
}

void TtyPort::Open(int comNumber, SerialReset reset) {
  Leave(SerialState::Opening);
  const unsigned life = life_;
  device_->Open(comNumber, reset);
  if (life == life_) name_ = device_->Name();
}

void TtyPort::OnOpened(const TtyAnswer& answer) {
  if (state_ != SerialState::Opening) return;
  name_ = device_->Name();
  state_ = answer.state;
  carrier_ = IsOpen() ? answer.carrier : std::nullopt;
  if (IsOpen()) judge_.Restart(device_->Counts());
  Tell();
}

void TtyPort::Close() {
  Leave(SerialState::Closed);
}

void TtyPort::HangUp() {
  if (!IsOpen()) return;
  Leave(SerialState::Unplugged);
  Tell();
}

void TtyPort::Leave(SerialState state) {
  ++life_;
  state_ = state;
  carrier_.reset();
  ForgetInput();
  output_.clear();
  outputNext_ = 0;
  device_->Close();
}

void TtyPort::ForgetInput() {
  consumed_ += input_.Size();
  input_.Clear();
  chunkNext_ = chunkEnd_ = 0;
  unmarker_.Reset();
}

bool TtyPort::Write(ByteView bytes) {
  if (!IsOpen() || outputNext_ < output_.size() || bytes.size() > kOutputRoom) return false;
  if (bytes.empty()) return true;
  const std::optional<std::size_t> written = device_->Write(bytes);
  if (!written) HangUp();
  if (written.value_or(0) == 0) return false;
  const ByteView rest = bytes.subspan(*written);
  if (rest.empty()) return true;
  // A frame cut in two would garble the next one, so the rest must follow.
  output_.assign(rest.begin(), rest.end());
  outputNext_ = 0;
  device_->WatchWrite(true);
  return true;
}

void TtyPort::OnWritable() {
  if (!IsOpen()) return;
  const ByteView rest = ByteView(output_).subspan(outputNext_);
  if (!rest.empty()) {
    const std::optional<std::size_t> written = device_->Write(rest);
    if (!written) return HangUp();
    outputNext_ += *written;
    if (outputNext_ < output_.size()) return;
  }
  DiscardOutput();
}

std::size_t TtyPort::Read(std::span<Byte> out) {
  const std::size_t count = input_.Pop(out);
  consumed_ += count;
  return count;
}

// What waits in the driver is read and dropped. To have the driver drop it would be a call that can wait.
void TtyPort::DiscardInput() {
  ForgetInput();
  if (!IsOpen()) return;
  for (int i = 0; i < kReadsPerCall && device_->Read(chunk_).value_or(0) > 0; ++i) {
  }
  judge_.Restart(device_->Counts());
}

void TtyPort::DiscardOutput() {
  output_.clear();
  outputNext_ = 0;
  if (IsOpen()) device_->WatchWrite(false);
}

void TtyPort::AskCarrier() {
  if (IsOpen()) device_->AskCarrier();
}

void TtyPort::OnCarrier(std::optional<bool> carrier) {
  if (!IsOpen() || carrier == carrier_) return;
  carrier_ = carrier;
  Tell();
}

void TtyPort::OnReadable() {
  const unsigned life = life_;
  // Called from inside a handler that yields: what lies in the chunk came first.
  if (chunkNext_ < chunkEnd_) Deliver();
  for (int i = 0; i < kReadsPerCall && life == life_ && IsOpen(); ++i) {
    const std::optional<std::size_t> count = device_->Read(chunk_);
    if (!count) return HangUp();
    if (*count == 0) return;
    chunkNext_ = 0;
    chunkEnd_ = *count;
    Deliver();
  }
}

void TtyPort::Deliver() {
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
      isBreak = judge_.IsBreak(device_->Counts());
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

void TtyPort::RaiseReceived() {
  const unsigned life = life_;
  while (life == life_ && IsOpen() && input_.Size() >= threshold_) {
    const std::uint64_t before = consumed_;
    Raise(SerialEvent::Received);
    if (consumed_ == before) return;
  }
}

}  // namespace tvx
